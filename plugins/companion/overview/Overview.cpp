// SPDX-License-Identifier: GPL-3.0-or-later
#include "Overview.h"

#include "AlignmentWindow.h"

#include <QKeyEvent>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace companion {

namespace {

constexpr auto kLinesOfAFrame = std::chrono::milliseconds(5);
constexpr auto kBeforeColors = std::chrono::milliseconds(150);
constexpr int kFirstHeight = 120;
constexpr int kLeastFrame = 6;
constexpr int kFocusFrame = 3;
// Of what is in sight, by which a key moves the frame.
constexpr int kPartOfSight = 4;
constexpr QColor kFrameColor(0, 0, 0);
constexpr QColor kShade(0, 0, 0, 40);

} // namespace

Overview::Overview(TAMBO::AlignmentWindow &window)
    : QDockWidget(tr("Overview"), window.mainWindow()),
      AlignmentViewObserver(window),
      m_View(new QWidget)
{
    setObjectName(QStringLiteral("Overview"));
    m_View->setMinimumSize(40, 40);
    m_View->setAccessibleName(tr("Overview of the alignment"));
    m_View->setFocusPolicy(Qt::StrongFocus);
    m_View->installEventFilter(this);
    setWidget(m_View);
    connect(&m_Lines, &QTimer::timeout, this, &Overview::goOn);
    m_Later.setSingleShot(true);
    m_Later.setInterval(kBeforeColors);
    connect(&m_Later, &QTimer::timeout, this, &Overview::begin);
    connect(this, &QDockWidget::visibilityChanged, this, &Overview::begin);
    window.mainWindow()->addDockWidget(Qt::BottomDockWidgetArea, this);
    window.mainWindow()->resizeDocks({this}, {kFirstHeight}, Qt::Vertical);
    hide();
}

Overview::~Overview() = default;

void Overview::alignmentShown()
{
    m_Lines.stop();
    m_Picture.clear();
    begin();
}

void Overview::layoutRebuilt()
{
    begin();
}

void Overview::cellSizeChanged()
{
    m_View->update();
}

void Overview::visibleSizeChanged()
{
    m_View->update();
}

void Overview::scrolled()
{
    m_View->update();
    describe();
}

void Overview::describe()
{
    if (!isVisible())
        return;
    const TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    const TAMBO::CellBlock cells = shown.visibleCells();
    m_View->setAccessibleDescription(
        cells.isEmpty() ? tr("Nothing is in sight.")
                        : tr("Rows %1 to %2 of %3 and columns %4 to %5 of %6 are in sight.")
                              .arg(cells.rowBegin + 1)
                              .arg(cells.rowEnd)
                              .arg(shown.rows())
                              .arg(cells.colBegin + 1)
                              .arg(cells.colEnd)
                              .arg(shown.columns()));
}

void Overview::commUpdate()
{
    if (isVisible())
        m_Later.start();
}

void Overview::begin()
{
    m_Lines.stop();
    const TAMBO::Alignment *const alignment = AlignmentViewObserver::window() == nullptr
                                                  ? nullptr
                                                  : AlignmentViewObserver::window()->alignment();
    if (alignment == nullptr || !isVisible())
        return m_Picture.clear();
    m_Picture.begin(*alignment, m_View->size());
    m_Lines.start(0);
}

void Overview::goOn()
{
    if (!m_Picture.goOn(kLinesOfAFrame))
        m_Lines.stop();
    m_View->update();
}

QRect Overview::frame() const
{
    const TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    const TAMBO::CellBlock cells = shown.visibleCells();
    if (cells.isEmpty() || shown.rows() == 0 || shown.columns() == 0)
        return {};
    const double across = double(m_View->width()) / double(shown.columns());
    const double down = double(m_View->height()) / double(shown.rows());
    const auto pixels = [](double from, double to) {
        return std::pair(int(std::floor(from)), std::max(kLeastFrame, int(std::ceil(to - from))));
    };
    const auto [left, width] =
        pixels(double(cells.colBegin) * across, double(cells.colEnd) * across);
    const auto [top, height] = pixels(double(cells.rowBegin) * down, double(cells.rowEnd) * down);
    return {left, top, width, height};
}

void Overview::paintView()
{
    QPainter painter(m_View);
    painter.fillRect(m_View->rect(), Qt::white);
    if (m_Picture.image().isNull())
        return;
    painter.drawImage(m_View->rect(), m_Picture.image());
    const QRect seen = frame();
    // What is out of sight is darker, so that the frame is found in a colorful picture.
    QRegion around(m_View->rect());
    around -= seen;
    for (const QRect &part : around)
        painter.fillRect(part, kShade);
    // Thicker when keys move it.
    const int thickness = m_View->hasFocus() ? kFocusFrame : 1;
    painter.setPen(QPen(kFrameColor, thickness, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(QRectF(seen).adjusted(thickness / 2.0, thickness / 2.0, -thickness / 2.0,
                                           -thickness / 2.0));
}

void Overview::scrollTo(const QPoint &place)
{
    TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    if (shown.rows() == 0 || shown.columns() == 0)
        return;
    const auto cellAt = [](int at, int all, unsigned long cells) {
        const double share = std::clamp(double(at) / std::max(1, all), 0.0, 1.0);
        return std::min(static_cast<unsigned long>(share * double(cells)), cells - 1);
    };
    shown.showCell({cellAt(place.y(), m_View->height(), shown.rows()),
                    cellAt(place.x(), m_View->width(), shown.columns())},
                   TAMBO::AlignmentWindow::Placement::Centred);
}

bool Overview::scrollBy(const QKeyEvent &key)
{
    TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    const QSize cell = shown.cellSize();
    const QSize sight = shown.visibleSize();
    const int across = std::max(cell.width(), sight.width() / kPartOfSight);
    const int down = std::max(cell.height(), sight.height() / kPartOfSight);
    const QPoint first(0, 0);
    const QPoint last(std::numeric_limits<int>::max() / 2, std::numeric_limits<int>::max() / 2);
    const QPoint now = shown.scrollPosition();
    const bool isCtrl = key.modifiers().testFlag(Qt::ControlModifier);
    switch (key.key()) {
    case Qt::Key_Left:
        shown.scrollBy({-across, 0});
        return true;
    case Qt::Key_Right:
        shown.scrollBy({across, 0});
        return true;
    case Qt::Key_Up:
        shown.scrollBy({0, -down});
        return true;
    case Qt::Key_Down:
        shown.scrollBy({0, down});
        return true;
    case Qt::Key_PageUp:
        shown.scrollBy({0, -sight.height()});
        return true;
    case Qt::Key_PageDown:
        shown.scrollBy({0, sight.height()});
        return true;
    case Qt::Key_Home:
        shown.scrollTo({first.x(), isCtrl ? first.y() : now.y()});
        return true;
    case Qt::Key_End:
        shown.scrollTo({last.x(), isCtrl ? last.y() : now.y()});
        return true;
    default:
        return false;
    }
}

bool Overview::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_View)
        return QDockWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Paint:
        paintView();
        return true;
    case QEvent::Resize:
        begin();
        return false;
    case QEvent::FocusIn:
        describe();
        [[fallthrough]];
    case QEvent::FocusOut:
        m_View->update();
        return false;
    case QEvent::KeyPress:
        return scrollBy(static_cast<const QKeyEvent &>(*event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove: {
        const auto &mouse = static_cast<const QMouseEvent &>(*event);
        if (!mouse.buttons().testFlag(Qt::LeftButton))
            return false;
        scrollTo(mouse.pos());
        return true;
    }
    default:
        return false;
    }
}

} // namespace companion
