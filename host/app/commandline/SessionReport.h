// SPDX-License-Identifier: GPL-3.0-or-later
// What `tambo info` says of a session.
#pragma once

#include "Result.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace TAMBO::app {

// Adds to it, when the session can be read.
[[nodiscard]] Result<void> describeSession(const std::string &file, nlohmann::ordered_json &json);

} // namespace TAMBO::app
