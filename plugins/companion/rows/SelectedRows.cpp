// SPDX-License-Identifier: GPL-3.0-or-later
#include "SelectedRows.h"

#include "Alignment.h"
#include "AlignmentDetails.h"
#include "RowPass.h"
#include "Texts.h"

#include <utility>

namespace companion {

std::optional<SelectedRows> selectedRows(TAMBO::AlignmentWindow &window)
{
    std::vector<unsigned long> whole;
    std::vector<unsigned long> touched;
    RowPass pass(
        window,
        [&](const TAMBO::Alignment &) {
            whole.clear();
            touched.clear();
        },
        [&](const TAMBO::Alignment &alignment, unsigned long row) {
            // Of most rows nothing is selected, which is known at once. Rows of gaps alone are
            // such, and would count as selected.
            if (!TAMBO::AlignmentDetails::hasSelected(alignment, row))
                return true;
            if (alignment.isRowSelected(row))
                whole.push_back(row);
            else if (whole.empty())
                touched.push_back(row);
            return true;
        });
    if (!finish(pass, tr("Looking for selected rows…"), window))
        return std::nullopt;
    const bool areWhole = !whole.empty();
    return SelectedRows{std::move(areWhole ? whole : touched), areWhole};
}

} // namespace companion
