// SPDX-License-Identifier: GPL-3.0-or-later
#include "QCanvasView.h"

#include "DragScroller.h"
#include "QCanvas.h"

#include <QElapsedTimer>
#include <QHelpEvent>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Off unless asked for: tints what is painted, in a colour that changes from one time to the next,
// and tells how long it took.
Q_LOGGING_CATEGORY(paintLog, "kalmo.canvas.paint", QtWarningMsg)

void tint(QPainter &painter, const QRegion &region)
{
    static int s_Hue = 0;
    s_Hue = (s_Hue + 67) % 360;
    for (const QRect &rect : region)
        painter.fillRect(rect, QColor::fromHsv(s_Hue, 255, 255, 60));
}

bool isWhole(double number)
{
    return std::floor(number) == number;
}

Qt::ScrollBarPolicy policyOf(QCanvasView::ScrollBarMode mode)
{
    switch (mode) {
    case QCanvasView::AlwaysOff:
        return Qt::ScrollBarAlwaysOff;
    case QCanvasView::AlwaysOn:
        return Qt::ScrollBarAlwaysOn;
    case QCanvasView::Auto:
        break;
    }
    return Qt::ScrollBarAsNeeded;
}

} // namespace

QCanvasView::QCanvasView(QCanvas *canvas, QWidget *parent, const char *name, Qt::WindowFlags flags)
    : QAbstractScrollArea(parent), m_DragScroller(makeDragScroller())
{
    if (flags != Qt::WindowFlags())
        setWindowFlags(flags);
    setObjectName(QString::fromUtf8(name));
    // Without a frame, views side by side show the same rows and columns.
    setFrameShape(QFrame::NoFrame);
    // Columns run from left to right in every language.
    setLayoutDirection(Qt::LeftToRight);
    // Everything is painted, so scrolling may move pixels.
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setAutoFillBackground(false);
    setCanvas(canvas);
}

std::unique_ptr<DragScroller> QCanvasView::makeDragScroller()
{
    return std::make_unique<DragScroller>(
        [this] {
            return DragScroller::Extent{{visibleWidth(), visibleHeight()},
                                        {contentsWidth(), contentsHeight()}};
        },
        [this](const QPoint &step) {
            QCanvasView &view = scrolledView();
            view.setContentsPos(view.contentsX() + step.x(), view.contentsY() + step.y());
        });
}

QCanvasView::~QCanvasView()
{
    setCanvas(nullptr);
}

void QCanvasView::setCanvas(QCanvas *canvas)
{
    if (m_Canvas != nullptr)
        std::erase(m_Canvas->m_Views, static_cast<CanvasWatcher *>(this));
    m_Canvas = canvas;
    if (m_Canvas == nullptr)
        return;
    m_Canvas->m_Views.push_back(this);
    canvasResized();
}

int QCanvasView::contentsWidth() const
{
    return m_Canvas == nullptr ? 0 : m_Canvas->width();
}

int QCanvasView::contentsHeight() const
{
    return m_Canvas == nullptr ? 0 : m_Canvas->height();
}

QCanvasItemList QCanvasView::itemsAt(const QPoint &contents) const
{
    return m_Canvas == nullptr ? QCanvasItemList() : m_Canvas->collisions(contents);
}

bool QCanvasView::isInSight(const QPoint &contents) const
{
    return viewport()->rect().contains(contentsToViewport(contents));
}

void QCanvasView::setVScrollBarMode(ScrollBarMode mode)
{
    setVerticalScrollBarPolicy(policyOf(mode));
}

void QCanvasView::setHScrollBarMode(ScrollBarMode mode)
{
    setHorizontalScrollBarPolicy(policyOf(mode));
}

QScrollBar *QCanvasView::horizontalScrollBar()
{
    syncBars();
    return QAbstractScrollArea::horizontalScrollBar();
}

QScrollBar *QCanvasView::verticalScrollBar()
{
    syncBars();
    return QAbstractScrollArea::verticalScrollBar();
}

void QCanvasView::setLeader(QCanvasView *leader)
{
    m_Leader = leader;
}

