// SPDX-License-Identifier: GPL-3.0-or-later
// A font that somebody chose, for the values of a session.
#pragma once

#include <QFont>

namespace TAMBO {
class ValueReader;
class ValueWriter;
} // namespace TAMBO

namespace TAMBO::app {

void writeFont(const QFont &font, ValueWriter &out);
// Sizes that nobody can choose make the reader fail.
[[nodiscard]] QFont readFont(ValueReader &in);

} // namespace TAMBO::app
