// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that set the display colour of residues. None of them takes back an earlier one: a
// residue that a command does not touch keeps its colour.
#include "Colormap.h"
#include "ColumnSpread.h"
#include "DataPoint.h"
#include "DistanceColors.h"
#include "KALMO2.h"
#include "ResidueLetters.h"
#include "Space.h"

#include <QColorDialog>
#include <QInputDialog>
#include <QPointer>

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace {

// Nothing when the user cancels.
std::optional<Color> pickColor(QWidget *parent)
{
    const QColor color =
        QColorDialog::getColor(Qt::black, parent, QString(), QColorDialog::ShowAlphaChannel);
    return color.isValid() ? std::optional(Color(color)) : std::nullopt;
}

// Repaints the cells while the guard is held, so that the others hear of the change afterwards.
template <typename Pass> void colorCells(Subscriber *window, QCanvas &cells, const Pass &pass)
{
    const DataPoint<TAMBO::Space> guard(window, TAMBO::Space::instance());
    if (guard.m_good)
        pass();
    cells.setAllChanged();
    cells.update();
}

void colorByLetter(TAMBO::Alignment &alignment, const QColor *table)
{
    std::array<Color, 256> colors;
    for (std::size_t code = 0; code < colors.size(); ++code)
        colors[code] = Color(table[ZEP::residueLetterIndex(static_cast<char>(code))]);
    alignment.colorByLetter(colors);
}

// Colours in each column the residues with its most frequent letter if isConserved(count) holds.
template <typename Condition>
void colorMajorities(TAMBO::Alignment &alignment, const Color &color, const Condition &isConserved)
{
    if (alignment.height() < 2)
        return;
    std::vector<char> letters;
    letters.reserve(alignment.width());
    for (const TAMBO::AlignmentMajority &majority : alignment.majorities()) {
        const bool isColored = majority.count > 0 && isConserved(majority.count);
        letters.push_back(isColored ? majority.letter : '\0');
    }
    alignment.colorLetters(letters, color);
}

// Kept: with two rows the rule for more would call every column with a residue conserved.
void colorConservedColumns(TAMBO::Alignment &alignment, const Color &color)
{
    const unsigned long rows = alignment.height();
    colorMajorities(alignment, color, [rows](unsigned long count) {
        return rows == 2 ? count == 2 : rows < count + 2;
    });
}

void colorByDistance(TAMBO::Alignment &alignment, const Colormap &map)
{
    if (alignment.height() < 2)
        return;
    std::vector<unsigned long> rows;
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        if (alignment.hasPositions(row))
            rows.push_back(row);
    }
    if (rows.empty())
        return;
    // Coordinates lie side by side in a row and far apart in a column.
    constexpr unsigned long kBlock = 128;
    std::vector<TAMBO::Vertex> block;
    std::vector<TAMBO::Vertex> positions;
    std::vector<Color> colors;
    for (unsigned long begin = 0; begin < alignment.width(); begin += kBlock) {
        const unsigned long columns = std::min(kBlock, alignment.width() - begin);
        block.clear();
        for (const unsigned long row : rows)
            alignment.readPositions(row, begin, begin + columns, block);
        for (unsigned long i = 0; i < columns; ++i) {
            positions.clear();
            for (std::size_t k = 0; k < rows.size(); ++k) {
                const TAMBO::Vertex &position = block[k * columns + i];
                if (position.isDefined())
                    positions.push_back(position);
            }
            colors.push_back(positions.size() < 2 ? Color(QColor(Qt::white))
                                                  : map.lookupValue(static_cast<float>(
                                                        ZEP::meanDistance(positions))));
        }
    }
    alignment.colorPositioned(colors);
}

} // namespace

namespace ZEP {

// Alone among the colouring commands it publishes first and repaints afterwards, and it repaints
// also when there is nothing to colour.
void KALMO2::setColor(QColor *colors)
{
    const QPointer<KALMO2> alive(this);
    if (m_Data != nullptr && colors != nullptr) {
        const DataPoint<TAMBO::Space> guard(this, TAMBO::Space::instance());
        if (guard.m_good)
            colorByLetter(*m_Data, colors);
    }
    // Whoever heard of it may have closed this window.
    if (!alive)
        return;
    m_Canvas->setAllChanged();
    m_Canvas->update();
}

void KALMO2::setColor()
{
    if (m_Data == nullptr)
        return;
    const QPointer<KALMO2> alive(this);
    const std::optional<Color> color = pickColor(this);
    // The dialog runs an event loop, in which the window may have been closed, or the alignment
    // deleted.
    if (!alive || !color || m_Data == nullptr)
        return;
    colorCells(this, *m_Canvas, [&] { m_Data->colorSelected(*color); });
}

void KALMO2::colorConserved()
{
    if (m_Data == nullptr)
        return;
    const QPointer<KALMO2> alive(this);
    const std::optional<Color> color = pickColor(this);
    if (!alive || !color || m_Data == nullptr)
        return;
    colorCells(this, *m_Canvas, [&] { colorConservedColumns(*m_Data, *color); });
}

void KALMO2::colorConservedN()
{
    if (m_Data == nullptr)
        return;
    const QPointer<KALMO2> alive(this);
    const std::optional<Color> color = pickColor(this);
    if (!alive || !color || m_Data == nullptr)
        return;
    const int rows = static_cast<int>(m_Data->height());
    bool ok = false;
    const int number =
        QInputDialog::getInt(this, "Number of conserved", "Must be:", rows, 0, rows, 1, &ok);
    if (!alive || !ok || m_Data == nullptr)
        return;
    colorCells(this, *m_Canvas, [&] {
        colorMajorities(*m_Data, *color, [number](unsigned long count) {
            return static_cast<unsigned long>(number) <= count;
        });
    });
}

void KALMO2::colorDistance()
{
    if (m_Data == nullptr)
        return;
    const Colormap map = TAMBO::distanceColors();
    colorCells(this, *m_Canvas, [&] { colorByDistance(*m_Data, map); });
}

} // namespace ZEP
