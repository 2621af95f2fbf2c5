// SPDX-License-Identifier: GPL-3.0-or-later
#include "PagedPages.h"

#include <QPageLayout>

namespace companion {

namespace {

constexpr int kDotsOfPdf = 1200;

} // namespace

PagedPages::PagedPages(const PagePlan &plan, QPagedPaintDevice &device, double dotsOfInch)
    : m_Device(device)
{
    if (!m_Painter.begin(&device)) {
        m_HasFailed = true;
        return;
    }
    m_Pages.emplace(plan, m_Painter, dotsOfInch / kPointsOfInch,
                    [](std::size_t) { return QPointF(); });
}

PagedPages::~PagedPages() = default;

void PagedPages::beginPage(const Page &page)
{
    if (!m_Pages)
        return;
    if (m_HasPage && !m_Device.newPage())
        m_HasFailed = true;
    m_HasPage = true;
    m_Pages->beginPage(page);
}

void PagedPages::beginPart(const PagePart &part)
{
    if (m_Pages)
        m_Pages->beginPart(part);
}

void PagedPages::addRow(const PagePart &part, const PageRow &row)
{
    if (m_Pages)
        m_Pages->addRow(part, row);
}

void PagedPages::addTracks(const PagePart &part, const ColumnOfTrack &columns)
{
    if (m_Pages)
        m_Pages->addTracks(part, columns);
}

void PagedPages::addLine(const PagePart &part, std::size_t place, const std::string &text)
{
    if (m_Pages)
        m_Pages->addLine(part, place, text);
}

bool PagedPages::finish(std::chrono::microseconds)
{
    if (m_Painter.isActive() && !m_Painter.end())
        m_HasFailed = true;
    return true;
}

PdfPages::PdfPages(const PagePlan &plan, QIODevice &device) : m_Writer(&device)
{
    m_Writer.setResolution(kDotsOfPdf);
    m_Writer.setTitle(plan.order.title);
    m_Writer.setCreator(QStringLiteral("Tambo"));
    // On its side a page is wider than it is high, and still the first way up.
    m_Writer.setPageLayout(QPageLayout(
        QPageSize(plan.layout.pageSize(), QPageSize::Point, QString(), QPageSize::ExactMatch),
        QPageLayout::Portrait, QMarginsF()));
    m_Pages.emplace(plan, m_Writer, kDotsOfPdf);
}

PdfPages::~PdfPages() = default;

} // namespace companion
