// SPDX-License-Identifier: GPL-3.0-or-later
// All that a session's file holds, as bytes that share nothing with the objects: a thread may write
// them while the objects change.
#pragma once

#include "Result.h"
#include "StoreRecord.h"

#include <cstdint>
#include <string>
#include <vector>

namespace TAMBO {
class History;
class ObjectSpace;
} // namespace TAMBO

namespace TAMBO::sessions {

// What made a session's file.
struct SessionOrigin
{
    // Its version.
    std::string program;
    // Milliseconds since 1970, UTC; 0 when nobody knows.
    std::int64_t time = 0;

    [[nodiscard]] static SessionOrigin now(std::string program);
};

struct SessionContent
{
    std::vector<StatePart> parts;
    std::vector<NamedValue> values;
};

// The names of the values that the origin stands in.
constexpr const char *kMadeBy = "made-by";
constexpr const char *kMadeAt = "made-at";

// As all is now, which takes its time with large objects: long work, which can be given up.
[[nodiscard]] Result<SessionContent> takeSession(const ObjectSpace &space, const History &history,
                                                 std::vector<NamedValue> values,
                                                 const SessionOrigin &origin);

} // namespace TAMBO::sessions
