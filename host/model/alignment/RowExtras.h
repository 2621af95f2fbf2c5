// SPDX-License-Identifier: GPL-3.0-or-later
// What most rows of an alignment do without: a label, and which residues of the sequence they have
// when these are not its first ones.
#pragma once

#include "RowLabel.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace TAMBO {

// Columns that are removed leave most of a million rows without one residue, so a stretch that a
// row leaves out takes no memory beyond the eight bytes that there are.
class RowExtras
{
public:
    // The row's residues from ordinal on are the sequence's from index on.
    struct Segment
    {
        std::uint32_t ordinal = 0;
        std::uint32_t index = 0;
    };
    // The residues from ordinal on are so many farther on in the sequence.
    struct Skip
    {
        std::uint32_t ordinal = 0;
        std::uint32_t count = 0;
    };
    // Ascending from ordinal 0. None while the residues are the sequence's first ones.
    class Segments
    {
    public:
        explicit Segments(std::span<const Segment> kept) noexcept : m_Kept(kept) { }
        explicit Segments(const Skip &skip) noexcept;

        // Holds as long as this and the row.
        [[nodiscard]] std::span<const Segment> all() const noexcept
        {
            return m_Made == 0 ? m_Kept : std::span(m_Here).first(m_Made);
        }

    private:
        std::span<const Segment> m_Kept;
        std::array<Segment, 2> m_Here{};
        std::size_t m_Made = 0;
    };

    RowExtras() noexcept = default;
    RowExtras(const RowExtras &other);
    RowExtras &operator=(const RowExtras &) = delete;
    ~RowExtras();

    // Whether the row has neither a label nor more than one stretch that it leaves out.
    [[nodiscard]] bool isPlain() const noexcept { return !hasTable(); }
    // Null for a row without one. Copies of the row share it until a break moves.
    [[nodiscard]] const RowLabel *label() const noexcept
    {
        return hasTable() ? table().label.get() : nullptr;
    }
    void setLabel(std::shared_ptr<RowLabel> label) { ownTable().label = std::move(label); }
    // Of a row with a label, which is its own then.
    [[nodiscard]] RowLabel &changeLabel();

    [[nodiscard]] bool hasSegments() const noexcept
    {
        return m_Bits != 0 && (isSkip() || !table().segments.empty());
    }
    [[nodiscard]] Segments segments() const noexcept
    {
        if (isSkip())
            return Segments(here());
        return Segments(hasTable() ? std::span<const Segment>(table().segments)
                                   : std::span<const Segment>());
    }
    void setSegments(std::vector<Segment> segments);
    // When the row leaves out one stretch, or none; that one has no residues.
    [[nodiscard]] std::optional<Skip> skip() const noexcept
    {
        return hasTable() ? skipOfTable() : std::optional(here());
    }
    void setSkip(const Skip &skip)
    {
        if (hasTable() || skip.ordinal > kMostOrdinal) {
            setTableSkip(skip);
            return;
        }
        m_Bits = skip.count == 0 ? 0
                                 : std::uint64_t(skip.ordinal) << kOrdinalPlace |
                                       std::uint64_t(skip.count) << kCountPlace | kIsSkip;
    }

    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    struct Table
    {
        std::vector<Segment> segments;
        std::shared_ptr<RowLabel> label;
    };

    // No address is odd.
    static constexpr std::uint64_t kIsSkip = 1;
    static constexpr unsigned kCountPlace = 1;
    static constexpr unsigned kOrdinalPlace = 33;
    static constexpr std::uint32_t kMostOrdinal = 0x7fffffff;

    [[nodiscard]] bool isSkip() const noexcept { return (m_Bits & kIsSkip) != 0; }
    [[nodiscard]] bool hasTable() const noexcept { return m_Bits != 0 && !isSkip(); }
    [[nodiscard]] Skip here() const noexcept
    {
        return {std::uint32_t(m_Bits >> kOrdinalPlace), std::uint32_t(m_Bits >> kCountPlace)};
    }
    [[nodiscard]] Table &table() const noexcept { return *reinterpret_cast<Table *>(m_Bits); }
    [[nodiscard]] Table &ownTable();
    [[nodiscard]] std::optional<Skip> skipOfTable() const noexcept;
    // Of a row that has a table, or needs one.
    void setTableSkip(const Skip &skip);

    // 0: nothing; a skip, or the address of a table that the row owns.
    std::uint64_t m_Bits = 0;
};

} // namespace TAMBO
