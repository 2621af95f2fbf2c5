// SPDX-License-Identifier: GPL-3.0-or-later
// Values of a plug-in's own that the workbench keeps from one run to the next.
#pragma once

#include "Export.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// A value is a text or any bytes, found by the name of the plug-in and a key. They are in a file of
// the user's, beside the places of windows, and are kept though the plug-in is missing. What users
// are to choose belongs into the settings (Config); values of an object are PluginValues. All calls
// are made in the GUI thread.
class TAMBO_API WorkbenchValues
{
public:
    // In bytes. Names are UTF-8 without control characters, and not empty; their limits are those
    // of PluginValues.
    static constexpr std::size_t kLongestValue = 256U << 10;
    // Of one plug-in, keys included.
    static constexpr std::size_t kMostOfPlugin = 1U << 20;

    // Written at once, and no step of undo. False, with a line in the log and nothing changed, when
    // a limit is exceeded. When the file cannot be written, which the log says, the value is kept
    // for this run, and the result is false.
    static bool Set(const std::string &plugin, const std::string &key, const std::string &value);
    // As Set(). A value that is not there is removed already.
    static bool Remove(const std::string &plugin, const std::string &key);

    // Nothing when there is none.
    [[nodiscard]] static std::optional<std::string> Get(const std::string &plugin,
                                                        const std::string &key);
    // Those of one plug-in, and the plug-ins that have any; in alphabetical order.
    [[nodiscard]] static std::vector<std::string> Keys(const std::string &plugin);
    [[nodiscard]] static std::vector<std::string> Plugins();
};
