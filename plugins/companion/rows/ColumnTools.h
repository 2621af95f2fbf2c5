// SPDX-License-Identifier: GPL-3.0-or-later
// What one does with the columns of an alignment window: removing those that hold little, copying
// some.
#pragma once

#include "CellPlaces.h"

#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

class GapColumnsBar;

// Each command is one step of undo with a name, or tells why nothing changes.
class ColumnTools
{
public:
    using Tell = std::function<void(const QString &)>;

    // tell: shows users what has come of a command.
    ColumnTools(TAMBO::AlignmentWindow &window, Tell tell);
    ~ColumnTools();
    ColumnTools(const ColumnTools &) = delete;
    ColumnTools &operator=(const ColumnTools &) = delete;

    // Those without a residue.
    void removeEmpty();
    // A line in which one chooses how many gaps are too many.
    void askForGaps();
    // A child of the window's own widget, made when it is asked for the first time.
    [[nodiscard]] GapColumnsBar &gaps();
    // All of them, by another program, for which it waits.
    void realignAll();
    // As an alignment of its own.
    void newAlignmentOfBlock(const std::optional<TAMBO::CellBlock> &block);

private:
    TAMBO::AlignmentWindow &m_Window;
    Tell m_Tell;
    QPointer<GapColumnsBar> m_Gaps;
};

} // namespace companion
