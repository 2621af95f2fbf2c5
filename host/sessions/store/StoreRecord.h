// SPDX-License-Identifier: GPL-3.0-or-later
// What is kept in a store: the state of all objects in parts, what has happened since as records,
// and named values that are replaced. What is in the bytes is the business of those who make them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>

namespace TAMBO::sessions {

struct StatePart
{
    std::uint32_t kind = 0;
    std::string content;
};

struct Record
{
    std::uint32_t kind = 0;
    // Milliseconds since 1970, UTC.
    std::int64_t time = 0;
    // For people.
    std::string label;
    std::string content;
};

struct NamedValue
{
    std::string name;
    std::string content;
};

// A state begins. Parts of one that was given up before its switch go, but for so many of its
// first ones, which are the new one's.
struct StateBegin
{
    std::size_t kept = 0;
};

// The parts since the last switch become the state; what was it before goes, and so do the records
// so far, whose changes are in it.
struct StateSwitch
{
};

using StoreEntry = std::variant<StatePart, StateBegin, StateSwitch, Record, NamedValue>;

// About what an entry occupies in memory.
[[nodiscard]] inline std::size_t bytesOf(const StoreEntry &entry) noexcept
{
    struct Sizes
    {
        std::size_t operator()(const StatePart &part) const { return part.content.size(); }
        std::size_t operator()(const StateBegin &) const { return 0; }
        std::size_t operator()(const StateSwitch &) const { return 0; }
        std::size_t operator()(const Record &record) const
        {
            return record.label.size() + record.content.size();
        }
        std::size_t operator()(const NamedValue &value) const
        {
            return value.name.size() + value.content.size();
        }
    };
    return sizeof(entry) + std::visit(Sizes(), entry);
}

} // namespace TAMBO::sessions
