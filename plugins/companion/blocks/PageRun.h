// SPDX-License-Identifier: GPL-3.0-or-later
// Reads an alignment in the order of its pages and hands them on, in small parts, so that the
// program stays quick however many pages there are.
#pragma once

#include "PageSink.h"

#include <chrono>
#include <cstddef>
#include <vector>

namespace companion {

class PageRun
{
public:
    // The pages [first, end). All three outlive it, and the alignment stays as it is.
    PageRun(const TAMBO::Alignment &alignment, const PagePlan &plan, PageSink &sink,
            std::size_t first, std::size_t end);

    // Hands on further rows, for about that time and one at least; false when nothing is left.
    bool goOn(std::chrono::microseconds most);
    [[nodiscard]] bool isDone() const noexcept { return m_Number >= m_End; }
    // From 0 to 1.
    [[nodiscard]] double done() const noexcept;

private:
    void step(std::chrono::microseconds most);
    void handOnRow(const PagePart &part);
    [[nodiscard]] bool handOnTracks(const PagePart &part, std::chrono::microseconds most);

    const TAMBO::Alignment &m_Alignment;
    const PagePlan &m_Plan;
    PageSink &m_Sink;
    std::size_t m_First;
    std::size_t m_End;
    // The present page, whether it has begun, which part of it and which row comes next.
    std::size_t m_Number;
    bool m_HasPage = false;
    Page m_Page;
    std::size_t m_Part = 0;
    bool m_HasPart = false;
    std::size_t m_Row = 0;
    TrackColumns m_Tracks;
    std::vector<TAMBO::AlignmentCell> m_Cells;
};

} // namespace companion
