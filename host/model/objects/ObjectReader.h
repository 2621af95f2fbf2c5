// SPDX-License-Identifier: GPL-3.0-or-later
// The way back from bytes to the content of objects.
#pragma once

#include "Color.h"
#include "NewObjects.h"
#include "ObjectWriter.h"
#include "SequenceNumber.h"
#include "StoredHead.h"
#include "StoredKind.h"
#include "ValueBytes.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>

namespace TAMBO {

class ObjectReader : public ValueReader
{
public:
    // How many residues a sequence can have.
    static constexpr std::uint64_t kMostIndex = std::numeric_limits<std::uint32_t>::max();

    ObjectReader(std::string_view bytes, NewObjects &objects) noexcept
        : ValueReader(bytes), m_Objects(objects)
    { }

    [[nodiscard]] NewObjects &objects() noexcept { return m_Objects; }

    // What comes next, whose version is one that is known; nothing after a failure.
    [[nodiscard]] std::optional<StoredKind> begin();
    // In which form it was written.
    [[nodiscard]] std::uint64_t version() const noexcept { return m_Version; }
    [[nodiscard]] StoredHead head();
    // Of an object that another one refers to. Null, and a failure, when there is none.
    [[nodiscard]] Compound *object();
    [[nodiscard]] std::uint32_t index() { return static_cast<std::uint32_t>(number(kMostIndex)); }
    [[nodiscard]] Color color();
    [[nodiscard]] std::optional<Color> optionalColor();
    [[nodiscard]] SequenceNumber sequenceNumber();
    [[nodiscard]] ObjectWriter::Palette palette(std::size_t most);
    // As the new object with the head's number; fails when there is one.
    void add(StoredObject &object, StoredHead head);
    // Its number.
    [[nodiscard]] std::uint32_t lastAdded() const noexcept { return m_LastAdded; }

private:
    NewObjects &m_Objects;
    std::uint32_t m_LastAdded = 0;
    std::uint64_t m_Version = 0;
    ObjectWriter::Palette m_LastPalette;
};

} // namespace TAMBO
