// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWindowService.h"

#include "CellMeasures.h"
#include "CornerLabel.h"
#include "QCanvas.h"

#include <QMainWindow>
#include <QScrollBar>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace ZEP {

using TAMBO::WindowArea;

namespace {

constexpr std::initializer_list<WindowArea> kAreas = {WindowArea::Cells, WindowArea::Names,
                                                      WindowArea::Header, WindowArea::Corner};

bool isOffered(QEvent::Type type) noexcept
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ToolTip:
    case QEvent::ContextMenu:
    case QEvent::Enter:
    case QEvent::Leave:
        return true;
    default:
        return false;
    }
}

bool isOfKeys(QEvent::Type type) noexcept
{
    return type == QEvent::KeyPress || type == QEvent::KeyRelease;
}

} // namespace

AlignmentWindowService::AlignmentWindowService(const Parts &parts, Commands commands)
    : m_Parts(parts),
      m_Commands(std::move(commands)),
      m_FirstFont(parts.measures.font()),
      m_ToldCellSize(cellSize())
{
    m_Parts.window.installEventFilter(this);
    for (QCanvasView *view :
         std::initializer_list<QCanvasView *>{&m_Parts.view, &m_Parts.header, &m_Parts.names}) {
        view->installEventFilter(this);
        view->viewport()->installEventFilter(this);
    }
    m_Parts.corner.installEventFilter(this);
    // Behind the view, which has scrolled by then.
    for (const QScrollBar *bar :
         {m_Parts.view.horizontalScrollBar(), m_Parts.view.verticalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, this, [this] {
            hasChanged(ScrollPosition);
            m_Parts.view.tellHeld();
        });
    m_Parts.view.setHeldNews([this](const View::Held &held) { tellHeld(held); });
    opened();
}

AlignmentWindowService::~AlignmentWindowService()
{
    going();
    m_Parts.view.setHeldNews(nullptr);
    m_Parts.view.setForeground(nullptr);
    m_Parts.header.setForeground(nullptr);
    m_Parts.names.setForeground(nullptr);
    m_Parts.corner.setForeground(nullptr);
}

void AlignmentWindowService::shows(TAMBO::Alignment *alignment)
{
    m_Shown = alignment;
    if (std::exchange(m_Told, alignment) != alignment)
        tellAlignmentShown();
}

void AlignmentWindowService::rebuilt()
{
    hasChanged(Rebuilt);
    if (std::exchange(m_ToldCellSize, cellSize()) != cellSize())
        hasChanged(CellSize);
}

QWidget *AlignmentWindowService::areaWidget(WindowArea area) const
{
    switch (area) {
    case WindowArea::Cells:
        return m_Parts.view.viewport();
    case WindowArea::Names:
        return m_Parts.names.viewport();
    case WindowArea::Header:
        return m_Parts.header.viewport();
    case WindowArea::Corner:
        break;
    }
    return &m_Parts.corner;
}

unsigned long AlignmentWindowService::rows() const
{
    return m_Parts.view.canvas()->lattice().rows();
}

unsigned long AlignmentWindowService::columns() const
{
    return m_Parts.view.canvas()->lattice().columns();
}

QSize AlignmentWindowService::visibleSize() const
{
    return m_Parts.view.viewport()->size();
}

QPoint AlignmentWindowService::scrollPosition() const
{
    return {m_Parts.view.contentsX(), m_Parts.view.contentsY()};
}

void AlignmentWindowService::scrollTo(const QPoint &position)
{
    View &view = m_Parts.view;
    view.setContentsPos(position.x(), position.y());
    m_Parts.header.setContentsPos(view.contentsX(), 0);
    m_Parts.names.setContentsPos(0, view.contentsY());
}

QSize AlignmentWindowService::cellSize() const
{
    const CellLattice &lattice = m_Parts.view.canvas()->lattice();
    return lattice.isEmpty() ? m_Parts.measures.cell()
                             : QSize(lattice.cellWidth(), lattice.cellHeight());
}

QSize AlignmentWindowService::ownCellSize() const
{
    return m_Parts.measures.ownCell();
}

QSize AlignmentWindowService::maximumCellSize() const
{
    return m_Parts.measures.largestCell();
}

void AlignmentWindowService::setCellSize(const QSize &size, const QPoint &fixedPoint)
{
    const QPointF scale = QPointF(cellSize().width(), cellSize().height());
    const QPointF fixed = QPointF(fixedPoint + scrollPosition());
    m_Commands.setCell(size);
    const QSize now = cellSize();
    scrollTo(QPointF(fixed.x() / scale.x() * now.width(), fixed.y() / scale.y() * now.height())
                 .toPoint() -
             fixedPoint);
}

void AlignmentWindowService::resetCellSize(const QPoint &fixedPoint)
{
    setCellSize(ownCellSize(), fixedPoint);
}

int AlignmentWindowService::nameWidth() const
{
    return std::max(m_Parts.names.minimumWidth(), m_Parts.names.maximumWidth());
}

void AlignmentWindowService::setNameWidth(int width)
{
    const int least = ownCellSize().width();
    int most = QWIDGETSIZE_MAX;
    if (m_Parts.window.isVisible()) {
        const int beside = std::max(least + m_Parts.view.verticalScrollBar()->sizeHint().width(),
                                    m_Parts.view.minimumSizeHint().width());
        most = std::max(least, m_Parts.names.width() + m_Parts.view.width() - beside);
    }
    m_Commands.setNameWidth(std::clamp(width, least, most));
}

void AlignmentWindowService::resetNameWidth()
{
    m_Commands.setNameWidth(0);
}

std::optional<QFont> AlignmentWindowService::chosenFont() const
{
    const QFont &font = m_Parts.measures.font();
    return font == m_FirstFont ? std::nullopt : std::optional(font);
}

std::optional<QFont> AlignmentWindowService::nameFont() const
{
    const CellMeasures::Letters &letters = m_Parts.measures.nameLetters();
    return letters.areShown ? std::optional(letters.font) : std::nullopt;
}

void AlignmentWindowService::setChosenFont(const QFont &font)
{
    if (font != m_Parts.measures.font())
        m_Commands.setFont(font);
}

void AlignmentWindowService::repaint(WindowArea area, const QRect &rect)
{
    areaWidget(area)->update(rect);
}

void AlignmentWindowService::endDrag()
{
    m_Parts.view.endDrag();
    m_Parts.names.endDrag();
    m_Parts.header.endDrag();
}

std::optional<WindowArea> AlignmentWindowService::areaOf(const QObject *watched,
                                                         QEvent::Type type) const
{
    for (const WindowArea area : kAreas) {
        QWidget *const widget = areaWidget(area);
        if (watched == widget && isOffered(type))
            return area;
        // Keys come to the scroll area around it, and the panels hand them on to the cells.
        if (watched == widget->parent() && area != WindowArea::Corner && isOfKeys(type))
            return WindowArea::Cells;
    }
    return std::nullopt;
}

bool AlignmentWindowService::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (watched == &m_Parts.window) {
        if (type == QEvent::WindowActivate)
            activated();
        return false;
    }
    if (type == QEvent::Resize && watched == m_Parts.view.viewport())
        hasChanged(VisibleSize);
    const std::optional<WindowArea> area = areaOf(watched, type);
    if (!area || !hasFilters(*area))
        return false;
    m_Commands.catchUp();
    return offer(*area, *event);
}

