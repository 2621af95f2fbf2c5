// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentNumbers.h"

#include "AlignmentTable.h"
#include "ColumnCounts.h"
#include "ColumnScores.h"
#include "IdentityDistances.h"
#include "LetterSpread.h"
#include "NeighborJoining.h"
#include "PairIdentity.h"
#include "Places.h"
#include "RecordMaker.h"
#include "SplitLoop.h"
#include "SpreadSum.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

namespace TAMBO::script {

namespace {

// Ctrl+C is heard so often in work that is done without the interpreter.
bool goesOnWithout()
{
    const py::gil_scoped_acquire lock;
    return PyErr_CheckSignals() == 0;
}

void throwIfCalledOff(bool isDone)
{
    if (!isDone)
        throw py::error_already_set();
}

constexpr std::size_t kSpreadColumns = 64;
// What takes less is over before another thread has begun, and would wait for that.
constexpr std::size_t kCellsForOthers = std::size_t(1) << 20;

// Letters that are as good as any where it is asked whether there are some.
constexpr std::array<char, kSpreadColumns + kSpreadReadSlack> kAnyLetters = [] {
    std::array<char, kSpreadColumns + kSpreadReadSlack> letters{};
    letters.fill(1);
    return letters;
}();

// Writes the columns [begin, end) of a row, and nothing behind them.
class RowSpread
{
public:
    // Without letters a 1 stands for each.
    RowSpread(const AlignmentRow &row, bool hasLetters) : m_Row(row), m_HasLetters(hasLetters) { }

    void put(std::size_t begin, std::size_t end, char gap, char *to) const
    {
        if (m_HasLetters && !isInOnePiece(begin, end)) {
            putRuns(begin, end, gap, to);
            return;
        }
        const std::string_view letters =
            m_HasLetters ? m_Row.sequence().letters() : std::string_view();
        const std::uint32_t before = m_Row.cells().rank(begin);
        const bool isEmpty = before == m_Row.cells().rank(end);
        std::size_t letter = !m_HasLetters || isEmpty ? 0 : m_Row.residueIndex(before);
        std::array<char, kSpreadColumns + kSpreadReadSlack> lastLetters{};
        std::array<char, kSpreadColumns + kSpreadWriteSlack> lastCells{};
        for (std::size_t column = begin; column < end; column += kSpreadColumns) {
            const std::size_t count = std::min(end - column, kSpreadColumns);
            std::uint64_t cells = m_Row.cells().bitsAt(column);
            if (count < kSpreadColumns)
                cells &= (std::uint64_t{1} << count) - 1;
            const char *from = m_HasLetters ? letters.data() + letter : kAnyLetters.data();
            if (m_HasLetters && letters.size() - letter < lastLetters.size()) {
                // Nothing behind the last letter is to be read.
                letters.copy(lastLetters.data(), letters.size() - letter, letter);
                from = lastLetters.data();
            }
            const bool isLast = end - column < kSpreadColumns + kSpreadWriteSlack;
            char *const place = isLast ? lastCells.data() : to + (column - begin);
            const char *const next = spreadLetters(place, from, cells, unsigned(count), gap);
            if (isLast)
                std::memcpy(to + (column - begin), place, count);
            letter += std::size_t(next - from);
        }
    }

private:
    // Whether the residues in the columns stand side by side in their sequence.
    [[nodiscard]] bool isInOnePiece(std::size_t begin, std::size_t end) const
    {
        return m_Row.isComplete() ||
               m_Row.residueRuns(m_Row.cells().rank(begin), m_Row.cells().rank(end)).size() <= 1;
    }
    void putRuns(std::size_t begin, std::size_t end, char gap, char *to) const
    {
        std::fill(to, to + (end - begin), gap);
        const std::string_view letters = m_Row.sequence().letters();
        m_Row.forEachRun(begin, end,
                         [&](std::size_t column, std::uint32_t first, std::uint32_t count) {
                             letters.copy(to + (column - begin), count, first);
                         });
    }

    const AlignmentRow &m_Row;
    bool m_HasLetters;
};

py::array cellsOf(const AlignmentReference &reference, const py::object &rows,
                  const py::object &columns, const char *type, bool hasLetters, char gap)
{
    const AlignmentTable &table = (*reference).table();
    const std::vector<std::size_t> chosen = placesOf(rows, table.rowCount(), "row");
    const auto range = rangeOf(columns, table.width(), "column");
    const std::size_t width = range.second - range.first;
    py::array cells(py::dtype(type), {py::ssize_t(chosen.size()), py::ssize_t(width)});
    auto *const to = static_cast<char *>(cells.mutable_data());
    // Most of the time goes into the memory of the array, which several processors touch faster.
    const std::size_t words = width / kSpreadColumns + 1;
    const SplitLoop loop(chosen.size() * words);
    // They may not touch objects, nor the array, which nobody has yet.
    std::optional<py::gil_scoped_release> others;
    if (chosen.size() * width >= kCellsForOthers)
        others.emplace();
    loop.run([&](std::size_t part) {
        const std::size_t end = part + 1 < loop.parts() ? loop.end(part) / words : chosen.size();
        for (std::size_t i = loop.begin(part) / words; i < end; ++i)
            RowSpread(table.row(chosen[i]), hasLetters)
                .put(range.first, range.second, gap, to + i * width);
    });
    others.reset();
    return cells;
}

std::vector<std::string> textsOf(const Alignment &alignment)
{
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < alignment.table().rowCount(); ++row)
        texts.push_back(alignment.GetSequence(row, false));
    return texts;
}

double share(std::uint64_t part, std::uint64_t whole)
{
    return whole == 0 ? std::numeric_limits<double>::quiet_NaN() : double(part) / double(whole);
}

using ShareOf = double (*)(const PairIdentity &pair);

ShareOf shareNamed(const std::string &of)
{
    if (of == "shorter")
        return [](const PairIdentity &pair) {
            return share(pair.identical, std::min(pair.firstLength, pair.secondLength));
        };
    if (of == "aligned")
        return [](const PairIdentity &pair) {
            return share(pair.identical, pair.identical + pair.different);
        };
    if (of == "overlap")
        return [](const PairIdentity &pair) { return share(pair.identical, pair.overlap); };
    throw py::value_error("identity is a share of 'shorter', 'aligned' or 'overlap', and not of '" +
                          of + "'");
}

} // namespace

