// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueColors.h"

#include "Bits.h"
#include "LetterColors.h"
#include "ResidueSelection.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace TAMBO {

namespace {

constexpr ResidueColors::WideValue kByType = 0;

// Every number of 32 bits is a colour, so a bit more says that there is one.
ResidueColors::WideValue wideValue(std::optional<Color> color) noexcept
{
    return color ? color->argb() | ResidueColors::kOwnColor : kByType;
}

// Calls visit(begin, end) for the stretches of [begin, end) of which that holds.
template <typename Holds, typename Visit>
void forEachRunOf(std::size_t begin, std::size_t end, const Holds &holds, const Visit &visit)
{
    for (std::size_t i = begin; i < end;) {
        const std::size_t first = i;
        while (i < end && holds(i))
            ++i;
        if (first < i)
            visit(first, i);
        while (i < end && !holds(i))
            ++i;
    }
}

std::vector<ResidueColors::WideValue> wideValues(const LetterColors &colors)
{
    std::vector<ResidueColors::WideValue> values;
    for (const std::optional<Color> &color : colors.choices())
        values.push_back(wideValue(color));
    return values;
}

} // namespace

// Mostly a command colours a million short sequences, one after the other.
ResidueColors::ResidueColors(std::string_view letters, const LetterColors &colors)
    : ResidueColors(letters.size())
{
    if (colors.palette()->size() <= kMostOfPalette) {
        m_Palette = colors.palette();
        for (std::size_t i = 0; i < letters.size(); ++i) {
            m_Small[i] = static_cast<std::uint8_t>(colors.choice(letters[i]));
            m_Colored += m_Small[i] != 0 ? 1 : 0;
        }
        return;
    }
    withValues(colors, [&](auto &kept, const auto &values) {
        for (std::size_t i = 0; i < letters.size(); ++i) {
            kept[i] = values[colors.choice(letters[i])];
            m_Colored += kept[i] != 0 ? 1 : 0;
        }
    });
}

ResidueColors::ResidueColors(std::string_view letters, const ResidueSelection &residues,
                             const LetterColors &colors)
    : ResidueColors(letters.size())
{
    if (colors.palette()->size() > kMostOfPalette) {
        set(letters, residues, colors);
        return;
    }
    m_Palette = colors.palette();
    for (std::size_t begin = 0; begin < letters.size(); begin += bits::kPerWord) {
        std::uint64_t chosen = residues.words()[bits::wordOf(begin)];
        const std::size_t end = std::min(begin + bits::kPerWord, letters.size());
        for (std::size_t i = begin; i < end; ++i, chosen >>= 1) {
            const std::uint64_t mask = ~(chosen & 1) + 1;
            m_Small[i] = static_cast<std::uint8_t>(colors.choice(letters[i]) & mask);
            m_Colored += m_Small[i] != 0 ? 1 : 0;
        }
    }
}

// Sequences that share a palette mostly get the same colour next, and go on sharing one.
std::shared_ptr<const ResidueColors::Palette>
ResidueColors::withMore(const std::shared_ptr<const Palette> &palette, Color color)
{
    static std::weak_ptr<const Palette> lastFrom;
    static std::weak_ptr<const Palette> lastTo;
    const std::shared_ptr<const Palette> to = lastTo.lock();
    if (palette != nullptr && to != nullptr && lastFrom.lock() == palette && to->back() == color)
        return to;
    Palette more;
    if (palette != nullptr) {
        more.reserve(palette->size() + 1);
        more.insert(more.end(), palette->begin(), palette->end());
    }
    more.push_back(color);
    auto made = std::make_shared<const Palette>(std::move(more));
    lastFrom = palette;
    lastTo = made;
    return made;
}

std::uint8_t ResidueColors::paletteEntry(Color color)
{
    if (m_LastEntry != 0 && (*m_Palette)[m_LastEntry - 1U] == color)
        return m_LastEntry;
    static const Palette none;
    const Palette &known = m_Palette == nullptr ? none : *m_Palette;
    const auto found = std::ranges::find(known, color);
    if (found == known.end()) {
        if (known.size() == kMostOfPalette)
            return 0;
        m_Palette = withMore(m_Palette, color);
        m_LastEntry = static_cast<std::uint8_t>(m_Palette->size());
    } else {
        m_LastEntry = static_cast<std::uint8_t>(found - known.begin() + 1);
    }
    return m_LastEntry;
}

bool ResidueColors::findEntries(const LetterColors &colors, Entries &entries)
{
    const bool isShareable = colors.palette()->size() <= kMostOfPalette;
    if (m_Colored == 0 && isShareable) {
        m_Palette = colors.palette();
        m_LastEntry = 0;
    }
    if (m_Palette == colors.palette() && isShareable) {
        std::iota(entries.begin(), entries.begin() + std::ptrdiff_t(colors.choices().size()),
                  std::uint8_t(0));
        return true;
    }
    std::size_t choice = 0;
    for (const std::optional<Color> &color : colors.choices()) {
        const std::uint8_t entry = color ? paletteEntry(*color) : std::uint8_t(0);
        if ((color && entry == 0) || choice == entries.size())
            return false;
        entries[choice++] = entry;
    }
    return true;
}