void QCanvasView::setToolTips(std::function<QString(const QPoint &)> textAt)
{
    m_ToolTips = std::move(textAt);
}

void QCanvasView::setContentsPos(int x, int y)
{
    horizontalScrollBar()->setValue(x);
    verticalScrollBar()->setValue(y);
}

void QCanvasView::setForeground(std::function<void(QPainter &, const QRect &)> paint)
{
    m_Foreground = std::move(paint);
}

// A rebuild takes the canvas down to nothing and up again; the bars, and with them the place that
// the user is looking at, wait until it is over.
void QCanvasView::canvasResized()
{
    viewport()->update();
    if (std::exchange(m_BarsAreStale, true))
        return;
    QMetaObject::invokeMethod(this, &QCanvasView::syncBars, Qt::QueuedConnection);
}

void QCanvasView::canvasGone()
{
    m_Canvas = nullptr;
    canvasResized();
}

void QCanvasView::canvasChanged()
{
    viewport()->update();
}

void QCanvasView::canvasChanged(const std::vector<QRect> &rects)
{
    for (const QRect &rect : rects)
        viewport()->update(rect.translated(-m_ContentsPos));
}

void QCanvasView::syncBars()
{
    if (!std::exchange(m_BarsAreStale, false))
        return;
    const QSize contents(contentsWidth(), contentsHeight());
    QSize visible = viewport()->size();
    // Bars that come and go must not be the reason for one another.
    const QSize most = maximumViewportSize();
    if (contents.width() <= most.width() && contents.height() <= most.height())
        visible = most;
    const CellLattice &lattice = m_Canvas == nullptr ? CellLattice() : m_Canvas->lattice();
    const auto sync = [](QScrollBar &bar, int length, int page, int step) {
        bar.setPageStep(page);
        bar.setSingleStep(step > 0 ? step : 20);
        bar.setRange(0, std::max(0, length - page));
    };
    sync(*QAbstractScrollArea::horizontalScrollBar(), contents.width(), visible.width(),
         lattice.cellWidth());
    sync(*QAbstractScrollArea::verticalScrollBar(), contents.height(), visible.height(),
         lattice.cellHeight());
}

void QCanvasView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    m_BarsAreStale = true;
    syncBars();
}

void QCanvasView::scrollContentsBy(int, int)
{
    const QPoint to(QAbstractScrollArea::horizontalScrollBar()->value(),
                    QAbstractScrollArea::verticalScrollBar()->value());
    if (to == m_ContentsPos)
        return;
    emit contentsMoving(to.x(), to.y());
    const QPoint by = m_ContentsPos - to;
    m_ContentsPos = to;
    viewport()->scroll(by.x(), by.y());
}

