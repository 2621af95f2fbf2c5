// SPDX-License-Identifier: GPL-3.0-or-later
// Puts a frame around every cysteine of every alignment window, until it is run; and again when it
// is run once more.
#include <Alignment.h>
#include <AlignmentWindow.h>
#include <AlignmentWindowObserver.h>
#include <CellOverlay.h>
#include <Export.h>
#include <Logger.h>

#include <QPainter>

#include <map>
#include <memory>

namespace {

class Frames final : public TAMBO::CellOverlay
{
public:
    explicit Frames(TAMBO::AlignmentWindow &window) : CellOverlay(window, TAMBO::WindowArea::Cells)
    {
        repaint(window.visibleCells());
    }

    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override
    {
        const TAMBO::CellBlock &cells = exposed.cells;
        painter.setPen(QPen(Qt::red, 2));
        for (unsigned long row = cells.rowBegin; row < cells.rowEnd; ++row)
            for (unsigned long col = cells.colBegin; col < cells.colEnd; ++col)
                if (window.alignment()->letterAt(row, col) == 'C')
                    frame(painter, window.cellRect({row, col}));
    }

private:
    void frame(QPainter &painter, const QRect &cell)
    {
        painter.drawRect(cell.adjusted(1, 1, -1, -1));
        if (!m_HasPainted)
            Logger::Write(QString("Frames: a cysteine is framed"));
        m_HasPainted = true;
    }

    bool m_HasPainted = false;
};

class FramedWindows final : public TAMBO::AlignmentWindowObserver
{
public:
    void windowOpened(TAMBO::AlignmentWindow &window) override
    {
        if (m_IsOn)
            m_Frames[&window] = std::make_unique<Frames>(window);
    }
    void windowGoing(TAMBO::AlignmentWindow &window) override { m_Frames.erase(&window); }

    void toggle()
    {
        m_IsOn = !m_IsOn;
        m_Frames.clear();
        for (TAMBO::AlignmentWindow *window : TAMBO::AlignmentWindow::All())
            windowOpened(*window);
    }

private:
    std::map<TAMBO::AlignmentWindow *, std::unique_ptr<Frames>> m_Frames;
    bool m_IsOn = true;
};

// Hears of windows as soon as the library is loaded.
FramedWindows s_Windows;

} // namespace

extern "C" {

TAMBO_API void Execute0()
{
    s_Windows.toggle();
}

TAMBO_API bool IsDone()
{
    return true;
}

TAMBO_API void Cleanup() { }

} // extern "C"
