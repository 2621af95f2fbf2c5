// SPDX-License-Identifier: GPL-3.0-or-later
// Which file an object was opened from. An object that was deleted keeps its file, since undo may
// bring it back; a later one at its address has none.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

class ObjectSources
{
public:
    // Of an object that is stored, not of a residue's handle.
    void set(const Compound &object, const std::filesystem::path &file);
    // Of the object or the nearest one above it; empty when it was not opened from a file.
    [[nodiscard]] std::filesystem::path fileOf(const Compound &object) const;

    // ---- For what is kept with a session

    // By the objects' numbers.
    using Files = std::map<std::uint32_t, std::filesystem::path>;
    [[nodiscard]] const Files &files() const noexcept { return m_Files; }
    void setFiles(Files files);
    // Another number when files() is something else.
    [[nodiscard]] std::uint64_t revision() const noexcept { return m_Revision; }

private:
    Files m_Files;
    std::uint64_t m_Revision = 0;
};

} // namespace TAMBO::app
