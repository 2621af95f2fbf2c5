// SPDX-License-Identifier: GPL-3.0-or-later
// The entries of a session one behind the other, as the fuzzer changes them.
#pragma once

#include "ValueBytes.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::fuzz {

struct Entry
{
    enum class Place : std::uint8_t { State, Record };

    Place place;
    std::uint32_t kind;
    std::string_view content;
};

inline void writeEntry(const Entry &entry, ValueWriter &out)
{
    out.flag(entry.place == Entry::Place::Record);
    out.number(entry.kind);
    out.text(entry.content);
}

// Those that can be told apart; the last one ends where the bytes do.
inline std::vector<Entry> readEntries(std::string_view bytes)
{
    std::vector<Entry> entries;
    ValueReader in(bytes);
    while (!in.atEnd()) {
        const auto place = (in.character() & 1) == 0 ? Entry::Place::State : Entry::Place::Record;
        const auto kind = static_cast<std::uint32_t>(in.number());
        const std::uint64_t size = in.number();
        const std::string_view content = in.raw(std::min<std::uint64_t>(size, in.left()));
        if (!in.failed())
            entries.push_back({place, kind, content});
    }
    return entries;
}

} // namespace TAMBO::fuzz
