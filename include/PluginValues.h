// SPDX-License-Identifier: GPL-3.0-or-later
// Values of a plug-in's own that are kept with an object of the workbench.
#pragma once

#include "Export.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {
class Compound;
}

// A value is a text or any bytes, found by the name of the plug-in and a key. Structures, chains,
// sequences, secondary-structure elements and alignments have them. They go with their object when
// it is deleted, come back with it, and are kept though the plug-in is missing; the copy that an
// alignment's duplicate() makes has copies. They are not in the files of the object. Those of the
// workbench itself are WorkbenchValues.
class TAMBO_API PluginValues
{
public:
    // In bytes. Names are UTF-8 without control characters, and not empty.
    static constexpr std::size_t kLongestName = 100;
    static constexpr std::size_t kLongestKey = 200;
    static constexpr std::size_t kLongestValue = 16U << 20;
    // Of one object, keys included.
    static constexpr std::size_t kMostOfObject = 64U << 20;

    // A change, to be made inside a guard: it is undone with the step. False, with a line in the
    // log and nothing changed, when the object is null, locked, deleted or of a kind that has no
    // values, when a limit is exceeded, and while a change is being published.
    static bool Set(TAMBO::Compound *object, const std::string &plugin, const std::string &key,
                    const std::string &value);
    // As Set(). A value that is not there is removed already.
    static bool Remove(TAMBO::Compound *object, const std::string &plugin, const std::string &key);

    // Nothing when there is none.
    [[nodiscard]] static std::optional<std::string>
    Get(const TAMBO::Compound *object, const std::string &plugin, const std::string &key);
    // Those of one plug-in, and the plug-ins that have any; in alphabetical order.
    [[nodiscard]] static std::vector<std::string> Keys(const TAMBO::Compound *object,
                                                       const std::string &plugin);
    [[nodiscard]] static std::vector<std::string> Plugins(const TAMBO::Compound *object);
};
