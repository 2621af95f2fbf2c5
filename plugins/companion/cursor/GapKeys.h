// SPDX-License-Identifier: GPL-3.0-or-later
// The keys that put gaps in and take them out at the cell cursor, in all rows of its block.
#pragma once

#include "CellEventFilter.h"
#include "GapEdit.h"
#include "Telling.h"

#include <optional>

class QKeyEvent;

namespace companion {

class CellCursor;

// Asked before the cursor is, which has to be there. Digits make a count for the next one of the
// keys; any other key and any button of the mouse drops it, and so does Escape, without meaning
// anything else then.
class GapKeys : public TAMBO::CellEventFilter
{
public:
    // The cursor is made before this and goes behind it.
    GapKeys(TAMBO::AlignmentWindow &window, CellCursor &cursor, Telling telling);
    ~GapKeys() override;

    // At the cursor, which goes along with its residues.
    void edit(GapEdit::Kind kind, long count);
    // The last edit once more, where the cursor is now; with another count if there is one.
    void repeat(std::optional<long> count = std::nullopt);

    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    struct Last
    {
        GapEdit::Kind kind;
        long count;
    };

    void dropCount();
    bool handleDigit(int key);
    bool handleEdit(const QKeyEvent &key, std::optional<long> typed);

    CellCursor &m_Cursor;
    Telling m_Telling;
    std::optional<long> m_Count;
    std::optional<Last> m_Last;
};

} // namespace companion
