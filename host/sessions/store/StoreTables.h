// SPDX-License-Identifier: GPL-3.0-or-later
// The tables of a store, and what tells a store from other files.
#pragma once

#include "Result.h"

#include <cstdint>
#include <string_view>

namespace TAMBO::sessions {

class Database;

// In the header of the file: "TMBO".
constexpr std::int64_t kStoreMark = 0x544d424f;
// Grows with every change of tables that an older program would not understand.
constexpr std::int64_t kStoreVersion = 5;

// The names of values that the store keeps of its own, among the numbers.
constexpr std::string_view kStateBegin = "state-begin";
constexpr std::string_view kStateEnd = "state-end";
constexpr std::string_view kRecordsBegin = "records-begin";

// In an empty file.
[[nodiscard]] Result<void> makeTables(Database &database);
// Whether a file is a store, of a version that we know, with these tables and nothing beside them.
[[nodiscard]] Result<void> checkTables(Database &database);

} // namespace TAMBO::sessions
