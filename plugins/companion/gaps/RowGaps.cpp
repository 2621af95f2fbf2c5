// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowGaps.h"

#include "Texts.h"

#include <algorithm>

namespace companion {

namespace {

using Kind = GapEdit::Kind;

constexpr unsigned long kRowsPushedOneByOne = 64;
// More at once if they are this share of all: undo keeps the cells of all rows then.
constexpr unsigned long kLeastShareOfRows = 8;

bool isOfBlock(const GapEdit &edit)
{
    return edit.kind == Kind::PushLeft || edit.kind == Kind::PushRight ||
           (edit.kind == Kind::Slide && edit.block.colEnd - edit.block.colBegin > 1);
}

bool isPush(Kind kind)
{
    return kind == Kind::PushLeft || kind == Kind::PushRight;
}

bool hasDirection(Kind kind)
{
    return kind == Kind::Slide || kind == Kind::Move;
}

unsigned long magnitudeOf(long count)
{
    return count < 0 ? 0UL - static_cast<unsigned long>(count) : static_cast<unsigned long>(count);
}

// Of an alignment with so many columns.
KeptColumns withinWidth(const KeptColumns &kept, unsigned long width)
{
    if (!kept || kept->first >= std::min(kept->second, width))
        return std::nullopt;
    return TAMBO::Alignment::Range(kept->first, std::min(kept->second, width));
}

QString gapsText(unsigned long gaps)
{
    return gaps == 0 ? tr("no gap") : gaps == 1 ? tr("1 gap") : tr("%L1 gaps").arg(gaps);
}

QString numberText(unsigned long number)
{
    return QStringLiteral("%L1").arg(number);
}

QString neededText(unsigned long needed)
{
    return needed == 1 ? tr("1 is needed") : tr("%L1 are needed").arg(needed);
}

QString roomText(unsigned long columns)
{
    return columns == 0   ? tr("no column")
           : columns == 1 ? tr("1 column")
                          : tr("%L1 columns").arg(columns);
}

QString columnsText(unsigned long begin, unsigned long end)
{
    return end - begin == 1 ? tr("column %L1").arg(begin + 1)
                            : tr("columns %L1 to %L2").arg(begin + 1).arg(end);
}

QString quotedRow(const TAMBO::Alignment &alignment, unsigned long row)
{
    return QStringLiteral("“%1”").arg(QString::fromStdString(alignment.GetSeqName(row)));
}

} // namespace

// Of one row.
class RowGaps::Planner
{
public:
    Planner(const RowGaps &all, unsigned long row, std::vector<GapStep> &steps)
        : m_All(all),
          m_Edit(all.m_Edit),
          m_Row(row),
          m_Cells(all.m_Alignment, row),
          m_Steps(steps),
          m_Col(all.m_Edit.block.colBegin),
          m_Count(magnitudeOf(all.m_Edit.count))
    { }

    [[nodiscard]] RowPlan plan()
    {
        const std::size_t before = m_Steps.size();
        planKind();
        if (m_Steps.size() == before && !m_All.pushesTogether())
            m_Plan.moved = 0;
        return m_Plan;
    }

private:
    void planKind()
    {
        m_Plan.moved = m_Edit.count;
        switch (m_Edit.kind) {
        case Kind::Insert:
            insert();
            break;
        case Kind::RemoveBefore:
            m_Plan.moved = -m_Edit.count;
            removeBefore();
            break;
        case Kind::RemoveBehind:
            m_Plan.moved = -m_Edit.count;
            removeBehind();
            break;
        case Kind::Slide:
            slide();
            break;
        case Kind::Move:
            move();
            break;
        case Kind::PushLeft:
            pushLeft();
            break;
        case Kind::PushRight:
            pushRight();
            break;
        }
    }

    void insert()
    {
        if (m_Cells.residuesIn(m_Col, m_All.m_Width) == 0)
            return;
        if (m_All.m_CanWiden) {
            m_Steps.push_back({{}, m_Count, m_Col});
            return;
        }
        const unsigned long end = m_All.m_End;
        const unsigned long gaps = end - m_Col - m_Cells.residuesIn(m_Col, end);
        if (gaps < m_Count)
            refuse(tr("%1 has %2 from column %3 on before the kept columns; %4."), gapsText(gaps),
                   m_Col);
        else
            gather(m_Cells.lastGaps(m_Col, end, m_Count), m_Col);
    }