void AlignmentWindowService::usersChanged()
{
    for (const WindowArea area : kAreas) {
        const bool isFiltered = hasFilters(area);
        if (areaWidget(area)->hasMouseTracking() != isFiltered)
            areaWidget(area)->setMouseTracking(isFiltered);
    }
    const auto foreground = [this](WindowArea area) {
        std::function<void(QPainter &, const QRect &)> paint;
        if (hasOverlays(area))
            paint = [this, area](QPainter &painter, const QRect &exposed) {
                paintOverlays(area, painter, exposed);
            };
        return paint;
    };
    m_Parts.view.setForeground(foreground(WindowArea::Cells));
    m_Parts.header.setForeground(foreground(WindowArea::Header));
    m_Parts.names.setForeground(foreground(WindowArea::Names));
    m_Parts.corner.setForeground(foreground(WindowArea::Corner));
}

void AlignmentWindowService::tellHeld(const View::Held &held)
{
    const TAMBO::GapDrag drag{{held.row, held.col}, held.button, held.to};
    switch (held.what) {
    case View::Held::Begins:
        tellGapDragBegan(drag);
        break;
    case View::Held::Moves:
        tellGapDragMoved(drag);
        break;
    case View::Held::Ends:
        tellGapDragEnded(drag);
        break;
    }
}

} // namespace ZEP
