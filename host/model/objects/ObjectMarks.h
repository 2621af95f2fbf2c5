// SPDX-License-Identifier: GPL-3.0-or-later
// What of an object changes without a step of undo: selection, lock and range, as plain values.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace TAMBO {

class ValueReader;
class ValueWriter;

struct ObjectMarks
{
    // [first, second), ascending, none touching the next.
    using Runs = std::vector<std::pair<std::uint64_t, std::uint64_t>>;

    bool isSelected = false;
    bool isLocked = false;
    // Of an alignment.
    std::optional<std::pair<unsigned long, unsigned long>> range;
    // The selected ones of a sequence's residues, and of the atoms of a chain or a group, in their
    // order.
    Runs residues;
    Runs atoms;

    // Adds one behind all others.
    static void append(Runs &runs, std::uint64_t begin, std::uint64_t end)
    {
        if (!runs.empty() && runs.back().second == begin)
            runs.back().second = end;
        else
            runs.emplace_back(begin, end);
    }
    // None of anything, and the room is kept.
    void clear() noexcept;

    void write(ValueWriter &out) const;
    // Of bytes that anybody may have written.
    void read(ValueReader &in);

    friend bool operator==(const ObjectMarks &, const ObjectMarks &) = default;
};

} // namespace TAMBO