    void removeBefore()
    {
        const unsigned long gaps = m_Cells.gapsBefore(m_Col, m_All.m_First);
        if (gaps < m_Count)
            refuse(tr("%1 has %2 directly before column %3; %4."), gapsText(gaps), m_Col);
        else if (m_Cells.residuesIn(m_Col, m_All.m_End) > 0)
            m_Steps.push_back({m_Col - m_Count, m_Count, m_All.m_End - m_Count});
    }

    void removeBehind()
    {
        const unsigned long gaps = m_Cells.gapsFrom(m_Col, m_All.m_End);
        if (gaps < m_Count)
            refuse(tr("%1 has %2 from column %3 on; %4."), gapsText(gaps), m_Col);
        else if (m_Cells.residuesIn(m_Col, m_All.m_End) > 0)
            m_Steps.push_back({m_Col, m_Count, m_All.m_End - m_Count});
    }

    void slide()
    {
        unsigned long begin = m_Col;
        unsigned long end = m_Edit.block.colEnd;
        m_Plan.hasResidues = m_Cells.residuesIn(begin, end) > 0;
        if (!m_Plan.hasResidues)
            return;
        if (!isOfBlock(m_Edit)) {
            begin = m_Cells.residueRunBegin(end);
            end = m_Cells.residueRunEnd(m_Col);
        }
        if (begin < m_All.m_First || end > m_All.m_End) {
            m_Plan.refusal = tr("The residues of %1 around column %2 reach into the kept columns.")
                                 .arg(name(), numberText(m_Col + 1));
            return;
        }
        const bool isToRight = m_Edit.count > 0;
        const unsigned long gaps = isToRight ? m_Cells.gapsFrom(end, m_All.m_End)
                                             : m_Cells.gapsBefore(begin, m_All.m_First);
        if (gaps < m_Count) {
            if (isToRight)
                refuse(tr("%1 has %2 directly behind column %3; %4."), gapsText(gaps), end - 1);
            else
                refuse(tr("%1 has %2 directly before column %3; %4."), gapsText(gaps), begin);
            return;
        }
        if (isToRight)
            m_Steps.push_back({end, m_Count, begin});
        else
            m_Steps.push_back({begin - m_Count, m_Count, end - m_Count});
    }

    void move()
    {
        const bool isToRight = m_Edit.count > 0;
        if (!m_Cells.isGap(m_Col)) {
            if (isToRight)
                insert();
            else
                removeBefore();
            return;
        }
        const unsigned long begin = m_Col - m_Cells.gapsBefore(m_Col, m_All.m_First);
        const unsigned long end = m_Col + m_Cells.gapsFrom(m_Col, m_All.m_End);
        const unsigned long room = isToRight ? m_All.m_End - end : begin - m_All.m_First;
        if (room < m_Count) {
            refuse(isToRight ? tr("%1 has %2 behind the gaps around column %3; %4.")
                             : tr("%1 has %2 before the gaps around column %3; %4."),
                   roomText(room), m_Col);
            return;
        }
        m_Steps.push_back({begin, end - begin, isToRight ? begin + m_Count : begin - m_Count});
    }

    void pushLeft()
    {
        const unsigned long end = m_Edit.block.colEnd;
        m_Plan.hasResidues = m_Cells.residuesIn(m_Col, end) > 0;
        const unsigned long last = std::max(m_Cells.endOfResidues(end), m_Col);
        m_Plan.moved = -static_cast<long>(last - m_Col - m_Cells.residuesIn(m_Col, last));
        if (m_Plan.moved == 0 || m_All.pushesTogether())
            return;
        const std::vector<GapRun> runs = m_Cells.lastGaps(m_Col, end);
        GapRun gathered = runs.back();
        for (auto run = runs.rbegin() + 1; run != runs.rend(); ++run) {
            m_Steps.push_back({gathered.begin, gathered.count, run->begin - gathered.count});
            gathered = {run->begin - gathered.count, gathered.count + run->count};
        }
        if (gathered.begin + gathered.count < end)
            m_Steps.push_back({gathered.begin, gathered.count, end - gathered.count});
    }

