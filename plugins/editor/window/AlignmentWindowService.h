// SPDX-License-Identifier: GPL-3.0-or-later
// An editor window as other plug-ins see it. Belongs to the window, and goes first of all its
// parts.
#pragma once

#include "ServedAlignmentWindow.h"
#include "View.h"

#include <QEvent>

#include <functional>

namespace ZEP {

class CellMeasures;
class CornerLabel;

class AlignmentWindowService final : public TAMBO::ServedAlignmentWindow
{
public:
    // Of the window; all outlive this object.
    struct Parts
    {
        QMainWindow &window;
        View &view;
        Panel &header;
        Panel &names;
        CornerLabel &corner;
        const CellMeasures &measures;
    };
    struct Commands
    {
        // Both show what they have changed.
        std::function<void(const QSize &)> setCell;
        // 0 for the window's own.
        std::function<void(int)> setNameWidth;
        std::function<void(const QFont &)> setFont;
        // Makes what is shown that of the alignment.
        std::function<void()> catchUp;
    };

    AlignmentWindowService(const Parts &parts, Commands commands);
    ~AlignmentWindowService() override;

    // Null for none.
    void shows(TAMBO::Alignment *alignment);
    // What was shown may have been freed. Others are told when shows() is called.
    void forgets() { m_Shown = nullptr; }
    // What is shown has been made anew.
    void rebuilt();

    [[nodiscard]] QMainWindow *mainWindow() const override { return &m_Parts.window; }
    [[nodiscard]] QWidget *areaWidget(TAMBO::WindowArea area) const override;
    [[nodiscard]] TAMBO::Alignment *alignment() const override { return m_Shown; }
    [[nodiscard]] unsigned long rows() const override;
    [[nodiscard]] unsigned long columns() const override;
    [[nodiscard]] QSize visibleSize() const override;
    [[nodiscard]] QPoint scrollPosition() const override;
    void scrollTo(const QPoint &position) override;
    [[nodiscard]] QSize cellSize() const override;
    [[nodiscard]] QSize ownCellSize() const override;
    [[nodiscard]] QSize maximumCellSize() const override;
    void setCellSize(const QSize &size, const QPoint &fixedPoint) override;
    void resetCellSize(const QPoint &fixedPoint) override;
    [[nodiscard]] int nameWidth() const override;
    void setNameWidth(int width) override;
    void resetNameWidth() override;
    [[nodiscard]] std::optional<QFont> chosenFont() const override;
    void setChosenFont(const QFont &font) override;
    [[nodiscard]] std::optional<QFont> nameFont() const override;
    void repaint(TAMBO::WindowArea area, const QRect &rect) override;
    void endDrag() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void usersChanged() override;

private:
    void tellHeld(const View::Held &held);
    [[nodiscard]] std::optional<TAMBO::WindowArea> areaOf(const QObject *watched,
                                                          QEvent::Type type) const;

    Parts m_Parts;
    Commands m_Commands;
    const QFont m_FirstFont;
    TAMBO::Alignment *m_Shown = nullptr;
    // What the others were told of last; only to be compared.
    const TAMBO::Alignment *m_Told = nullptr;
    QSize m_ToldCellSize;
};

} // namespace ZEP
