// SPDX-License-Identifier: GPL-3.0-or-later
#include "Overview.h"

#include "AlignmentWindow.h"

#include <QMainWindow>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace companion {

namespace {

constexpr auto kLinesOfAFrame = std::chrono::milliseconds(5);
constexpr auto kBeforeColors = std::chrono::milliseconds(150);
constexpr int kFirstHeight = 120;
constexpr int kLeastFrame = 6;
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
    painter.setPen(kFrameColor);
    painter.drawRect(seen.adjusted(0, 0, -1, -1));
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
