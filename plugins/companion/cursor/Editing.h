// SPDX-License-Identifier: GPL-3.0-or-later
// All that edits at the cell cursor of one window.
#pragma once

#include "BlockDrag.h"
#include "GapKeys.h"
#include "KeptMarks.h"

namespace companion {

// Goes before the cursor does.
class Editing
{
public:
    Editing(TAMBO::AlignmentWindow &window, CellCursor &cursor, const Telling &telling)
        : m_Kept(window, cursor, telling),
          m_Keys(window, cursor, telling),
          m_Drag(window, cursor, telling)
    { }

    [[nodiscard]] GapKeys &keys() noexcept { return m_Keys; }
    [[nodiscard]] KeptMarks &kept() noexcept { return m_Kept; }
    [[nodiscard]] BlockDrag &drag() noexcept { return m_Drag; }

private:
    KeptMarks m_Kept;
    GapKeys m_Keys;
    // Asked first of all.
    BlockDrag m_Drag;
};

} // namespace companion
