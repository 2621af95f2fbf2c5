// SPDX-License-Identifier: GPL-3.0-or-later
// What the parts and records of a store are. The numbers stand in files.
#pragma once

#include <cstdint>

namespace TAMBO::sessions {

enum class PartKind : std::uint32_t {
    // A piece of an ObjectStore of Space and of what steps of undo own.
    Objects = 1,
    // Some steps of undo, oldest first.
    Steps = 2,
    // All else of the history; the last part.
    History = 3
};

enum class RecordKind : std::uint32_t {
    // A piece of an ObjectStore of large objects that the next change brings along.
    Objects = 1,
    // What StepRecords says.
    Change = 2
};

} // namespace TAMBO::sessions
