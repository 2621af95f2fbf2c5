// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of objects beside what they are: of a model, its line in the table of results. An
// object that was deleted keeps it, since undo may bring it back; a later one at its address has
// none.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

struct ObjectNote
{
    // What it is of, as a heading.
    std::string title;
    // Names and values, for the user, in their order.
    std::vector<std::pair<std::string, std::string>> values;

    friend bool operator==(const ObjectNote &, const ObjectNote &) = default;
};

class ObjectNotes
{
public:
    // Of an object that is stored, not of a residue's handle.
    void set(const Compound &object, ObjectNote note);
    // Of the object itself; null without one.
    [[nodiscard]] const ObjectNote *of(const Compound &object) const;

    // ---- For what is kept with a session

    // By the objects' numbers.
    using Notes = std::map<std::uint32_t, ObjectNote>;
    [[nodiscard]] const Notes &all() const noexcept { return m_Notes; }
    void setAll(Notes notes);
    // Another number when all() is something else.
    [[nodiscard]] std::uint64_t revision() const noexcept { return m_Revision; }

private:
    Notes m_Notes;
    std::uint64_t m_Revision = 0;
};

} // namespace TAMBO::app
