// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnTools.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "ColumnRemoval.h"
#include "GapColumnsBar.h"
#include "PartAlignments.h"
#include "ResidueColumns.h"
#include "Texts.h"
#include "WorkbenchCommands.h"

#include <utility>

namespace companion {

namespace {

// As the log has it.
constexpr const char *kColumnToolsCaller = "companion";

} // namespace

ColumnTools::ColumnTools(TAMBO::AlignmentWindow &window, Tell tell)
    : m_Window(window), m_Tell(std::move(tell))
{ }

ColumnTools::~ColumnTools()
{
    delete m_Gaps;
}

void ColumnTools::removeEmpty()
{
    if (m_Window.alignment() == nullptr)
        return m_Tell(tr("No alignment is shown."));
    std::optional<std::vector<bool>> columns = columnsWithResidues(m_Window);
    if (!columns)
        return m_Tell(tr("No column is removed: it was cancelled."));
    columns->flip();
    m_Tell(removeColumns(*m_Window.alignment(), *columns, "Remove empty columns",
                         tr("without residues")));
}

GapColumnsBar &ColumnTools::gaps()
{
    if (m_Gaps == nullptr)
        m_Gaps = new GapColumnsBar(m_Window, m_Tell);
    return *m_Gaps;
}

void ColumnTools::askForGaps()
{
    gaps().ask();
}

void ColumnTools::realignAll()
{
    TAMBO::Alignment *const alignment = m_Window.alignment();
    if (alignment == nullptr)
        return m_Tell(tr("No alignment is shown."));
    if (alignment->height() < 2)
        return m_Tell(tr("Nothing is realigned: the alignment has fewer than two rows."));
    const QPointer<TAMBO::AlignmentWindow> window(&m_Window);
    TAMBO::RealignRequest request{alignment, {}};
    TAMBO::WorkbenchCommands::realignAll(kColumnToolsCaller, request);
    // The window, and this with it, may have gone meanwhile.
    if (window && !request.told.isEmpty())
        m_Tell(request.told);
}

void ColumnTools::newAlignmentOfBlock(const std::optional<TAMBO::CellBlock> &block)
{
    m_Tell(block ? companion::newAlignmentOfBlock(m_Window, *block)
                 : tr("No alignment is made: there is no block."));
}

} // namespace companion
