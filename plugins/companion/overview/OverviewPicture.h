// SPDX-License-Identifier: GPL-3.0-or-later
// A whole alignment as a small picture in its colors, made line by line, so that no size holds up
// the window.
#pragma once

#include "Alignment.h"

#include <QImage>
#include <QSize>

#include <chrono>
#include <vector>

namespace companion {

// A line shows the row in the middle of those that it stands for, and a pixel of it the mean of the
// colors of the cells that it covers, gaps being white. So a picture reads height x columns cells,
// however many rows there are.
class OverviewPicture
{
public:
    // In pixels; what is there of the last picture stays until its lines are made anew. The
    // alignment stays as it is until all lines are made or begin() is called again.
    void begin(const TAMBO::Alignment &alignment, const QSize &size);
    void clear();
    // Makes further lines, for about that time and one at least; false when nothing is left.
    bool goOn(std::chrono::microseconds most);
    [[nodiscard]] bool isDone() const noexcept { return m_NextLine >= m_Image.height(); }
    // Null before the first begin(), and of an alignment without rows or columns.
    [[nodiscard]] const QImage &image() const noexcept { return m_Image; }
    // Since this was made, for those who look at what it costs.
    [[nodiscard]] std::size_t cellsRead() const noexcept { return m_CellsRead; }

private:
    void makeLine(int line);

    const TAMBO::Alignment *m_Alignment = nullptr;
    QImage m_Image;
    int m_NextLine = 0;
    std::vector<TAMBO::AlignmentCell> m_Cells;
    std::size_t m_CellsRead = 0;
};

} // namespace companion
