// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowState.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "FontBytes.h"
#include "StoredObject.h"
#include "ValueBytes.h"

#include <QDockWidget>
#include <QGuiApplication>
#include <QLayout>
#include <QMainWindow>
#include <QScreen>
#include <QToolBar>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace TAMBO::app {

namespace {

// Of any number in pixels that can be meant.
constexpr int kFarthest = 1 << 20;
constexpr std::size_t kMostBars = 100;
// The width of the names that the window chooses itself, in its own cells.
constexpr int kOwnNameCells = 8;
// Window managers add these at most.
constexpr QMargins kFrameRoom(4, 32, 4, 4);
constexpr std::size_t kMostDocks = 100;
constexpr std::array kDockAreas = {Qt::LeftDockWidgetArea, Qt::RightDockWidgetArea,
                                   Qt::TopDockWidgetArea, Qt::BottomDockWidgetArea};
constexpr std::array kBarAreas = {Qt::LeftToolBarArea, Qt::RightToolBarArea, Qt::TopToolBarArea,
                                  Qt::BottomToolBarArea};

qint64 sharedPixels(const QRect &one, const QRect &other)
{
    const QRect shared = one & other;
    return qint64(shared.width()) * shared.height();
}

std::vector<QRect> roomsOfScreens()
{
    std::vector<QRect> rooms;
    for (const QScreen *const screen : QGuiApplication::screens())
        rooms.push_back(screen->availableGeometry());
    return rooms;
}

// Between the edges, or at the first one when the distance is larger.
int pulledBetween(int start, int length, int first, int behind)
{
    return std::max(first, std::min(start, behind - length));
}

int readPixels(ValueReader &in, int least)
{
    return int(in.signedNumber(least, kFarthest));
}

// What the user cannot move comes and goes with what it is about, such as a comparison or a search.
bool isKept(const QToolBar &bar)
{
    return bar.isMovable() && !bar.isFloating() && !bar.objectName().isEmpty();
}

QSize readPixelSize(ValueReader &in)
{
    const int width = readPixels(in, 1);
    return {width, readPixels(in, 1)};
}

double readCells(ValueReader &in)
{
    const double cells = in.real64();
    // Whatever is not a number is not in between either.
    if (cells >= 0 && cells <= double(std::numeric_limits<int>::max()))
        return cells;
    in.fail("a place in the alignment is none");
    return 0;
}

int pixelsOf(double cells, int cell)
{
    constexpr double kMost = std::numeric_limits<int>::max() / 2.0;
    return int(std::min(std::round(cells * cell), kMost));
}

void settleLayout(QWidget *widget)
{
    if (widget != nullptr && widget->layout() != nullptr)
        widget->layout()->activate();
}

} // namespace

QRect placeInSight(const QRect &place, const std::vector<QRect> &rooms)
{
    qint64 seen = 0;
    qint64 most = -1;
    QRect room;
    for (const QRect &candidate : rooms) {
        const qint64 shared = sharedPixels(place, candidate);
        seen += shared;
        if (shared > most) {
            most = shared;
            room = candidate;
        }
    }
    if (rooms.empty() || seen >= qint64(place.width()) * place.height())
        return place;
    const QRect inner = room.marginsRemoved(kFrameRoom);
    const QSize size = place.size().boundedTo(inner.size());
    return {QPoint(pulledBetween(place.x(), size.width(), inner.x(), inner.x() + inner.width()),
                   pulledBetween(place.y(), size.height(), inner.y(), inner.y() + inner.height())),
            size};
}

WindowState WindowState::of(const AlignmentWindow &window)
{
    WindowState state;
    if (window.alignment() != nullptr)
        state.m_Alignment = identityOf(*window.alignment());
    const QMainWindow &frame = *window.mainWindow();
    state.m_IsMaximised = frame.isMaximized();
    state.m_IsFullScreen = frame.isFullScreen();
    state.m_IsMinimised = frame.isMinimized();
    const QRect normal = frame.normalGeometry();
    state.m_Place = normal.isValid() ? normal : frame.geometry();
    for (const QToolBar *const bar :
         frame.findChildren<QToolBar *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (isKept(*bar) && state.m_Bars.size() < kMostBars)
            state.m_Bars.push_back(
                {bar->objectName(), int(frame.toolBarArea(bar)), !bar->isHidden()});
    }
    for (QDockWidget *const dock :
         frame.findChildren<QDockWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!dock->objectName().isEmpty() && !dock->isFloating() &&
            state.m_Docks.size() < kMostDocks)
            state.m_Docks.push_back({dock->objectName(), int(frame.dockWidgetArea(dock)),
                                     !dock->isHidden(), dock->size()});
    }
    state.m_Font = window.chosenFont();
    const QSize cell = window.cellSize();
    if (cell != window.ownCellSize())
        state.m_Cell = cell;
    if (window.nameWidth() != kOwnNameCells * window.ownCellSize().width())
        state.m_NameWidth = window.nameWidth();
    const QPoint first = window.scrollPosition();
    if (!cell.isEmpty())
        state.m_First = {double(first.x()) / cell.width(), double(first.y()) / cell.height()};
    return state;
}

