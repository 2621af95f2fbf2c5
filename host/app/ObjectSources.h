// SPDX-License-Identifier: GPL-3.0-or-later
// Which file an object was opened from.
#pragma once

#include <filesystem>
#include <map>

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

class ObjectSources
{
public:
    void set(const Compound &object, const std::filesystem::path &file);
    // Of the object or the nearest one above it; empty when it was not opened from a file.
    [[nodiscard]] std::filesystem::path fileOf(const Compound &object) const;

private:
    std::map<const Compound *, std::filesystem::path> m_Files;
};

} // namespace TAMBO::app
