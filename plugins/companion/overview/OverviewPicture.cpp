// SPDX-License-Identifier: GPL-3.0-or-later
#include "OverviewPicture.h"

#include <algorithm>
#include <cstdint>

namespace companion {

namespace {

constexpr QRgb kGapColor = qRgb(255, 255, 255);

// Of what a pixel covers.
class MeanColor
{
public:
    void add(QRgb color) noexcept
    {
        m_Red += static_cast<unsigned>(qRed(color));
        m_Green += static_cast<unsigned>(qGreen(color));
        m_Blue += static_cast<unsigned>(qBlue(color));
        ++m_Count;
    }
    [[nodiscard]] QRgb value() const noexcept
    {
        const auto mean = [this](std::uint64_t sum) {
            return static_cast<int>((sum + m_Count / 2) / m_Count);
        };
        return m_Count == 0 ? kGapColor : qRgb(mean(m_Red), mean(m_Green), mean(m_Blue));
    }

private:
    std::uint64_t m_Red = 0;
    std::uint64_t m_Green = 0;
    std::uint64_t m_Blue = 0;
    std::uint64_t m_Count = 0;
};

QRgb colorOf(const TAMBO::AlignmentCell &cell)
{
    if (cell.isGap())
        return kGapColor;
    const QRgb color = cell.color.argb();
    if (cell.color.isOpaque())
        return color;
    // Over the white ground of the cells.
    const auto over = [alpha = qAlpha(color)](int value) {
        return (value * alpha + 255 * (255 - alpha)) / 255;
    };
    return qRgb(over(qRed(color)), over(qGreen(color)), over(qBlue(color)));
}

} // namespace

void OverviewPicture::begin(const TAMBO::Alignment &alignment, const QSize &size)
{
    if (alignment.height() == 0 || alignment.width() == 0 || size.isEmpty())
        return clear();
    m_Alignment = &alignment;
    // No more lines than there are rows: the rest would show the same again.
    const auto rows =
        std::min<unsigned long>(alignment.height(), static_cast<unsigned>(size.height()));
    const auto columns =
        std::min<unsigned long>(alignment.width(), static_cast<unsigned>(size.width()));
    const QSize wanted(static_cast<int>(columns), static_cast<int>(rows));
    if (m_Image.isNull()) {
        m_Image = QImage(wanted, QImage::Format_RGB32);
        m_Image.fill(kGapColor);
    } else if (m_Image.size() != wanted) {
        m_Image = m_Image.scaled(wanted);
    }
    m_NextLine = 0;
}

void OverviewPicture::clear()
{
    m_Alignment = nullptr;
    m_Image = {};
    m_NextLine = 0;
}

bool OverviewPicture::goOn(std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    while (!isDone()) {
        makeLine(m_NextLine++);
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return !isDone();
}

void OverviewPicture::makeLine(int line)
{
    const auto lines = static_cast<unsigned long>(m_Image.height());
    const auto pixels = static_cast<unsigned long>(m_Image.width());
    const unsigned long row =
        (2 * static_cast<unsigned long>(line) + 1) * m_Alignment->height() / (2 * lines);
    const unsigned long columns = m_Alignment->width();
    m_Cells.clear();
    m_Alignment->readRow(row, 0, columns, m_Cells);
    m_CellsRead += m_Cells.size();
    auto *const out = reinterpret_cast<QRgb *>(m_Image.scanLine(line));
    for (unsigned long x = 0; x < pixels; ++x) {
        MeanColor mean;
        const unsigned long end =
            std::min<unsigned long>((x + 1) * columns / pixels, m_Cells.size());
        for (unsigned long col = x * columns / pixels; col < end; ++col)
            mean.add(colorOf(m_Cells[col]));
        out[x] = mean.value();
    }
}

} // namespace companion
