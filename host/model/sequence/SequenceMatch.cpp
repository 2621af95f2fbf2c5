// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceMatch.h"

#include "Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <unordered_map>

namespace TAMBO {

namespace {

// One step a cell and a byte each; enough for two sequences of 8,000 residues without any long
// stretch in common.
constexpr std::size_t kMostCells = std::size_t(64) << 20;
// Long enough never to recur by chance within a protein.
constexpr std::size_t kWordLength = 10;

constexpr int kEqual = 5;
constexpr int kUnequal = -4;
constexpr int kUnknownPair = 1;
constexpr int kOpen = -10;
constexpr int kOpenAtBreak = -2;
constexpr int kExtend = -1;
constexpr int kNever = std::numeric_limits<int>::min() / 4;

int score(char a, char b) noexcept
{
    if (a == b)
        return kEqual;
    return a == 'X' || b == 'X' ? kUnknownPair : kUnequal;
}

// A stretch of both sequences that is matched by itself.
struct Window
{
    std::size_t firstBegin;
    std::size_t firstEnd;
    std::size_t secondBegin;
    std::size_t secondEnd;
};

class Matcher
{
public:
    Matcher(std::string_view first, std::string_view second, const std::vector<std::size_t> &breaks)
        : m_First(upperCase(first)),
          m_Second(upperCase(second)),
          m_IsBreak(m_Second.size() + 1, false)
    {
        for (const std::size_t position : breaks)
            m_IsBreak[position] = true;
        m_IsBreak.front() = true;
        m_IsBreak.back() = true;
    }

    SequenceMatch run();

private:
    enum class State : std::uint8_t { Pair, GapInSecond, GapInFirst };

    // Across a break letters may agree by chance.
    [[nodiscard]] bool crossesBreak(std::size_t second) const
    {
        const auto begin = m_IsBreak.begin() + std::ptrdiff_t(second) + 1;
        return std::find(begin, begin + kWordLength - 1, true) != begin + kWordLength - 1;
    }
    [[nodiscard]] std::vector<MatchRun> sharedWords() const;
    void append(std::size_t first, std::size_t second, std::size_t count);
    // The best way through a window: affine gaps, of which those at the ends of either sequence
    // cost nothing.
    struct Paths
    {
        // Per cell two bits for the state from which each of the three states came.
        std::vector<std::uint8_t> origins;
        State last = State::Pair;
    };
    void align(const Window &window);
    [[nodiscard]] Paths findPaths(const Window &window) const;
    void follow(const Window &window, const Paths &paths);

