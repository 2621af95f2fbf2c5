// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment window that shows nothing: cells of a given size in a given place.
#pragma once

#include "ServedAlignmentWindow.h"

#include <QMainWindow>
#include <QPainter>

#include <map>
#include <utility>
#include <vector>

class FakeAlignmentWindow final : public TAMBO::ServedAlignmentWindow
{
public:
    FakeAlignmentWindow() { opened(); }
    ~FakeAlignmentWindow() override { going(); }

    QMainWindow *mainWindow() const override { return &m_Window; }
    QWidget *areaWidget(TAMBO::WindowArea area) const override { return &m_Areas[area]; }
    TAMBO::Alignment *alignment() const override { return m_Alignment; }
    unsigned long rows() const override { return m_Rows; }
    unsigned long columns() const override { return m_Columns; }
    QSize visibleSize() const override { return m_Visible; }
    QPoint scrollPosition() const override { return m_Scrolled; }
    void scrollTo(const QPoint &position) override { m_Scrolled = position; }
    QSize cellSize() const override { return m_Cell; }
    QSize ownCellSize() const override { return m_Cell; }
    QSize maximumCellSize() const override { return m_Cell; }
    void setCellSize(const QSize &size, const QPoint &) override { m_Cell = size; }
    void resetCellSize(const QPoint &) override { }
    int nameWidth() const override { return 0; }
    void setNameWidth(int) override { }
    void resetNameWidth() override { }
    void repaint(TAMBO::WindowArea area, const QRect &rect) override
    {
        m_Repainted.emplace_back(area, rect);
    }
    void endDrag() override { }
    void usersChanged() override { ++m_UsersChanged; }

    using ServedAlignmentWindow::activated;
    using ServedAlignmentWindow::CellSize;
    using ServedAlignmentWindow::hasChanged;
    using ServedAlignmentWindow::hasFilters;
    using ServedAlignmentWindow::hasOverlays;
    using ServedAlignmentWindow::offer;
    using ServedAlignmentWindow::paintOverlays;
    using ServedAlignmentWindow::Rebuilt;
    using ServedAlignmentWindow::ScrollPosition;
    using ServedAlignmentWindow::tellAlignmentShown;
    using ServedAlignmentWindow::tellGapDragBegan;
    using ServedAlignmentWindow::tellGapDragEnded;
    using ServedAlignmentWindow::tellGapDragMoved;
    using ServedAlignmentWindow::VisibleSize;

    TAMBO::Alignment *m_Alignment = nullptr;
    unsigned long m_Rows = 100;
    unsigned long m_Columns = 200;
    QSize m_Cell{10, 20};
    QSize m_Visible{95, 90};
    QPoint m_Scrolled;
    std::vector<std::pair<TAMBO::WindowArea, QRect>> m_Repainted;
    int m_UsersChanged = 0;

private:
    mutable QMainWindow m_Window;
    mutable std::map<TAMBO::WindowArea, QWidget> m_Areas;
};
