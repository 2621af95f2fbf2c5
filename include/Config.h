// SPDX-License-Identifier: GPL-3.0-or-later
// The settings store and the directories of the workbench.
#pragma once

#include "Export.h"
#include "Setting.h"

#include <string>

class TAMBO_API Config
{
public:
    // The user's value, else the shipped default, else an empty Setting.
    [[nodiscard]] static Setting GetSetting(const std::string &section, const std::string &key);
    // The user's value from now on, in later runs too; written at once. A section or key that
    // no settings file can hold (empty, with a line end, "=", "[" or "]") is refused with a line in
    // the log, and false. What cannot be written to the disk is a line in the log, and holds until
    // the program ends.
    static bool SetSetting(const std::string &section, const std::string &key,
                           const std::string &value);
    // Directories, without a trailing "/".
    [[nodiscard]] static std::string GetIconDir();
    // Private to the user (mode 0700) and made when first asked for. When none can be had, a path
    // below which nothing can be opened.
    [[nodiscard]] static std::string GetPersonalTmpDir();
};
