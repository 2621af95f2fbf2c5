// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnColoring.h"

#include "Alignment.h"
#include "DataPoint.h"
#include "SlicedWork.h"
#include "Space.h"
#include "StepName.h"
#include "Texts.h"

#include <algorithm>
#include <array>
#include <chrono>
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

class CountingColumns
{
public:
    explicit CountingColumns(const TAMBO::Alignment &alignment) : m_Alignment(alignment)
    {
        begin();
    }

    // Looks at further rows, for about that time; false when all are counted.
    bool goOn(std::chrono::microseconds most)
    {
        const auto end = std::chrono::steady_clock::now() + most;
        // Another alignment than the one that was begun with.
        if (m_Alignment.layoutRevision() != m_Revision)
            begin();
        while (m_Row < m_Alignment.height()) {
            const std::string letters = m_Alignment.GetSequence(m_Row++, false);
            addRow(m_Columns, letters);
            m_HasSmallLetters =
                m_HasSmallLetters || letters.find_first_of(kSmallOnes) != std::string::npos;
            if (std::chrono::steady_clock::now() >= end)
                break;
        }
        return m_Row < m_Alignment.height();
    }
    [[nodiscard]] int percent() const
    {
        constexpr unsigned long all = 100;
        return static_cast<int>(m_Row * all / std::max(1UL, m_Alignment.height()));
    }
    [[nodiscard]] const std::vector<ColumnCounts> &columns() const noexcept { return m_Columns; }
    [[nodiscard]] bool hasSmallLetters() const noexcept { return m_HasSmallLetters; }

private:
    void begin()
    {
        m_Revision = m_Alignment.layoutRevision();
        m_Columns.assign(m_Alignment.width(), {});
        m_HasSmallLetters = false;
        m_Row = 0;
    }

    const TAMBO::Alignment &m_Alignment;
    unsigned long m_Revision = 0;
    unsigned long m_Row = 0;
    std::vector<ColumnCounts> m_Columns;
    bool m_HasSmallLetters = false;
};

} // namespace

std::vector<ColumnCounts> countColumns(const TAMBO::Alignment &alignment)
{
    CountingColumns counting(alignment);
    while (counting.goOn(std::chrono::hours(1))) {
    }
    return counting.columns();
}

bool colorByColumn(TAMBO::Alignment &alignment, ColumnRule rule, QWidget *over)
{
    CountingColumns counted(alignment);
    if (!finish({[&](auto most) { return counted.goOn(most); }, [&] { return counted.percent(); }},
                tr("Counting the columns…"), over))
        return false;
    std::map<unsigned int, ColorPasses> byColor;
    const auto addColors = [&](std::size_t col, const ColumnColors &colors,
                               std::string_view letters) {
        for (const char letter : letters) {
            if (const std::optional<Color> color = colors.of(letter))
                byColor.try_emplace(color->rgb(), counted.columns().size())
                    .first->second.add(col, letter);
        }
    };
    for (std::size_t col = 0; col < counted.columns().size(); ++col) {
        const ColumnColors colors = columnColors(rule, counted.columns()[col]);
        addColors(col, colors, kCapitals);
        if (counted.hasSmallLetters())
            addColors(col, colors, kSmallOnes);
    }

    DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
    if (!change.m_good)
        return false;
    const StepName name("Color by column");
    std::array<Color, 256> none;
    none.fill(kWithoutColor);
    // Behind it nothing can be given up any more.
    if (!alignment.colorByLetter(none))
        return false;
    for (const auto &[color, passes] : byColor) {
        for (const std::vector<char> &letters : passes.passes())
            alignment.colorLetters(letters, Color(color));
    }
    return true;
}

} // namespace companion
