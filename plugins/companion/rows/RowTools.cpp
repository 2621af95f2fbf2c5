// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowTools.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "GroupBar.h"
#include "PartAlignments.h"
#include "Reordering.h"
#include "RowSorting.h"
#include "SelectObject.h"
#include "SelectedRows.h"
#include "Space.h"
#include "Texts.h"
#include "WorkbenchCommands.h"

#include <QMainWindow>

#include <algorithm>
#include <utility>

namespace companion {

namespace {

// As the log has it.
constexpr const char *kRowToolsCaller = "companion";

QString moveStep(RowMove move)
{
    return move == RowMove::ToTop ? QStringLiteral("Move rows to the top")
           : move == RowMove::Up  ? QStringLiteral("Move rows up")
                                  : QStringLiteral("Move rows down");
}

QString chosenText(const TAMBO::Alignment &alignment, const std::vector<unsigned long> &rows)
{
    return rows.size() == 1
               ? tr("“%1”").arg(QString::fromStdString(alignment.GetSeqName(rows.front())))
               : tr("%L1 rows").arg(rows.size());
}

QString movedText(RowMove move, const QString &what, bool areWhole)
{
    const QString text = move == RowMove::ToTop ? tr("Moved to the top: %1.")
                         : move == RowMove::Up  ? tr("Moved up: %1.")
                                                : tr("Moved down: %1.");
    // Users expect whole rows, of which there is none.
    return text.arg(areWhole ? what : tr("%1 with selected residues").arg(what));
}

QString stayingText(RowMove move, const QString &what)
{
    return move == RowMove::Down ? tr("Nothing is moved: %1 at the bottom already.").arg(what)
                                 : tr("Nothing is moved: %1 at the top already.").arg(what);
}

} // namespace

RowTools::RowTools(TAMBO::AlignmentWindow &window, Tell tell)
    : m_Window(window), m_Tell(std::move(tell))
{ }

RowTools::~RowTools()
{
    delete m_Groups;
}

void RowTools::move(RowMove move)
{
    if (m_Window.alignment() == nullptr)
        return m_Tell(tr("No alignment is shown."));
    const std::optional<SelectedRows> selected = selectedRows(m_Window);
    TAMBO::Alignment *const alignment = m_Window.alignment();
    if (!selected || alignment == nullptr)
        return m_Tell(tr("Nothing is moved: it was cancelled."));
    const std::vector<unsigned long> &rows = selected->rows;
    if (rows.empty())
        return m_Tell(tr("Nothing is moved: no row has selected residues."));
    const QString what = chosenText(*alignment, rows);
    const RowOrder order = moved(alignment->height(), rows, move);
    switch (reorder(*alignment, order, moveStep(move).toStdString())) {
    case Reordered::Not:
        return m_Tell(stayingText(move, what));
    case Reordered::Refused:
        return m_Tell(tr("Nothing is moved: the alignment cannot be changed now."));
    case Reordered::Done:
        break;
    }
    // What was moved last is to be seen, and nothing scrolls sideways.
    const unsigned long moving = move == RowMove::Down ? rows.back() : rows.front();
    const auto place = static_cast<unsigned long>(std::ranges::find(order, moving) - order.begin());
    const TAMBO::CellBlock seen = m_Window.visibleCells();
    m_Window.showCell({place, (seen.colBegin + seen.colEnd) / 2});
    m_Tell(movedText(move, what, selected->areWhole));
}

void RowTools::newAlignmentOfSelected()
{
    if (m_Window.alignment() == nullptr)
        return m_Tell(tr("No alignment is shown."));
    const std::optional<SelectedRows> selected = selectedRows(m_Window);
    m_Tell(selected ? newAlignmentOfRows(m_Window, selected->rows)
                    : tr("No alignment is made: it was cancelled."));
}

void RowTools::alignToRest(bool keepsColumns)
{
    if (m_Window.alignment() == nullptr)
        return m_Tell(tr("No alignment is shown."));
    const QPointer<TAMBO::AlignmentWindow> window(&m_Window);
    const std::optional<SelectedRows> selected = selectedRows(m_Window);
    if (!window || m_Window.alignment() == nullptr)
        return;
    if (!selected)
        return m_Tell(tr("Nothing is aligned: it was cancelled."));
    if (selected->rows.empty())
        return m_Tell(tr("Nothing is aligned: no row has selected residues. Select a residue of "
                         "each row that is to be aligned to the rest."));
    TAMBO::AlignRowsRequest request{m_Window.alignment(), selected->rows, keepsColumns, {}};
    TAMBO::WorkbenchCommands::alignRows(kRowToolsCaller, request);
    // The window, and this with it, may have gone meanwhile.
    if (window && !request.told.isEmpty())
        m_Tell(request.told);
}

// ---- Adding

// What has come at the end is to be seen, and nothing scrolls sideways.
void RowTools::tellAdded(const QString &told, unsigned long before)
{
    const TAMBO::Alignment *const alignment = m_Window.alignment();
    if (alignment != nullptr && alignment->height() > before) {
        const TAMBO::CellBlock seen = m_Window.visibleCells();
        m_Window.showCell({alignment->height() - 1, (seen.colBegin + seen.colEnd) / 2});
    }
    m_Tell(told);
}

void RowTools::addAndAlign()
{
    if (m_Window.alignment() == nullptr)
        return m_Tell(tr("No alignment is shown."));
    std::vector<TAMBO::Compound *> candidates;
    TAMBO::GetPeptides(TAMBO::Space::instance(), candidates, true);
    std::vector<TAMBO::Compound *> chosen;
    const QPointer<TAMBO::AlignmentWindow> window(&m_Window);
    {
        TAMBO::SelectObject dialog(candidates, chosen, m_Window.mainWindow(),
                                   tr("Sequences to align and to add"));
        if (dialog.exec() == QDialog::Rejected)
            return;
    }
    // The dialog runs an event loop, in which the window may have gone.
    if (!window)
        return;
    if (chosen.empty())
        return m_Tell(tr("Nothing is added: no sequence is chosen."));
    if (m_Window.alignment() == nullptr)
        return m_Tell(tr("No alignment is shown."));
    const unsigned long before = m_Window.alignment()->height();
    TAMBO::AddSequencesRequest request{m_Window.alignment(), chosen, {}};
    TAMBO::WorkbenchCommands::addSequences(kRowToolsCaller, request);
    if (window && !request.told.isEmpty())
        tellAdded(request.told, before);
}

void RowTools::addFileAndAlign()
{
    if (m_Window.alignment() == nullptr)
        return m_Tell(tr("No alignment is shown."));
    const unsigned long before = m_Window.alignment()->height();
    TAMBO::AddFilesRequest request{m_Window.alignment(),
                                   [this, life = QPointer(&m_Life), before](const QString &told) {
                                       if (life)
                                           tellAdded(told, before);
                                   }};
    TAMBO::WorkbenchCommands::addFiles(kRowToolsCaller, request);
}

// ---- Sorting

void RowTools::sort(const std::optional<RowOrder> &order, const QString &by, const char *step)
{
    TAMBO::Alignment *const alignment = m_Window.alignment();
    if (!order || alignment == nullptr)
        return m_Tell(tr("The rows stay as they are: sorting was given up."));
    switch (reorder(*alignment, *order, step)) {
    case Reordered::Not:
        return m_Tell(tr("The rows stay as they are: they are sorted %1 already.").arg(by));
    case Reordered::Refused:
        return m_Tell(tr("The rows stay as they are: the alignment cannot be changed now."));
    case Reordered::Done:
        return m_Tell(tr("%L1 rows sorted %2.").arg(order->size()).arg(by));
    }
}

void RowTools::sortByName()
{
    if (m_Window.alignment() == nullptr)
        return m_Tell(tr("No alignment is shown."));
    sort(orderByName(m_Window), tr("by name"), "Sort rows by name");
}

void RowTools::sortByLength()
{
    if (m_Window.alignment() == nullptr)
        return m_Tell(tr("No alignment is shown."));
    sort(orderByLength(m_Window), tr("by length, the longest first"), "Sort rows by length");
}

void RowTools::sortByIdentity(std::optional<unsigned long> row)
{
    const TAMBO::Alignment *const alignment = m_Window.alignment();
    if (alignment == nullptr)
        return m_Tell(tr("No alignment is shown."));
    if (!row || *row >= alignment->height())
        return m_Tell(tr("The rows stay as they are: there is no cell cursor in a row."));
    const QString name = QString::fromStdString(alignment->GetSeqName(*row));
    sort(orderByIdentity(m_Window, *row),
         tr("by identity to “%1”, of aligned pairs of residues").arg(name),
         "Sort rows by identity");
}

// ---- Grouping

GroupBar &RowTools::groups()
{
    if (m_Groups == nullptr)
        m_Groups = new GroupBar(m_Window, m_Tell);
    return *m_Groups;
}

void RowTools::askForGroups()
{
    groups().ask();
}

} // namespace companion
