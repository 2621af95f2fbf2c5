// SPDX-License-Identifier: GPL-3.0-or-later
// What one does with the rows of an alignment window: moving, sorting, grouping, copying them.
#pragma once

#include "RowOrders.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

class GroupBar;

// Each command is one step of undo with a name, or tells why nothing changes.
class RowTools
{
public:
    using Tell = std::function<void(const QString &)>;

    // tell: shows users what has come of a command.
    RowTools(TAMBO::AlignmentWindow &window, Tell tell);
    ~RowTools();
    RowTools(const RowTools &) = delete;
    RowTools &operator=(const RowTools &) = delete;

    // Those of selectedRows().
    void move(RowMove move);
    void newAlignmentOfSelected();
    // By another program, for which it waits. keepsColumns: or not at all, when it takes columns
    // that are not there.
    void alignToRest(bool keepsColumns);
    // Sequences that the user chooses, of those that are open or of files, come as rows behind the
    // others, aligned to them in the same way.
    void addAndAlign();
    void addFileAndAlign();

    void sortByName();
    void sortByLength();
    // The most identical with the row first; nothing for the cursor's row when there is no cursor.
    void sortByIdentity(std::optional<unsigned long> row);

    // A line in which one chooses rows by their names.
    void askForGroups();
    // A child of the window's own widget, made when it is asked for the first time.
    [[nodiscard]] GroupBar &groups();

private:
    void tellAdded(const QString &told, unsigned long before);
    void sort(const std::optional<RowOrder> &order, const QString &by, const char *step);

    TAMBO::AlignmentWindow &m_Window;
    Tell m_Tell;
    QPointer<GroupBar> m_Groups;
    // For what comes when this may have gone.
    QObject m_Life;
};

} // namespace companion
