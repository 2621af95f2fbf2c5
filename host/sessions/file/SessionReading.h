// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a session's file, which may be damaged, of another version, or made by somebody with bad
// intentions. Nothing is written beside it.
#pragma once

#include "Result.h"
#include "SessionContent.h"

#include <filesystem>
#include <memory>

namespace TAMBO {
class History;
class ObjectIndex;
class ObjectSpace;
} // namespace TAMBO

namespace TAMBO::sessions {

class StoreReader;

// A file that is a session of a version that we know. Failures of all three name the file.
[[nodiscard]] Result<std::unique_ptr<StoreReader>> openSession(const std::filesystem::path &file);

[[nodiscard]] Result<SessionOrigin> originOf(StoreReader &session);

// Into an empty Space and an empty history: all of it or, after a failure, nothing. Long work,
// which can be given up. The index, which is empty, leads to all that was loaded.
[[nodiscard]] Result<void> readSession(StoreReader &session, ObjectSpace &space, History &history,
                                       ObjectIndex &index);

// Whether readSession() would succeed, without a change of anything.
[[nodiscard]] Result<void> checkSession(StoreReader &session);

} // namespace TAMBO::sessions
