// SPDX-License-Identifier: GPL-3.0-or-later
// The marks of many objects as bytes, by the objects' numbers. Objects that follow each other and
// are marked alike take no more room than one.
#pragma once

#include "Result.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace TAMBO {
class StoredObject;
struct ObjectMarks;
} // namespace TAMBO

namespace TAMBO::sessions {

class MarkList
{
public:
    // What the marks of these objects are now, in place of what the list says of them. The others
    // in it stay.
    void update(std::span<const StoredObject *const> objects);
    void clear() noexcept { m_Chunks.clear(); }
    // Empty when nothing is in it.
    [[nodiscard]] std::string bytes() const;

    // Calls visit(number, marks) for each object in the bytes, which anybody may have written.
    using Visitor = std::function<void(std::uint32_t identity, const ObjectMarks &marks)>;
    [[nodiscard]] static Result<void> forEach(std::string_view bytes, const Visitor &visit);

private:
    // Objects that follow each other, with the same marks.
    struct Run;
    class Reader;
    class Writer;
    using Changed = std::pair<std::uint32_t, const StoredObject *>;

    static void update(std::string &chunk, std::span<const Changed> objects);

    // So many numbers at a time, so that a change of one object does not cost a pass over all.
    static constexpr std::uint32_t kNumbersOfChunk = 4096;

    // By the first number divided by that; the numbers in it begin from 0.
    std::map<std::uint32_t, std::string> m_Chunks;
};

} // namespace TAMBO::sessions
