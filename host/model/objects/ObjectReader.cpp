// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectReader.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {

namespace {

ValueStore::Plugins readValues(ValueReader &in)
{
    ValueStore::Plugins plugins;
    // Of each two texts, or a text and a number.
    for (std::size_t count = in.count(2); count > 0; --count) {
        const std::string_view plugin = in.text();
        ValueStore::Values values;
        for (std::size_t left = in.count(2); left > 0; --left) {
            const std::string_view key = in.text();
            values.insert_or_assign(std::string(key), std::string(in.text()));
        }
        if (values.empty())
            in.fail("a plug-in has kept nothing");
        plugins.insert_or_assign(std::string(plugin), std::move(values));
    }
    if (plugins.empty())
        in.fail("no plug-in has kept anything");
    return plugins;
}

} // namespace

std::optional<StoredKind> ObjectReader::begin()
{
    const auto kind = static_cast<StoredKind>(character());
    const std::uint64_t version = number();
    const StoredKindEntry *const entry = entryOf(kind);
    if (entry == nullptr)
        fail("it is of no known kind");
    else if (version > entry->version)
        fail(std::string(entry->title) + " was written by a newer version of the program");
    else if (version == 0)
        fail(std::string(entry->title) + " has no version");
    m_Version = version;
    return failed() ? std::nullopt : std::optional(kind);
}

StoredHead ObjectReader::head()
{
    StoredHead head;
    head.identity = index();
    const std::uint64_t flags = number(StoredHead::kAll);
    head.isSelected = (flags & StoredHead::kIsSelected) != 0;
    head.isLocked = (flags & StoredHead::kIsLocked) != 0;
    if ((flags & StoredHead::kHasColor) != 0)
        head.color = color();
    if ((flags & StoredHead::kHasValues) != 0)
        head.values = readValues(*this);
    return head;
}

Compound *ObjectReader::object()
{
    const std::uint32_t identity = index();
    Compound *const found = m_Objects.find(identity);
    if (found == nullptr)
        fail("it refers to object " + std::to_string(identity) + ", which is not there");
    return found;
}

Color ObjectReader::color()
{
    return Color::fromArgb(index() ^ StoredHead::kOpaque);
}

std::optional<Color> ObjectReader::optionalColor()
{
    return flag() ? std::optional(color()) : std::nullopt;
}

SequenceNumber ObjectReader::sequenceNumber()
{
    if (!flag())
        return SequenceNumber(std::string(text()));
    using Limits = std::numeric_limits<int>;
    const auto value = static_cast<int>(signedNumber(Limits::min(), Limits::max()));
    return SequenceNumber(value, character());
}

ObjectWriter::Palette ObjectReader::palette(std::size_t most)
{
    if (flag())
        return m_LastPalette;
    const std::size_t size = count();
    if (size > most)
        fail("there are more colors than can be");
    if (size == 0 || failed())
        return nullptr;
    std::vector<Color> colors;
    colors.reserve(size);
    for (std::size_t i = 0; i < size; ++i)
        colors.push_back(color());
    m_LastPalette = std::make_shared<const std::vector<Color>>(std::move(colors));
    return m_LastPalette;
}

void ObjectReader::add(StoredObject &object, StoredHead head)
{
    m_LastAdded = head.identity;
    if (!failed() && !m_Objects.add(object, std::move(head)))
        fail("there are two objects " + std::to_string(m_LastAdded));
}

} // namespace TAMBO
