// SPDX-License-Identifier: GPL-3.0-or-later
// The window with the table. It follows the editor window that was used last, and what that shows.
#pragma once

#include "ColumnFrame.h"
#include "OccupancyMarks.h"
#include "StatisticsModel.h"

#include <AlignmentViewObserver.h>
#include <AlignmentWindowObserver.h>
#include <BaseWindow.h>

#include <QSortFilterProxyModel>

#include <memory>

class QAction;
class QLabel;
class QTableView;

class StatisticsWindow final : public BaseWindow, public TAMBO::AlignmentWindowObserver
{
public:
    // There is one at most: two would show the same.
    static void open();
    [[nodiscard]] static StatisticsWindow *opened();

    void Kill(BaseWindow *window) override;

    void windowOpened(TAMBO::AlignmentWindow &window) override;
    void windowGoing(TAMBO::AlignmentWindow &window) override;
    void windowActivated(TAMBO::AlignmentWindow &window) override;

private:
    // Hears of what the editor window that is followed shows.
    class Editor final : public TAMBO::AlignmentViewObserver
    {
    public:
        Editor(TAMBO::AlignmentWindow &window, StatisticsWindow &owner);
        void alignmentShown() override;
        void layoutRebuilt() override;

    private:
        StatisticsWindow &m_Owner;
    };

    StatisticsWindow();
    void addToolBar();
    void addTable();

    // Null: none is open.
    void follow(TAMBO::AlignmentWindow *window);
    void refresh();
    void showMarks();
    void showColumn(unsigned long column);

    StatisticsModel m_Model;
    QSortFilterProxyModel m_Sorted;
    QAction *m_Mark = nullptr;
    QLabel *m_Summary = nullptr;
    QTableView *m_Table = nullptr;
    // Behind the model, which the marks read from.
    std::unique_ptr<Editor> m_Editor;
    std::unique_ptr<OccupancyMarks> m_Marks;
    std::unique_ptr<ColumnFrame> m_Frame;
};