void QCanvasView::paintEvent(QPaintEvent *event)
{
    QElapsedTimer timer;
    timer.start();
    QPainter painter(viewport());
    const QRegion &region = event->region();
    // Where a pixel of the contents is a broken number of the screen's, rectangles side by side
    // share pixels: there they are painted as one, and a little more than they are.
    if (isWhole(viewport()->devicePixelRatioF())) {
        for (const QRect &rect : region)
            paintRect(painter, rect);
    } else {
        paintRect(painter, region.boundingRect().adjusted(-1, -1, 1, 1));
    }
    if (paintLog().isDebugEnabled()) {
        tint(painter, region);
        const QRect area = region.boundingRect();
        qCDebug(paintLog, "%s: %d x %d at (%d, %d) in %.2f ms", metaObject()->className(),
                area.width(), area.height(), area.x(), area.y(),
                static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
}

void QCanvasView::paintRect(QPainter &painter, const QRect &rect)
{
    painter.save();
    painter.translate(-m_ContentsPos);
    const QRect contents = rect.translated(m_ContentsPos);
    drawContents(&painter, contents.x(), contents.y(), contents.width(), contents.height());
    painter.restore();
    if (m_Foreground)
        m_Foreground(painter, rect);
}

void QCanvasView::drawContents(QPainter *painter, int x, int y, int width, int height)
{
    const QRect rect(x, y, width, height);
    if (m_Canvas != nullptr)
        m_Canvas->drawArea(rect, painter);
    else
        painter->fillRect(rect, Qt::white);
}

void QCanvasView::setDragging(bool dragging)
{
    if (dragging) {
        viewport()->setCursor(Qt::ClosedHandCursor);
        m_DragScroller->start();
    } else {
        viewport()->unsetCursor();
        m_DragScroller->stop();
    }
}

bool QCanvasView::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ToolTip: {
        const auto *help = static_cast<QHelpEvent *>(event);
        return showToolTip(help->pos(), help->globalPos());
    }
    case QEvent::ContextMenu:
        // The right button has meanings of its own; the window's menu of toolbars must not come up.
        event->accept();
        return true;
    case QEvent::FocusOut:
    case QEvent::Hide:
        // The release may never come. The drag itself is left to the subclass.
        m_DragScroller->stop();
        break;
    default:
        break;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

bool QCanvasView::showToolTip(const QPoint &point, const QPoint &global)
{
    const QString text = m_ToolTips ? m_ToolTips(viewportToContents(point)) : QString();
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(global, text, viewport());
    return !text.isEmpty();
}

void QCanvasView::forward(QMouseEvent *event, Handler handler)
{
    const QPointF at = event->position();
    // Down to the pixel that the pointer is in: rounding would move clicks near an edge to the
    // next cell.
    const QPoint point(static_cast<int>(std::floor(at.x())), static_cast<int>(std::floor(at.y())));
    QMouseEvent contents(event->type(), viewportToContents(point), event->scenePosition(),
                         event->globalPosition(), event->button(), event->buttons(),
                         event->modifiers(), event->pointingDevice());
    (this->*handler)(&contents);
    event->setAccepted(contents.isAccepted());
}

void QCanvasView::mousePressEvent(QMouseEvent *event)
{
    forward(event, &QCanvasView::contentsMousePressEvent);
}

void QCanvasView::mouseReleaseEvent(QMouseEvent *event)
{
    forward(event, &QCanvasView::contentsMouseReleaseEvent);
}

void QCanvasView::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() == Qt::NoButton)
        m_DragScroller->stop();
    else
        m_DragScroller->pointerAt(event->position().toPoint());
    forward(event, &QCanvasView::contentsMouseMoveEvent);
}

void QCanvasView::mouseDoubleClickEvent(QMouseEvent *event)
{
    forward(event, &QCanvasView::contentsMouseDoubleClickEvent);
}

void QCanvasView::contentsMousePressEvent(QMouseEvent *event)
{
    event->ignore();
}

void QCanvasView::contentsMouseReleaseEvent(QMouseEvent *event)
{
    event->ignore();
}

void QCanvasView::contentsMouseMoveEvent(QMouseEvent *event)
{
    event->ignore();
}

void QCanvasView::contentsMouseDoubleClickEvent(QMouseEvent *event)
{
    contentsMousePressEvent(event);
}

void QCanvasView::wheelEvent(QWheelEvent *event)
{
    if (m_Leader) {
        m_Leader->wheelEvent(event);
        return;
    }
    if (!event->modifiers().testFlag(Qt::ShiftModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    // With Shift the wheel goes along the columns.
    QWheelEvent sideways(event->position(), event->globalPosition(),
                         event->pixelDelta().transposed(), event->angleDelta().transposed(),
                         event->buttons(), event->modifiers() & ~Qt::ShiftModifier, event->phase(),
                         event->inverted(), event->source(), event->pointingDevice());
    QAbstractScrollArea::wheelEvent(&sideways);
    event->setAccepted(sideways.isAccepted());
}

void QCanvasView::keyPressEvent(QKeyEvent *event)
{
    if (m_Leader) {
        m_Leader->keyPressEvent(event);
        return;
    }
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
    case Qt::Key_Home:
        setContentsPos(0, control ? 0 : contentsY());
        break;
    case Qt::Key_End:
        setContentsPos(contentsWidth(), control ? contentsHeight() : contentsY());
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
        break;
    }
}

#include "moc_QCanvasView.cpp"
