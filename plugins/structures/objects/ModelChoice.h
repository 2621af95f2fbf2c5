// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace structures {

// Which of the models of its file a structure is drawn with. Whatever it is, residues and atoms are
// those of the first one, as they are in the tree.
struct ModelChoice
{
    // Traces of all, in one picture.
    bool all = false;
    // Without that; where there is no such model, the first one.
    std::size_t index = 0;

    friend constexpr bool operator==(const ModelChoice &, const ModelChoice &) = default;
};

} // namespace structures
