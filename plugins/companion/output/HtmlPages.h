// SPDX-License-Identifier: GPL-3.0-or-later
// Pages as one file of HTML without scripts: tables of real text, whose colors are classes.
#pragma once

#include "PageWriter.h"

#include <QHash>
#include <QIODevice>
#include <QRgb>
#include <QTemporaryFile>

namespace companion {

class HtmlPages : public PageWriter
{
public:
    // The device is open, and outlives this.
    HtmlPages(const PagePlan &plan, QIODevice &device);
    ~HtmlPages() override;

    void beginPage(const Page &page) override;
    void beginPart(const PagePart &part) override;
    void addRow(const PagePart &part, const PageRow &row) override;
    void addTracks(const PagePart &part, const ColumnOfTrack &columns) override;
    void addLine(const PagePart &part, std::size_t place, const std::string &text) override;
    void endPart(const PagePart &part) override;
    void endPage(const Page &page) override;
    bool finish(std::chrono::microseconds most) override;
    bool hasFailed() const override { return m_HasFailed; }

private:
    void add(const QByteArray &text);
    [[nodiscard]] QByteArray head() const;
    [[nodiscard]] int classOf(QRgb color);

    const PagePlan &m_Plan;
    QIODevice &m_Device;
    // Which colors there are, which stand before the rows, is known behind them.
    QTemporaryFile m_Body;
    QHash<QRgb, int> m_Classes;
    bool m_HasHead = false;
    bool m_HasFailed = false;
};

} // namespace companion