py::array letters(const AlignmentReference &alignment, const py::object &rows,
                  const py::object &columns, const std::string &gap)
{
    if (gap.size() != 1)
        throw py::value_error("a gap is one character of ASCII");
    return cellsOf(alignment, rows, columns, "uint8", true, gap.front());
}

py::array occupancy(const AlignmentReference &alignment, const py::object &rows,
                    const py::object &columns)
{
    return cellsOf(alignment, rows, columns, "bool", false, '\0');
}

py::array identities(const AlignmentReference &reference, const std::string &of)
{
    const ShareOf shareOf = shareNamed(of);
    const AlignmentRecord record = makeRecord(*reference);
    const std::size_t rows = record.rows.size();
    py::array_t<double> matrix({py::ssize_t(rows), py::ssize_t(rows)});
    double *const values = matrix.mutable_data();
    bool isDone = true;
    {
        const py::gil_scoped_release others;
        const PairIdentities pairs(record);
        for (std::size_t first = 0; first < rows && isDone; ++first) {
            for (std::size_t second = first; second < rows; ++second) {
                const double value = shareOf(pairs.compare(first, second));
                values[first * rows + second] = value;
                values[second * rows + first] = value;
            }
            isDone = goesOnWithout();
        }
    }
    throwIfCalledOff(isDone);
    return matrix;
}

py::array conservations(const AlignmentReference &reference)
{
    const Alignment &alignment = *reference;
    const std::vector<std::string> texts = textsOf(alignment);
    py::array_t<double> scores(py::ssize_t(alignment.width()));
    double *const values = scores.mutable_data();
    bool isDone = true;
    {
        const std::size_t width = alignment.width();
        const py::gil_scoped_release others;
        std::vector<companion::ColumnCounts> counts(width);
        for (std::size_t row = 0; row < texts.size() && isDone; ++row) {
            companion::addRow(counts, texts[row]);
            isDone = row % 1024 != 0 || goesOnWithout();
        }
        for (std::size_t column = 0; column < width; ++column)
            values[column] = companion::conservation(counts[column]);
    }
    throwIfCalledOff(isDone);
    return scores;
}

py::array distances(const AlignmentReference &reference)
{
    const Alignment &alignment = *reference;
    const std::size_t width = alignment.width();
    std::vector<companion::SpreadSum> sums(width);
    std::vector<Vertex> positions;
    for (std::size_t row = 0; row < alignment.table().rowCount(); ++row) {
        if (!alignment.hasPositions(row))
            continue;
        positions.clear();
        alignment.readPositions(row, 0, width, positions);
        for (std::size_t column = 0; column < width; ++column) {
            if (positions[column].isDefined())
                sums[column].add(positions[column]);
        }
    }
    py::array_t<double> means{py::ssize_t(width)};
    double *const values = means.mutable_data();
    bool isDone = true;
    {
        const py::gil_scoped_release others;
        for (std::size_t column = 0; column < width && isDone; ++column) {
            while (isDone && sums[column].goOn(std::chrono::steady_clock::now() +
                                               std::chrono::milliseconds(50)))
                isDone = goesOnWithout();
            values[column] =
                sums[column].value().distance.value_or(std::numeric_limits<double>::quiet_NaN());
        }
    }
    throwIfCalledOff(isDone);
    return means;
}

companion::Tree neighborTree(const AlignmentReference &reference)
{
    const Alignment &alignment = *reference;
    const std::vector<std::string> texts = textsOf(alignment);
    std::vector<std::string> names;
    for (std::size_t row = 0; row < texts.size(); ++row)
        names.push_back(alignment.table().row(row).name());
    if (texts.empty())
        throw RefusedError("there are no rows to make a tree of");
    std::optional<companion::Tree> tree;
    {
        const py::gil_scoped_release others;
        const companion::GoOn goOn = [](double) { return goesOnWithout(); };
        const auto matrix =
            companion::identityDistances(texts, companion::IdentityOf::AlignedPairs, goOn);
        if (matrix)
            tree = companion::neighborJoining(*matrix, names, goOn);
    }
    throwIfCalledOff(tree.has_value());
    return std::move(*tree);
}

} // namespace TAMBO::script
