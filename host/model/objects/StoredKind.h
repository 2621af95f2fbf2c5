// SPDX-License-Identifier: GPL-3.0-or-later
// What objects are kept as: each of these begins with its kind and the version of its form, so that
// an older program says that it cannot read what a newer one has written.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace TAMBO {

enum class StoredKind : unsigned char {
    Space = 1,
    // Which objects stand in Space.
    SpaceOrder,
    Sequence,
    // Without its chains, which follow it.
    Structure,
    Chain,
    Group,
    Element,
    // Without its rows, which follow it.
    Alignment,
    Rows,
    // What a structure has besides its chains, which it follows.
    StructureExtras,
};

struct StoredKindEntry
{
    StoredKind kind;
    // For people.
    std::string_view title;
    // To be raised with each change of what is written.
    unsigned version;
};

inline constexpr std::array kStoredKinds = std::to_array<StoredKindEntry>({
    {StoredKind::Space, "the space", 1},
    {StoredKind::SpaceOrder, "the order of objects", 1},
    {StoredKind::Sequence, "a sequence", 2},
    {StoredKind::Structure, "a structure", 2},
    {StoredKind::Chain, "a chain", 2},
    {StoredKind::Group, "a group", 2},
    {StoredKind::Element, "an element of secondary structure", 1},
    {StoredKind::Alignment, "an alignment", 1},
    {StoredKind::Rows, "rows of an alignment", 1},
    {StoredKind::StructureExtras, "a part of a structure", 1},
});

// Null for a byte that stands for none.
[[nodiscard]] constexpr const StoredKindEntry *entryOf(StoredKind kind) noexcept
{
    const auto *const found = std::ranges::find(kStoredKinds, kind, &StoredKindEntry::kind);
    return found == kStoredKinds.end() ? nullptr : found;
}

} // namespace TAMBO
