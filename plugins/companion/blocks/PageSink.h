// SPDX-License-Identifier: GPL-3.0-or-later
// Base of what pages are written into, whatever the kind of file.
#pragma once

#include "PageLayout.h"
#include "TrackColumns.h"

#include <QString>

#include <cstddef>
#include <functional>
#include <span>
#include <string>

namespace companion {

// All that is the same on every page; outlives what writes them.
struct PagePlan
{
    PageOrder order;
    PageMeasures measures;
    PageLayout layout;

    PagePlan(PageOrder wanted, const TAMBO::Alignment &alignment);

    // "Page 2 of 7", for people.
    [[nodiscard]] QString pageText(std::size_t number) const;
};

// One line of a block.
struct PageRow
{
    // Its place in PageOrder::rows.
    std::size_t place = 0;
    QString name;
    // Empty where it has no residue.
    QString number;
    std::span<const TAMBO::AlignmentCell> cells;
};

using ColumnOfTrack = std::function<const TrackColumn *(unsigned long col)>;

// Called for each page from above, and within a page part by part: its beginning, its rows, and
// when it has tracks these and the lines.
class PageSink
{
public:
    PageSink() = default;
    virtual ~PageSink();
    PageSink(const PageSink &) = delete;
    PageSink &operator=(const PageSink &) = delete;

    virtual void beginPage(const Page &page) = 0;
    virtual void beginPart(const PagePart &part) = 0;
    virtual void addRow(const PagePart &part, const PageRow &row) = 0;
    virtual void addTracks(const PagePart &part, const ColumnOfTrack &columns) = 0;
    // place: in PageOrder::lines; a character for each column, ' ' where there is nothing.
    virtual void addLine(const PagePart &part, std::size_t place, const std::string &text) = 0;
    virtual void endPart(const PagePart &part);
    virtual void endPage(const Page &page);
};

} // namespace companion
