// SPDX-License-Identifier: GPL-3.0-or-later
#include "GapKeys.h"

#include "AlignmentWindow.h"
#include "CellCursor.h"
#include "KeptRegion.h"
#include "Texts.h"

#include <QKeyEvent>
#include <QMainWindow>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace companion {

using TAMBO::WindowArea;

namespace {

constexpr long kLargestCount = 1'000'000;
constexpr long kTen = 10;

bool isOfModifier(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_AltGr || key == Qt::Key_Meta || key == Qt::Key_CapsLock ||
           key == Qt::Key_NumLock;
}

} // namespace

GapKeys::GapKeys(TAMBO::AlignmentWindow &window, CellCursor &cursor, Telling telling)
    : CellEventFilter(window, WindowArea::Cells), m_Cursor(cursor), m_Telling(std::move(telling))
{ }

GapKeys::~GapKeys() = default;

void GapKeys::edit(GapEdit::Kind kind, long count)
{
    m_Count.reset();
    TAMBO::Alignment *const alignment = window()->alignment();
    const std::optional<TAMBO::CellBlock> block = m_Cursor.block();
    if (alignment == nullptr)
        return;
    if (!block) {
        m_Telling.show(tr("There is no cell cursor: an arrow key in the cells, or F7, shows it."));
        return;
    }
    m_Last = Last{kind, count};
    // The window may be closed while long work lets events through.
    const QPointer<TAMBO::AlignmentWindow> alive(window());
    const Outcome outcome = applyGapEdit(*alignment, {kind, *block, count}, keptColumns(*alignment),
                                         window()->mainWindow());
    if (alive == nullptr)
        return;
    // What stands behind the cursor moves without it, and so does what is in its block.
    const bool goesAlong = kind == GapEdit::Kind::Insert || kind == GapEdit::Kind::RemoveBefore ||
                           kind == GapEdit::Kind::Slide;
    if (outcome.isDone)
        m_Cursor.moveBy(goesAlong ? outcome.moved : 0);
    else if (!outcome.reason.isEmpty())
        m_Telling.tell(outcome.reason);
}

void GapKeys::repeat(std::optional<long> count)
{
    if (!m_Last) {
        m_Telling.show(tr("There is no edit to be repeated yet."));
        return;
    }
    const long sign = m_Last->count < 0 ? -1 : 1;
    edit(m_Last->kind, count ? sign * *count : m_Last->count);
}

void GapKeys::dropCount()
{
    if (std::exchange(m_Count, std::nullopt))
        m_Telling.show({});
}

bool GapKeys::handleDigit(int key)
{
    const long digit = key - Qt::Key_0;
    if (digit == 0 && !m_Count)
        return false;
    m_Count = std::min(m_Count.value_or(0) * kTen + digit, kLargestCount);
    m_Telling.show(
        tr("%1 … Space, Backspace, Delete, Alt + Left or Right, or Enter").arg(*m_Count));
    return true;
}

bool GapKeys::handleEdit(const QKeyEvent &key, std::optional<long> typed)
{
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    const long count = typed.value_or(1);
    if (modifiers == Qt::AltModifier && (key.key() == Qt::Key_Left || key.key() == Qt::Key_Right)) {
        edit(GapEdit::Kind::Slide, key.key() == Qt::Key_Left ? -count : count);
        return true;
    }
    if (modifiers != Qt::NoModifier)
        return false;
    switch (key.key()) {
    case Qt::Key_Space:
        edit(GapEdit::Kind::Insert, count);
        return true;
    case Qt::Key_Backspace:
        edit(GapEdit::Kind::RemoveBefore, count);
        return true;
    case Qt::Key_Delete:
        edit(GapEdit::Kind::RemoveBehind, count);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        repeat(typed);
        return true;
    default:
        return false;
    }
}

bool GapKeys::handle(TAMBO::AlignmentWindow &, WindowArea, QEvent &event)
{
    if (event.type() == QEvent::MouseButtonPress)
        dropCount();
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto &key = static_cast<const QKeyEvent &>(event);
    if (!m_Cursor.place()) {
        m_Count.reset();
        return false;
    }
    if (isOfModifier(key.key())) {
        // Keys of commands are not offered here, but for what is pressed before them.
        if (key.key() == Qt::Key_Control || key.key() == Qt::Key_Meta)
            dropCount();
        return false;
    }
    const bool isPlain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && key.key() >= Qt::Key_0 && key.key() <= Qt::Key_9)
        return handleDigit(key.key());
    const std::optional<long> typed = std::exchange(m_Count, std::nullopt);
    if (handleEdit(key, typed))
        return true;
    if (!typed)
        return false;
    m_Telling.show({});
    return isPlain && key.key() == Qt::Key_Escape;
}

} // namespace companion
