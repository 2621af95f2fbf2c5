// SPDX-License-Identifier: GPL-3.0-or-later
// Pages below each other as SVG whose texts are texts.
#pragma once

#include "PageWriter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QIODevice>

namespace companion {

class SvgPages : public PageWriter
{
public:
    // The device is open, and outlives this.
    SvgPages(const PagePlan &plan, QIODevice &device);
    ~SvgPages() override;

    void beginPage(const Page &page) override;
    void beginPart(const PagePart &part) override;
    void addRow(const PagePart &part, const PageRow &row) override;
    void addTracks(const PagePart &part, const ColumnOfTrack &columns) override;
    void addLine(const PagePart &part, std::size_t place, const std::string &text) override;
    void endPart(const PagePart &part) override;
    void endPage(const Page &page) override;
    bool finish(std::chrono::microseconds most) override;

private:
    void write(const QByteArray &text) { m_Device.write(text); }
    void addText(const QPointF &baseline, const QByteArray &attributes, const QString &text);
    void addGrounds(const PageRow &row, double top);
    void addLetters(const PageRow &row, double baseline);
    [[nodiscard]] QString cut(const QString &text, double width) const;

    const PagePlan &m_Plan;
    QIODevice &m_Device;
    QFontMetricsF m_Metrics;
};

// The tracks of a part without their names, their left upper corner at 0, so that one unit is a
// twentieth of a point.
inline constexpr double kShapesOfPoint = 20;
[[nodiscard]] QByteArray svgOfTrack(const PagePlan &plan, const PagePart &part, Track track,
                                    const ColumnOfTrack &columns);

} // namespace companion