void ResidueColors::widen()
{
    m_Wide.reserve(m_Small.size());
    for (const std::uint8_t entry : m_Small)
        m_Wide.push_back(wideValue(colorOf(entry)));
    m_Small = {};
    m_Palette.reset();
    m_LastEntry = 0;
}

void ResidueColors::set(std::size_t index, std::optional<Color> color)
{
    const bool had = at(index).has_value();
    m_Colored = m_Colored - (had ? 1 : 0) + (color.has_value() ? 1 : 0);
    if (m_Wide.empty()) {
        const std::uint8_t entry = color ? paletteEntry(*color) : std::uint8_t(0);
        if (entry != 0 || !color) {
            m_Small[index] = entry;
            return;
        }
        widen();
    }
    m_Wide[index] = wideValue(color);
}

template <typename Store>
void ResidueColors::withValues(const LetterColors &colors, const Store &store)
{
    if (m_Wide.empty()) {
        Entries entries;
        if (findEntries(colors, entries)) {
            store(m_Small, entries);
            return;
        }
        widen();
    }
    store(m_Wide, wideValues(colors));
}

// Residues side by side that had one colour are told of at once. Mostly all of a run had the same
// one, and none of them has it still.
void ResidueColors::set(std::string_view letters, const ResidueSelection &residues,
                        const LetterColors &colors, const Note &note)
{
    withValues(colors, [&](auto &kept, const auto &values) {
        auto *const place = kept.data();
        const auto wanted = [&](std::size_t i) { return values[colors.choice(letters[i])]; };
        residues.forEachRun([&](std::size_t i, std::size_t end) {
            while (i < end) {
                const auto before = place[i];
                const std::size_t first = i;
                std::size_t changed = 0;
                for (; i < end && place[i] == before; ++i)
                    changed += wanted(i) != before ? 1 : 0;
                // Told while these are as they were: whoever keeps all colours takes a copy.
                if (changed == i - first)
                    note(first, changed, colorOf(before));
                else if (changed > 0)
                    forEachRunOf(
                        first, i, [&](std::size_t k) { return wanted(k) != before; },
                        [&](std::size_t from, std::size_t to) {
                            note(from, to - from, colorOf(before));
                        });
                std::size_t colored = 0;
                for (std::size_t k = first; k < i; ++k) {
                    place[k] = wanted(k);
                    colored += place[k] != 0 ? 1 : 0;
                }
                m_Colored = m_Colored + colored - (before != 0 ? i - first : 0);
            }
        });
    });
}

void ResidueColors::set(std::string_view letters, const ResidueSelection &residues,
                        const LetterColors &colors)
{
    withValues(colors, [&](auto &kept, const auto &values) {
        auto *const place = kept.data();
        std::size_t colored = 0;
        for (std::size_t begin = 0; begin < letters.size(); begin += bits::kPerWord) {
            std::uint64_t chosen = residues.words()[bits::wordOf(begin)];
            const std::size_t end = std::min(begin + bits::kPerWord, letters.size());
            for (std::size_t i = begin; i < end; ++i, chosen >>= 1) {
                const auto wanted = values[colors.choice(letters[i])];
                place[i] = (chosen & 1) != 0 ? wanted : place[i];
                colored += place[i] != 0 ? 1 : 0;
            }
        }
        m_Colored = colored;
    });
}

bool ResidueColors::differs(std::string_view letters, const ResidueSelection &residues,
                            const LetterColors &colors) const
{
    for (std::size_t i = 0; i < letters.size(); ++i) {
        if (residues.at(i) && at(i) != colors.choices()[colors.choice(letters[i])])
            return true;
    }
    return false;
}

std::size_t ResidueColors::bytes() const noexcept
{
    const std::size_t palette =
        m_Palette.use_count() == 1 ? sizeof(Palette) + m_Palette->capacity() * sizeof(Color) : 0;
    return sizeof(*this) + palette + m_Small.capacity() + m_Wide.capacity() * sizeof(WideValue);
}

bool ResidueColors::hasPaletteOf(const ResidueColors &other) const noexcept
{
    return m_Palette == other.m_Palette ||
           (m_Palette != nullptr && other.m_Palette != nullptr && *m_Palette == *other.m_Palette);
}

bool ResidueColors::isSameAs(const ResidueColors &other) const noexcept
{
    if (hasPaletteOf(other) && m_Small == other.m_Small && m_Wide == other.m_Wide)
        return true;
    const std::size_t count = std::max(m_Small.size(), m_Wide.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (at(i) != other.at(i))
            return false;
    }
    return true;
}

} // namespace TAMBO