void WindowState::write(ValueWriter &out) const
{
    out.number(m_Alignment);
    for (const int pixels : {m_Place.x(), m_Place.y(), m_Place.width(), m_Place.height()})
        out.signedNumber(pixels);
    out.flag(m_IsMaximised);
    out.flag(m_IsFullScreen);
    out.flag(m_IsMinimised);
    out.number(m_Bars.size());
    for (const Bar &bar : m_Bars) {
        out.text(bar.name.toStdString());
        out.number(std::uint64_t(bar.area));
        out.flag(bar.isShown);
    }
    out.flag(m_Cell.has_value());
    if (m_Cell) {
        out.signedNumber(m_Cell->width());
        out.signedNumber(m_Cell->height());
    }
    out.flag(m_NameWidth.has_value());
    if (m_NameWidth)
        out.signedNumber(*m_NameWidth);
    out.real(m_First.x());
    out.real(m_First.y());
    out.flag(m_Font.has_value());
    if (m_Font)
        writeFont(*m_Font, out);
    out.number(m_Docks.size());
    for (const Dock &dock : m_Docks) {
        out.text(dock.name.toStdString());
        out.number(std::uint64_t(dock.area));
        out.flag(dock.isShown);
        out.signedNumber(dock.size.width());
        out.signedNumber(dock.size.height());
    }
}

WindowState WindowState::read(ValueReader &in, Form form)
{
    WindowState state;
    state.m_Alignment = std::uint32_t(in.number(std::numeric_limits<std::uint32_t>::max()));
    const int x = readPixels(in, -kFarthest);
    const int y = readPixels(in, -kFarthest);
    state.m_Place = QRect(QPoint(x, y), readPixelSize(in));
    state.m_IsMaximised = in.flag();
    state.m_IsFullScreen = in.flag();
    state.m_IsMinimised = in.flag();
    for (std::uint64_t left = in.number(kMostBars); left > 0 && !in.failed(); --left) {
        Bar bar;
        const std::string_view name = in.text();
        bar.name = QString::fromUtf8(name.data(), qsizetype(name.size()));
        bar.area = int(in.number(Qt::AllToolBarAreas));
        bar.isShown = in.flag();
        state.m_Bars.push_back(std::move(bar));
    }
    if (in.flag())
        state.m_Cell = readPixelSize(in);
    if (in.flag())
        state.m_NameWidth = readPixels(in, 1);
    const double column = readCells(in);
    state.m_First = {column, readCells(in)};
    if (form >= Form::WithFont && in.flag())
        state.m_Font = readFont(in);
    if (form < Form::WithDocks)
        return state;
    for (std::uint64_t left = in.number(kMostDocks); left > 0 && !in.failed(); --left) {
        Dock dock;
        const std::string_view name = in.text();
        dock.name = QString::fromUtf8(name.data(), qsizetype(name.size()));
        dock.area = int(in.number(Qt::AllDockWidgetAreas));
        dock.isShown = in.flag();
        const int width = readPixels(in, 0);
        dock.size = {width, readPixels(in, 0)};
        state.m_Docks.push_back(std::move(dock));
    }
    return state;
}

void WindowState::apply(AlignmentWindow &window) const
{
    QMainWindow &frame = *window.mainWindow();
    // How small the window can be follows it.
    if (m_Font)
        window.setChosenFont(*m_Font);
    applyPlace(frame);
    applyBars(frame);
    applyDocks(frame);
    settleLayout(&frame);
    settleLayout(frame.centralWidget());
    applyView(window);
}

void WindowState::applyPlace(QWidget &window) const
{
    window.setGeometry(placeInSight(m_Place, roomsOfScreens()));
    Qt::WindowStates states = Qt::WindowNoState;
    states.setFlag(Qt::WindowMaximized, m_IsMaximised);
    states.setFlag(Qt::WindowFullScreen, m_IsFullScreen);
    states.setFlag(Qt::WindowMinimized, m_IsMinimised);
    window.setWindowState(states);
}

// In the order in which the window made them: those of another configuration are not there.
void WindowState::applyBars(QMainWindow &window) const
{
    for (const Bar &bar : m_Bars) {
        auto *const there = window.findChild<QToolBar *>(bar.name, Qt::FindDirectChildrenOnly);
        const auto area = Qt::ToolBarArea(bar.area);
        if (there == nullptr || !isKept(*there) ||
            std::ranges::find(kBarAreas, area) == kBarAreas.end())
            continue;
        if (window.toolBarArea(there) != area)
            window.addToolBar(area, there);
        there->setVisible(bar.isShown);
    }
}

// Those of one that is not there wait for nobody, as with bars.
void WindowState::applyDocks(QMainWindow &window) const
{
    QList<QDockWidget *> shown;
    QList<int> widths;
    QList<int> heights;
    for (const Dock &dock : m_Docks) {
        auto *const there = window.findChild<QDockWidget *>(dock.name, Qt::FindDirectChildrenOnly);
        const auto area = Qt::DockWidgetArea(dock.area);
        if (there == nullptr || std::ranges::find(kDockAreas, area) == kDockAreas.end() ||
            !there->isAreaAllowed(area))
            continue;
        if (window.dockWidgetArea(there) != area)
            window.addDockWidget(area, there);
        there->setVisible(dock.isShown);
        if (!dock.isShown)
            continue;
        shown << there;
        widths << dock.size.width();
        heights << dock.size.height();
    }
    window.resizeDocks(shown, widths, Qt::Horizontal);
    window.resizeDocks(shown, heights, Qt::Vertical);
}

void WindowState::applyView(AlignmentWindow &window) const
{
    // Else it is what the window itself makes of the font.
    if (m_NameWidth && *m_NameWidth != window.nameWidth()) {
        window.setNameWidth(*m_NameWidth);
        settleLayout(window.mainWindow()->centralWidget());
    }
    if (m_Cell)
        window.setCellSize(*m_Cell);
    const QSize cell = window.cellSize();
    window.scrollTo({pixelsOf(m_First.x(), cell.width()), pixelsOf(m_First.y(), cell.height())});
}

} // namespace TAMBO::app
