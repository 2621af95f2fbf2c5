// SPDX-License-Identifier: GPL-3.0-or-later
// A real editor window whose cells have the keyboard, and keys and mouse for the cell cursor.
#pragma once

#include "../window/CompanionFixture.h"

#include "DataDelete.h"
#include "DataMaker.h"

class CursorFixture : public AlignmentCompanion
{
protected:
    CursorFixture()
    {
        QApplication::setActiveWindow(m_Window);
        view().setFocus();
    }

    // Around the cells.
    [[nodiscard]] QWidget &view() const { return *cells()->parentWidget(); }
    [[nodiscard]] QWidget *cells() const { return m_Served->areaWidget(WindowArea::Cells); }
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&view(), Qt::Key(key), modifiers);
        QCoreApplication::processEvents();
    }
    void keys(std::initializer_list<int> wanted)
    {
        for (const int each : wanted)
            key(each);
    }
    [[nodiscard]] companion::CellCursor &cursor() const { return m_Companion->cursor(); }
    [[nodiscard]] TAMBO::CellIndex place() const
    {
        return cursor().place().value_or(TAMBO::CellIndex{9999, 9999});
    }
    [[nodiscard]] TAMBO::CellBlock block() const
    {
        return cursor().block().value_or(TAMBO::CellBlock{});
    }
    [[nodiscard]] QPoint middleOf(const TAMBO::CellIndex &cell) const
    {
        return m_Served->cellRect(cell).center();
    }
    void dragFrom(const TAMBO::CellIndex &from, const TAMBO::CellIndex &to, Qt::MouseButton button,
                  Qt::KeyboardModifiers modifiers = {})
    {
        mouse(cells(), QEvent::MouseButtonPress, button, middleOf(from), button, modifiers);
        mouse(cells(), QEvent::MouseMove, Qt::NoButton, middleOf(to), button, modifiers);
        mouse(cells(), QEvent::MouseButtonRelease, button, middleOf(to), {}, modifiers);
        QCoreApplication::processEvents();
    }
    void destroyAlignment()
    {
        {
            const DataDelete<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
            ASSERT_TRUE(guard.m_good);
            TAMBO::DataMaker::Destroy(&m_Shown);
        }
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QString line() const
    {
        return m_Window->findChild<QToolBar *>("UnderThePointer")->findChild<QLabel *>()->text();
    }
    [[nodiscard]] bool isGap(const TAMBO::CellIndex &cell) const
    {
        return m_Shown.letterAt(cell.row, cell.col) == '\0';
    }
};
