// SPDX-License-Identifier: GPL-3.0-or-later
// The values of a session, for a store that is written while one works as well as for one that is
// written in one go. Those that nobody here knows, because a plug-in is missing or the program that
// wrote them is newer, stay with the session.
#pragma once

#include "KeptValue.h"
#include "StoreRecord.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO::sessions {

class StoreReader;

class KeptValues
{
public:
    // Outlives this, or is removed. Its name is no other's; what nobody knew under that name goes.
    void add(KeptValue &value);
    void remove(KeptValue &value);

    // For a file: all that are not empty, as they are now, with those that nobody knows.
    [[nodiscard]] std::vector<NamedValue> store() const;
    // Does some of what would take long about changed(). False when nothing of that is left.
    bool prepare();
    // Those that differ from what this gave before; also one that is empty now and was not.
    [[nodiscard]] std::vector<NamedValue> changed();
    // The same of those that follow steps of undo alone.
    [[nodiscard]] std::vector<NamedValue> changedBySteps();
    // changed() gives everything once more.
    void forgetGiven();

    // Of a store whose objects have just been loaded, in place of what was before, in the order in
    // which the values were added. What nobody knows is kept. One failure for each that could not
    // be taken.
    [[nodiscard]] std::vector<Failure> load(StoreReader &store, const ObjectIndex &objects);
    // For one who comes later than the session: what is kept under the name and nobody knows, which
    // is forgotten then.
    [[nodiscard]] std::optional<std::string> takeUnknown(const std::string &name);
    // The session is over, and nothing of it is there any more.
    void clear();

private:
    struct Known
    {
        KeptValue *value;
        // When it was last looked at for changed().
        std::optional<std::uint64_t> revision;
    };

    void giveIfChanged(std::size_t index, std::vector<NamedValue> &changes);
    void giveIfChanged(const std::string &name, std::string content,
                       std::vector<NamedValue> &changes);

    // A value that is called may add others.
    std::vector<Known> m_Known;
    std::map<std::string, std::string> m_Unknown;
    // What changed() gave last under each name; none is as empty.
    std::map<std::string, std::string> m_Given;
};

} // namespace TAMBO::sessions