    void pushRight()
    {
        const unsigned long end = m_Edit.block.colEnd;
        m_Plan.hasResidues = m_Cells.residuesIn(m_Col, end) > 0;
        const unsigned long first = m_Col + m_Cells.gapsFrom(m_Col, end);
        m_Plan.moved = static_cast<long>(end - first - m_Cells.residuesIn(first, end));
        if (m_Plan.moved == 0 || m_All.pushesTogether())
            return;
        gather(m_Cells.lastGaps(m_Col, end), m_Col);
    }

    // Gaps, the last ones first, come to stand at a column before all of them, each run together
    // with those behind it.
    void gather(const std::vector<GapRun> &runs, unsigned long to)
    {
        if (runs.empty())
            return;
        GapRun gathered = runs.front();
        for (auto run = runs.begin() + 1; run != runs.end(); ++run) {
            m_Steps.push_back({gathered.begin, gathered.count, run->begin + run->count});
            gathered = {run->begin, gathered.count + run->count};
        }
        if (gathered.begin > to && m_Cells.residuesIn(to, gathered.begin) > 0)
            m_Steps.push_back({gathered.begin, gathered.count, to});
    }

    // Row, what it has, column, what is needed.
    void refuse(const QString &sentence, const QString &what, unsigned long col)
    {
        m_Plan.refusal = sentence.arg(name(), what, numberText(col + 1), neededText(m_Count));
    }
    [[nodiscard]] QString name() const { return quotedRow(m_All.m_Alignment, m_Row); }

    const RowGaps &m_All;
    const GapEdit &m_Edit;
    unsigned long m_Row;
    RowCells m_Cells;
    std::vector<GapStep> &m_Steps;
    unsigned long m_Col;
    unsigned long m_Count;
    RowPlan m_Plan;
};

RowGaps::RowGaps(const TAMBO::Alignment &alignment, const GapEdit &edit, const KeptColumns &kept)
    : m_Alignment(alignment),
      m_Edit(edit),
      m_Kept(withinWidth(kept, alignment.width())),
      m_Width(alignment.width()),
      m_End(alignment.width())
{
    m_Edit.block.rowEnd = std::min(edit.block.rowEnd, alignment.height());
    m_Edit.block.colEnd = std::min(edit.block.colEnd, m_Width);
    if (!m_Kept)
        return;
    if (m_Edit.block.colBegin < m_Kept->first) {
        m_End = m_Kept->first;
        m_CanWiden = false;
    } else {
        m_First = m_Kept->second;
    }
}

QString RowGaps::refusal() const
{
    const TAMBO::CellBlock &block = m_Edit.block;
    if (block.isEmpty())
        return tr("The alignment has no cells there.");
    const QString name = quotedRow(m_Alignment, block.rowBegin);
    if (m_Edit.count < 0 && !hasDirection(m_Edit.kind) && !isPush(m_Edit.kind))
        return tr("%1 cannot have less than no gaps.").arg(name);
    const unsigned long end = isOfBlock(m_Edit) ? block.colEnd : block.colBegin + 1;
    if (m_Kept && block.colBegin < m_Kept->second && end > m_Kept->first)
        return tr("%1 stays as it is in the kept %2.")
            .arg(name, columnsText(m_Kept->first, m_Kept->second));
    return {};
}

bool RowGaps::pushesTogether() const noexcept
{
    const unsigned long rows = m_Edit.block.rowEnd - m_Edit.block.rowBegin;
    return isPush(m_Edit.kind) && rows > kRowsPushedOneByOne &&
           rows >= m_Alignment.height() / kLeastShareOfRows;
}

QString RowGaps::withoutResidues() const
{
    return tr("%1 has no residue in %2.")
        .arg(quotedRow(m_Alignment, m_Edit.block.rowBegin),
             columnsText(m_Edit.block.colBegin, m_Edit.block.colEnd));
}

RowPlan RowGaps::plan(unsigned long row, std::vector<GapStep> &steps) const
{
    if (m_Edit.count == 0 && !isPush(m_Edit.kind))
        return {};
    return Planner(*this, row, steps).plan();
}

unsigned long RowGaps::growth(unsigned long row, const std::vector<GapStep> &steps) const
{
    unsigned long most = 0;
    for (const GapStep &step : steps) {
        if (!step.from) {
            const unsigned long spare = m_Width - RowCells(m_Alignment, row).endOfResidues(m_Width);
            most = std::max(most, step.count - std::min(step.count, spare));
        }
    }
    return most;
}

} // namespace companion
