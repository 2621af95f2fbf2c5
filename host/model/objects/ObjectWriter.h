// SPDX-License-Identifier: GPL-3.0-or-later
// The content of objects as bytes. What refers to another object has its number.
#pragma once

#include "Color.h"
#include "SequenceNumber.h"
#include "StoredKind.h"
#include "ValueBytes.h"

#include <memory>
#include <optional>
#include <vector>

namespace TAMBO {

class StoredObject;

class ObjectWriter : public ValueWriter
{
public:
    using Palette = std::shared_ptr<const std::vector<Color>>;

    // What comes next is of that kind.
    void begin(StoredKind kind);
    // What any object has: its number, and mostly nothing else of colour, flags and values of
    // plug-ins.
    void head(const StoredObject &object);
    void color(Color value);
    void color(const std::optional<Color> &value);
    void sequenceNumber(const SequenceNumber &value);
    // Mostly the same one again, which then takes a byte.
    void palette(const Palette &value);

    [[nodiscard]] std::string take() noexcept
    {
        m_LastPalette.reset();
        return ValueWriter::take();
    }
    void clear() noexcept
    {
        m_LastPalette.reset();
        ValueWriter::clear();
    }

private:
    Palette m_LastPalette;
};

} // namespace TAMBO