    std::string m_First;
    std::string m_Second;
    std::vector<bool> m_IsBreak;
    SequenceMatch m_Match;
};

void Matcher::append(std::size_t first, std::size_t second, std::size_t count)
{
    if (count == 0)
        return;
    m_Match.matched += count;
    for (std::size_t i = 0; i < count; ++i)
        m_Match.identical += m_First[first + i] == m_Second[second + i] ? 1 : 0;
    if (!m_Match.runs.empty()) {
        MatchRun &last = m_Match.runs.back();
        if (last.first + last.count == first && last.second + last.count == second) {
            last.count += count;
            return;
        }
    }
    m_Match.runs.push_back({first, second, count});
}

// The longest ascending series of words that occur exactly once in either sequence.
std::vector<MatchRun> Matcher::sharedWords() const
{
    constexpr std::size_t kRepeated = std::numeric_limits<std::size_t>::max();
    std::vector<MatchRun> words;
    if (m_First.size() < kWordLength || m_Second.size() < kWordLength)
        return words;
    const auto placesOf = [](std::string_view text) {
        std::unordered_map<std::string_view, std::size_t> places;
        for (std::size_t i = 0; i + kWordLength <= text.size(); ++i) {
            const auto [place, isNew] = places.emplace(text.substr(i, kWordLength), i);
            if (!isNew)
                place->second = kRepeated;
        }
        return places;
    };
    const auto inFirst = placesOf(m_First);
    const auto inSecond = placesOf(m_Second);
    for (std::size_t i = 0; i + kWordLength <= m_First.size(); ++i) {
        const std::string_view word = std::string_view(m_First).substr(i, kWordLength);
        const auto other = inSecond.find(word);
        if (other != inSecond.end() && other->second != kRepeated &&
            inFirst.at(word) != kRepeated && !crossesBreak(other->second))
            words.push_back({i, other->second, kWordLength});
    }

    // Longest increasing subsequence by the places in the second sequence.
    std::vector<std::size_t> tails;
    std::vector<std::size_t> before(words.size(), kRepeated);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto place = std::ranges::lower_bound(
            tails, words[i].second, {}, [&](std::size_t tail) { return words[tail].second; });
        if (place != tails.begin())
            before[i] = *(place - 1);
        if (place == tails.end())
            tails.push_back(i);
        else
            *place = i;
    }
    std::vector<MatchRun> series;
    for (std::size_t i = tails.empty() ? kRepeated : tails.back(); i != kRepeated; i = before[i])
        series.push_back(words[i]);
    std::ranges::reverse(series);
    return series;
}

void Matcher::align(const Window &window)
{
    const std::size_t rows = window.firstEnd - window.firstBegin;
    const std::size_t columns = window.secondEnd - window.secondBegin;
    if (rows > 0 && columns > 0 && (rows + 1) <= kMostCells / (columns + 1))
        follow(window, findPaths(window));
}

Matcher::Paths Matcher::findPaths(const Window &window) const
{
    const std::size_t rows = window.firstEnd - window.firstBegin;
    const std::size_t columns = window.secondEnd - window.secondBegin;
    const bool isAtBegin = window.firstBegin == 0 && window.secondBegin == 0;
    const bool isAtEnd = window.firstEnd == m_First.size() && window.secondEnd == m_Second.size();

    std::vector<std::uint8_t> origins((rows + 1) * (columns + 1), 0);
    using Scores = std::array<int, 3>;
    std::vector<Scores> above(columns + 1);
    std::vector<Scores> current(columns + 1);
    const auto best = [](const Scores &scores) {
        return static_cast<std::size_t>(std::ranges::max_element(scores) - scores.begin());
    };

    for (std::size_t i = 0; i <= rows; ++i) {
        for (std::size_t j = 0; j <= columns; ++j) {
            Scores &cell = current[j];
            cell = {i == 0 && j == 0 ? 0 : kNever, kNever, kNever};
            std::uint8_t origin = 0;
            if (i > 0 && j > 0) {
                const std::size_t from = best(above[j - 1]);
                cell[0] = above[j - 1][from] + score(m_First[window.firstBegin + i - 1],
                                                     m_Second[window.secondBegin + j - 1]);
                origin |= static_cast<std::uint8_t>(from);
            }
            if (i > 0) {
                // Letters of the first that the second does not show.
                const bool isFree = (isAtBegin && j == 0) || (isAtEnd && j == columns);
                const int open = m_IsBreak[window.secondBegin + j] ? kOpenAtBreak : kOpen;
                Scores scores = above[j];
                if (!isFree) {
                    scores[0] += open;
                    scores[1] += kExtend;
                    scores[2] += open;
                }
                const std::size_t from = best(scores);
                cell[1] = scores[from];
                origin |= static_cast<std::uint8_t>(from << 2);
            }
            if (j > 0) {
                const bool isFree = (isAtBegin && i == 0) || (isAtEnd && i == rows);
                Scores scores = current[j - 1];
                if (!isFree) {
                    scores[0] += kOpen;
                    scores[1] += kOpen;
                    scores[2] += kExtend;
                }
                const std::size_t from = best(scores);
                cell[2] = scores[from];
                origin |= static_cast<std::uint8_t>(from << 4);
            }
            origins[i * (columns + 1) + j] = origin;
        }
        std::swap(above, current);
    }
    return {std::move(origins), State(best(above[columns]))};
}

// From the end of the window to its begin.
void Matcher::follow(const Window &window, const Paths &paths)
{
    const std::size_t columns = window.secondEnd - window.secondBegin;
    std::vector<MatchRun> pairs;
    std::size_t i = window.firstEnd - window.firstBegin;
    std::size_t j = columns;
    State state = paths.last;
    while (i > 0 || j > 0) {
        const std::uint8_t origin = paths.origins[i * (columns + 1) + j];
        const auto from = State((origin >> (2 * unsigned(state))) & 3U);
        if (state != State::GapInFirst)
            --i;
        if (state != State::GapInSecond)
            --j;
        if (state == State::Pair)
            pairs.push_back({window.firstBegin + i, window.secondBegin + j, 1});
        state = from;
    }
    for (auto pair = pairs.rbegin(); pair != pairs.rend(); ++pair)
        append(pair->first, pair->second, 1);
}

SequenceMatch Matcher::run()
{
    Window window{0, 0, 0, 0};
    for (const MatchRun &word : sharedWords()) {
        // Words overlap; what is matched already stays.
        const std::size_t done =
            std::max(window.firstBegin - std::min(window.firstBegin, word.first),
                     window.secondBegin - std::min(window.secondBegin, word.second));
        if (done >= word.count)
            continue;
        window.firstEnd = word.first + done;
        window.secondEnd = word.second + done;
        align(window);
        append(window.firstEnd, window.secondEnd, word.count - done);
        window.firstBegin = word.first + word.count;
        window.secondBegin = word.second + word.count;
    }
    window.firstEnd = m_First.size();
    window.secondEnd = m_Second.size();
    align(window);
    return std::move(m_Match);
}

} // namespace

SequenceMatch matchSequences(std::string_view first, std::string_view second,
                             const std::vector<std::size_t> &breaks)
{
    return Matcher(first, second, breaks).run();
}

} // namespace TAMBO
