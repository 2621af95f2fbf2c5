// SPDX-License-Identifier: GPL-3.0-or-later
// The objects and the history of a session's file for a command, one at a time: they stand in the
// space of the program, since names depend on that.
#pragma once

#include "History.h"
#include "ObjectIndex.h"
#include "ObjectSpace.h"
#include "Result.h"
#include "SessionContent.h"

#include <filesystem>
#include <memory>

namespace TAMBO::sessions {
class StoreReader;
}

namespace TAMBO::app {

class OpenedSession
{
public:
    // The failure names the file.
    [[nodiscard]] static Result<std::unique_ptr<OpenedSession>>
    open(const std::filesystem::path &file);
    // Its objects alone, into an empty space, where they stay.
    [[nodiscard]] static Result<void> loadObjects(const std::filesystem::path &file);
    ~OpenedSession();
    OpenedSession(const OpenedSession &) = delete;
    OpenedSession &operator=(const OpenedSession &) = delete;

    [[nodiscard]] static const ObjectSpace &space() { return ObjectSpace::get(); }
    [[nodiscard]] const History &history() const noexcept { return m_History; }
    [[nodiscard]] const sessions::SessionOrigin &origin() const noexcept { return m_Origin; }

private:
    OpenedSession();

    std::unique_ptr<sessions::StoreReader> m_Reader;
    History m_History;
    ObjectIndex m_Index;
    sessions::SessionOrigin m_Origin;
};

} // namespace TAMBO::app
