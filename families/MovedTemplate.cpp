// SPDX-License-Identifier: GPL-3.0-or-later
#include "MovedTemplate.h"

#include "Superposition.h"
#include "Text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>
#include <vector>

namespace TAMBO::families {

namespace {

// The three coordinates in the line of an atom, and how wide each is.
constexpr std::size_t kBegin = 30;
constexpr std::size_t kWidth = 8;
constexpr std::size_t kEnd = kBegin + 3 * kWidth;
// Both files have three decimals; in Angstrom.
constexpr double kRounding = 0.005;

bool isAtom(std::string_view line)
{
    return line.size() >= kEnd && (line.starts_with("ATOM  ") || line.starts_with("HETATM"));
}

std::optional<float> coordinateIn(std::string_view line, std::size_t which)
{
    const std::string_view text = trimmed(line.substr(kBegin + which * kWidth, kWidth));
    float value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<Vertex> pointIn(std::string_view line)
{
    const std::optional<float> x = coordinateIn(line, 0);
    const std::optional<float> y = coordinateIn(line, 1);
    const std::optional<float> z = coordinateIn(line, 2);
    if (!x || !y || !z)
        return std::nullopt;
    return Vertex(*x, *y, *z);
}

// Empty when anything else differs.
std::vector<PointPair> movedAtoms(std::string_view before, std::string_view now)
{
    std::vector<PointPair> pairs;
    while (!before.empty() && !now.empty()) {
        const std::string_view was = takeLine(before);
        const std::string_view is = takeLine(now);
        if (!isAtom(was) || !isAtom(is)) {
            if (was != is)
                return {};
            continue;
        }
        const std::optional<Vertex> from = pointIn(was);
        const std::optional<Vertex> to = pointIn(is);
        if (was.substr(0, kBegin) != is.substr(0, kBegin) || was.substr(kEnd) != is.substr(kEnd) ||
            !from || !to)
            return {};
        pairs.push_back({*from, *to});
    }
    return before.empty() && now.empty() ? pairs : std::vector<PointPair>();
}

} // namespace

bool isOnlyMoved(std::string_view before, std::string_view now)
{
    const std::vector<PointPair> pairs = movedAtoms(before, now);
    if (pairs.empty())
        return false;
    const Superposition motion(pairs);
    return std::ranges::all_of(pairs, [&motion](const PointPair &pair) {
        return rootMeanSquareDistance({{motion(pair.moving), pair.fixed}}) < kRounding;
    });
}

} // namespace TAMBO::families
