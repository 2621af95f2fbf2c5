// SPDX-License-Identifier: GPL-3.0-or-later
// Pages of a device that has pages itself: a printer, or a PDF file.
#pragma once

#include "PageWriter.h"
#include "PaintedPages.h"

#include <QPainter>
#include <QPdfWriter>

#include <optional>

namespace companion {

class PagedPages : public PageWriter
{
public:
    // Begins on the device, which has the plan's paper without margins, and outlives this.
    PagedPages(const PagePlan &plan, QPagedPaintDevice &device, double dotsOfInch);
    ~PagedPages() override;

    void beginPage(const Page &page) override;
    void beginPart(const PagePart &part) override;
    void addRow(const PagePart &part, const PageRow &row) override;
    void addTracks(const PagePart &part, const ColumnOfTrack &columns) override;
    void addLine(const PagePart &part, std::size_t place, const std::string &text) override;
    bool finish(std::chrono::microseconds most) override;
    bool hasFailed() const override { return m_HasFailed; }

private:
    QPagedPaintDevice &m_Device;
    QPainter m_Painter;
    std::optional<PaintedPages> m_Pages;
    bool m_HasPage = false;
    bool m_HasFailed = false;
};

// In which text can be found.
class PdfPages : public PageWriter
{
public:
    // In points: readers take no longer page.
    static constexpr double kLongestPage = 14'400;

    // The device is open, and outlives this.
    PdfPages(const PagePlan &plan, QIODevice &device);
    ~PdfPages() override;

    void beginPage(const Page &page) override { m_Pages->beginPage(page); }
    void beginPart(const PagePart &part) override { m_Pages->beginPart(part); }
    void addRow(const PagePart &part, const PageRow &row) override { m_Pages->addRow(part, row); }
    void addTracks(const PagePart &part, const ColumnOfTrack &columns) override
    {
        m_Pages->addTracks(part, columns);
    }
    void addLine(const PagePart &part, std::size_t place, const std::string &text) override
    {
        m_Pages->addLine(part, place, text);
    }
    bool finish(std::chrono::microseconds most) override { return m_Pages->finish(most); }
    bool hasFailed() const override { return m_Pages->hasFailed(); }

private:
    QPdfWriter m_Writer;
    std::optional<PagedPages> m_Pages;
};

} // namespace companion
