// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectWriter.h"

#include "Compound.h"
#include "StoredHead.h"
#include "StoredObject.h"

namespace TAMBO {

namespace {

void writeValues(const ValueStore::Plugins &plugins, ValueWriter &out)
{
    out.number(plugins.size());
    for (const auto &[plugin, values] : plugins) {
        out.text(plugin);
        out.number(values.size());
        for (const auto &[key, value] : values) {
            out.text(key);
            out.text(value);
        }
    }
}

} // namespace

void ObjectWriter::begin(StoredKind kind)
{
    character(static_cast<char>(kind));
    number(entryOf(kind)->version);
}

void ObjectWriter::head(const StoredObject &object)
{
    number(object.identity());
    const CompoundState *const state = object.ownState();
    if (state == nullptr) {
        number(0);
        return;
    }
    const ValueStore &store = ValueStore::get();
    const ValueStore::Plugins *const values = store.empty() ? nullptr : store.of(state->identity);
    number((state->color ? StoredHead::kHasColor : 0U) |
           (state->isSelected ? StoredHead::kIsSelected : 0U) |
           (state->isLocked ? StoredHead::kIsLocked : 0U) |
           (values != nullptr ? StoredHead::kHasValues : 0U));
    if (state->color)
        color(*state->color);
    if (values != nullptr)
        writeValues(*values, *this);
}

void ObjectWriter::color(Color value)
{
    // Small when it is opaque, which most are.
    number(value.argb() ^ StoredHead::kOpaque);
}

void ObjectWriter::color(const std::optional<Color> &value)
{
    flag(value.has_value());
    if (value)
        color(*value);
}

void ObjectWriter::sequenceNumber(const SequenceNumber &value)
{
    flag(value.isValid());
    if (value.isValid()) {
        signedNumber(value.number());
        character(value.insertionCode());
    } else {
        text(value.getValue());
    }
}

void ObjectWriter::palette(const Palette &value)
{
    const bool isRepeated = value == m_LastPalette && value != nullptr;
    flag(isRepeated);
    if (isRepeated)
        return;
    m_LastPalette = value;
    number(value == nullptr ? 0 : value->size());
    if (value == nullptr)
        return;
    for (const Color each : *value)
        color(each);
}

} // namespace TAMBO
