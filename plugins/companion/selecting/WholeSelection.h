// SPDX-License-Identifier: GPL-3.0-or-later
// Selecting without a choice: nothing, what was selected before, everything, everything else.
#pragma once

#include "Selections.h"

#include <QString>
#include <Qt>

#include <optional>

namespace TAMBO {
class Alignment;
}

namespace companion {

// Of Select Again, here and in the workbench.
inline constexpr QKeyCombination kSelectAgainKeys = Qt::CTRL | Qt::SHIFT | Qt::Key_L;

// Whatever is selected anywhere, as the workbench's own command; what was selected is kept, for
// selectAgain(). Nothing when nothing can be selected now.
std::optional<TAMBO::SelectedCount> selectNothing();
std::optional<TAMBO::SelectedCount> selectAgain();
// What came of them, for users.
[[nodiscard]] QString deselectedText(const TAMBO::SelectedCount &count);
[[nodiscard]] QString selectedAgainText(const TAMBO::SelectedCount &count);

// False for null, too.
bool isAnySelectedOf(const TAMBO::Alignment *alignment);
// False when nothing can be selected now, here and below.
bool selectEverything(TAMBO::Alignment &alignment);
bool invertSelection(TAMBO::Alignment &alignment);

} // namespace companion
