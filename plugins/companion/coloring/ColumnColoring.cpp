// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnColoring.h"

#include "Alignment.h"
#include "DataPoint.h"
#include "Space.h"
#include "StepName.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>

namespace companion {

namespace {

constexpr Color kWithoutColor(0xffffffU);
constexpr std::string_view kCapitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view kSmallOnes = "abcdefghijklmnopqrstuvwxyz";

// The letters that get one color, as passes over the alignment take them: each pass has one letter
// for each column.
class ColorPasses
{
public:
    explicit ColorPasses(std::size_t columns) : m_Columns(columns) { }

    void add(std::size_t column, char letter)
    {
        if (m_Used.empty())
            m_Used.assign(m_Columns, 0);
        const std::size_t pass = m_Used[column]++;
        if (pass == m_Passes.size())
            m_Passes.emplace_back(m_Columns, '\0');
        m_Passes[pass][column] = letter;
    }
    [[nodiscard]] const std::vector<std::vector<char>> &passes() const noexcept { return m_Passes; }

private:
    std::size_t m_Columns;
    std::vector<std::size_t> m_Used;
    std::vector<std::vector<char>> m_Passes;
};

struct CountedColumns
{
    std::vector<ColumnCounts> columns;
    bool hasSmallLetters = false;
};

CountedColumns count(const TAMBO::Alignment &alignment)
{
    CountedColumns counted;
    counted.columns.resize(alignment.width());
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        const std::string letters = alignment.GetSequence(row, false);
        addRow(counted.columns, letters);
        counted.hasSmallLetters =
            counted.hasSmallLetters || letters.find_first_of(kSmallOnes) != std::string::npos;
    }
    return counted;
}

} // namespace

std::vector<ColumnCounts> countColumns(const TAMBO::Alignment &alignment)
{
    return count(alignment).columns;
}

bool colorByColumn(TAMBO::Alignment &alignment, ColumnRule rule)
{
    const CountedColumns counted = count(alignment);
    std::map<unsigned int, ColorPasses> byColor;
    const auto addColors = [&](std::size_t col, const ColumnColors &colors,
                               std::string_view letters) {
        for (const char letter : letters) {
            if (const std::optional<Color> color = colors.of(letter))
                byColor.try_emplace(color->rgb(), counted.columns.size())
                    .first->second.add(col, letter);
        }
    };
    for (std::size_t col = 0; col < counted.columns.size(); ++col) {
        const ColumnColors colors = columnColors(rule, counted.columns[col]);
        addColors(col, colors, kCapitals);
        if (counted.hasSmallLetters)
            addColors(col, colors, kSmallOnes);
    }

    DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
    if (!change.m_good)
        return false;
    const StepName name("Color by column");
    std::array<Color, 256> none;
    none.fill(kWithoutColor);
    alignment.colorByLetter(none);
    for (const auto &[color, passes] : byColor) {
        for (const std::vector<char> &letters : passes.passes())
            alignment.colorLetters(letters, Color(color));
    }
    return true;
}

} // namespace companion
