// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageRun.h"

#include "Alignment.h"
#include "RowNumbers.h"

#include <algorithm>

namespace companion {

PageRun::PageRun(const TAMBO::Alignment &alignment, const PagePlan &plan, PageSink &sink,
                 std::size_t first, std::size_t end)
    : m_Alignment(alignment),
      m_Plan(plan),
      m_Sink(sink),
      m_First(first),
      m_End(std::min(end, plan.layout.pages())),
      m_Number(first)
{
    m_Tracks.wantSpread(std::ranges::count(plan.order.tracks, Track::Distance) > 0);
}

double PageRun::done() const noexcept
{
    if (m_End <= m_First || isDone())
        return 1;
    double ofPage = 0;
    if (m_HasPage && m_Part < m_Page.parts.size()) {
        const PagePart &part = m_Page.parts[m_Part];
        const double ofPart =
            m_HasPart ? double(m_Row - part.rowBegin) / double(part.rowEnd - part.rowBegin + 1) : 0;
        ofPage = (double(m_Part) + ofPart) / double(m_Page.parts.size());
    } else if (m_HasPage) {
        ofPage = 1;
    }
    return (double(m_Number - m_First) + ofPage) / double(m_End - m_First);
}

bool PageRun::goOn(std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    while (!isDone()) {
        step(most);
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return !isDone();
}

void PageRun::step(std::chrono::microseconds most)
{
    if (!m_HasPage) {
        m_Page = m_Plan.layout.page(m_Number);
        m_HasPage = true;
        m_Part = 0;
        m_Sink.beginPage(m_Page);
        return;
    }
    if (m_Part >= m_Page.parts.size()) {
        m_Sink.endPage(m_Page);
        m_HasPage = false;
        ++m_Number;
        return;
    }
    const PagePart &part = m_Page.parts[m_Part];
    if (!m_HasPart) {
        m_HasPart = true;
        m_Row = part.rowBegin;
        m_Sink.beginPart(part);
        return;
    }
    if (m_Row < part.rowEnd) {
        handOnRow(part);
        return;
    }
    if (part.hasTracks && !m_Plan.order.tracks.empty() && !handOnTracks(part, most))
        return;
    for (std::size_t i = 0; part.hasTracks && i < m_Plan.order.lines.size(); ++i)
        m_Sink.addLine(part, i,
                       lineText(m_Alignment, m_Plan.order.lines[i], part.colBegin, part.colEnd));
    m_Sink.endPart(part);
    m_HasPart = false;
    ++m_Part;
}

void PageRun::handOnRow(const PagePart &part)
{
    const unsigned long row = m_Plan.order.rows[m_Row];
    m_Cells.clear();
    m_Alignment.readRow(row, part.colBegin, part.colEnd, m_Cells);
    PageRow line;
    line.place = m_Row;
    if (m_Plan.order.hasNames)
        line.name = QString::fromStdString(m_Alignment.GetSeqName(row));
    if (m_Plan.order.hasNumbers)
        line.number = lastNumber(m_Alignment, row, part.colBegin, part.colEnd);
    line.cells = m_Cells;
    m_Sink.addRow(part, line);
    ++m_Row;
}

// False while they are being computed.
bool PageRun::handOnTracks(const PagePart &part, std::chrono::microseconds most)
{
    m_Tracks.want(part.colBegin, part.colEnd);
    if (!m_Tracks.isDone() && m_Tracks.goOn(m_Alignment, most))
        return false;
    m_Sink.addTracks(part, [this](unsigned long col) { return m_Tracks.at(col); });
    return true;
}

} // namespace companion
