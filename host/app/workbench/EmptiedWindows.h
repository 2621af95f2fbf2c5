// SPDX-License-Identifier: GPL-3.0-or-later
// Windows that a deletion has emptied show their object again once it is back.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <vector>

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

namespace TAMBO::app {

class EmptiedWindows : public QObject
{
    Q_OBJECT

public:
    using Show = std::function<void(QWidget &window, Alignment &alignment)>;

    explicit EmptiedWindows(Show show);

    // After each change of the model. isTravel: it was undo or redo, which alone bring back an
    // object that was deleted; any other at its address is a new one.
    void follow(bool isTravel);

private:
    struct Entry
    {
        QPointer<QWidget> window;
        // Compared and never looked into until it is back.
        const Compound *object;
    };

    void noteContents(QWidget *window, const Compound *before, const Compound *now);

    Show m_Show;
    std::vector<Entry> m_Entries;
};

} // namespace TAMBO::app
