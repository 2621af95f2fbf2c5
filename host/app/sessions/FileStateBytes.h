// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of a file, for the values of a session.
#pragma once

#include "FileState.h"

namespace TAMBO {
class ValueReader;
class ValueWriter;
} // namespace TAMBO

namespace TAMBO::app {

// Whether it has a hash is kept elsewhere.
void writeFileState(const FileState &state, ValueWriter &out);
[[nodiscard]] FileState readFileState(ValueReader &in, bool hasHash);

} // namespace TAMBO::app
