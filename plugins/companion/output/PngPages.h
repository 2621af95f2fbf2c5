// SPDX-License-Identifier: GPL-3.0-or-later
// Pages below each other in one picture of pixels.
#pragma once

#include "PageWriter.h"
#include "PaintedPages.h"

#include <QImage>
#include <QPainter>

#include <atomic>
#include <optional>
#include <thread>

namespace companion {

class PngPages : public PageWriter
{
public:
    // Of one side, and in all: four hundred megabytes while it is made.
    static constexpr double kMostPixelsOfSide = 32'767;
    static constexpr double kMostPixels = 100'000'000;

    // Why there can be no such picture, and what to do; empty when there can.
    [[nodiscard]] static QString obstacle(const PagePlan &plan, double dotsOfInch);

    // The device is open, and outlives this. There is no obstacle.
    PngPages(const PagePlan &plan, QIODevice &device, double dotsOfInch);
    ~PngPages() override;

    [[nodiscard]] const QImage &image() const noexcept { return m_Image; }

    void beginPage(const Page &page) override;
    void beginPart(const PagePart &part) override;
    void addRow(const PagePart &part, const PageRow &row) override;
    void addTracks(const PagePart &part, const ColumnOfTrack &columns) override;
    void addLine(const PagePart &part, std::size_t place, const std::string &text) override;
    // Packing takes seconds, and goes on in a thread.
    bool finish(std::chrono::microseconds most) override;
    bool hasFailed() const override { return m_HasFailed; }

private:
    void pack();

    QIODevice &m_Device;
    int m_PageHeight;
    QImage m_Image;
    QPainter m_Painter;
    std::optional<PaintedPages> m_Pages;
    std::thread m_Packing;
    std::atomic<bool> m_IsGivenUp = false;
    std::atomic<bool> m_IsPacked = false;
    std::atomic<bool> m_HasFailed = false;
};

} // namespace companion
