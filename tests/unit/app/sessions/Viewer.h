// SPDX-License-Identifier: GPL-3.0-or-later
// A window that shows an alignment and remembers what it was told.
#pragma once

#include "ServedAlignmentWindow.h"

#include <QMainWindow>
#include <QToolBar>

class Viewer final : public TAMBO::ServedAlignmentWindow
{
public:
    static constexpr QSize kOwnCell{8, 16};
    static constexpr QRect kPlace{40, 60, 400, 300};

    explicit Viewer(TAMBO::Alignment *shown) : m_Shown(shown)
    {
        m_Bar = m_Frame.addToolBar("bar");
        m_Bar->setObjectName("bar");
        m_Frame.setGeometry(kPlace);
        m_Frame.show();
        opened();
    }
    ~Viewer() override { going(); }

    QMainWindow *mainWindow() const override { return &m_Frame; }
    QWidget *areaWidget(TAMBO::WindowArea) const override { return &m_Frame; }
    TAMBO::Alignment *alignment() const override { return m_Shown; }
    unsigned long rows() const override { return 1000; }
    unsigned long columns() const override { return 1000; }
    QSize visibleSize() const override { return m_Frame.size(); }
    QPoint scrollPosition() const override { return m_Scrolled; }
    void scrollTo(const QPoint &position) override { m_Scrolled = position; }
    QSize cellSize() const override { return m_Cell; }
    QSize ownCellSize() const override { return kOwnCell; }
    QSize maximumCellSize() const override { return 10 * kOwnCell; }
    void setCellSize(const QSize &size, const QPoint &) override { m_Cell = size; }
    void resetCellSize(const QPoint &) override { m_Cell = kOwnCell; }
    int nameWidth() const override { return m_NameWidth; }
    void setNameWidth(int width) override { m_NameWidth = width; }
    void resetNameWidth() override { m_NameWidth = 8 * kOwnCell.width(); }
    std::optional<QFont> chosenFont() const override { return m_Font; }
    void setChosenFont(const QFont &font) override { m_Font = font; }
    void repaint(TAMBO::WindowArea, const QRect &) override { }
    void endDrag() override { }

    using TAMBO::ServedAlignmentWindow::activated;

    TAMBO::Alignment *m_Shown;
    QToolBar *m_Bar = nullptr;
    QPoint m_Scrolled;
    QSize m_Cell = kOwnCell;
    std::optional<QFont> m_Font;
    int m_NameWidth = 8 * kOwnCell.width();

private:
    mutable QMainWindow m_Frame;
};
