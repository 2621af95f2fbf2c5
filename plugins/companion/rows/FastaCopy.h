// SPDX-License-Identifier: GPL-3.0-or-later
// A part of the alignment that a window shows, as FASTA on the clipboard.
#pragma once

#include "CellPlaces.h"

#include <QString>

#include <cstddef>
#include <optional>

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

// In bytes. Of more the clipboard stays as it is: other programs take it as one piece.
inline constexpr std::size_t kMostCopied = std::size_t(32) << 20;

// The rows of the block over its columns; without one the selected rows over the columns in which
// one of them has a residue. Rows have one length, with '-' for gaps. What has come of it, or why
// nothing has, for people.
[[nodiscard]] QString copyAsFasta(TAMBO::AlignmentWindow &window,
                                  const std::optional<TAMBO::CellBlock> &block,
                                  std::size_t most = kMostCopied);

} // namespace companion
