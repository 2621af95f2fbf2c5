// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps what windows say of the objects they show, and tells the workbench.
#pragma once

#include <QObject>

#include <map>

class QWidget;

namespace TAMBO {
class Compound;
}

namespace TAMBO::services {

class WindowContents : public QObject
{
    Q_OBJECT

public:
    static WindowContents &instance();

    void set(QWidget *window, Compound *object);
    [[nodiscard]] Compound *of(const QWidget *window) const;

signals:
    // Either may be null; an object that is no longer shown may be about to be freed.
    void changed(QWidget *window, TAMBO::Compound *before, TAMBO::Compound *now);

private:
    // Windows that show something.
    std::map<const QObject *, Compound *> m_Shown;
};

} // namespace TAMBO::services
