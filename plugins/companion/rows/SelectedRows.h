// SPDX-License-Identifier: GPL-3.0-or-later
// The rows that commands are for: by what is selected in them.
#pragma once

#include <optional>
#include <vector>

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

struct SelectedRows
{
    // In ascending order.
    std::vector<unsigned long> rows;
    // Of each all residues are selected; of no row are they, otherwise, and these have some.
    bool areWhole = false;
};

// Those with all residues selected, or when there is none, those with any. Rows without residues
// are never selected. Nothing when it took long and the user has given it up.
[[nodiscard]] std::optional<SelectedRows> selectedRows(TAMBO::AlignmentWindow &window);

} // namespace companion
