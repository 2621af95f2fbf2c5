// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps what windows say of the objects they show, and tells the workbench.
#pragma once

#include "Subscriber.h"

#include <QObject>

#include <map>

class QWidget;

namespace TAMBO {
class Compound;
}

namespace TAMBO::services {

// A deleted object is forgotten, also when its window does not care: it may be freed soon.
class WindowContents : public QObject, public Subscriber
{
    Q_OBJECT

public:
    static WindowContents &instance();

    void set(QWidget *window, Compound *object);
    [[nodiscard]] Compound *of(const QWidget *window) const;

    void commUpdate() override { }
    void commAdd() override { }
    void commDelete() override;

signals:
    // Either may be null; an object that is no longer shown may be about to be freed.
    void changed(QWidget *window, TAMBO::Compound *before, TAMBO::Compound *now);

private:
    struct Shown
    {
        QWidget *window;
        Compound *object;
    };

    // Windows that show something.
    std::map<const QObject *, Shown> m_Shown;
};

} // namespace TAMBO::services
