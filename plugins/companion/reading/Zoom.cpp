// SPDX-License-Identifier: GPL-3.0-or-later
#include "Zoom.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "WorkbenchValues.h"
#include "ZoomSteps.h"

#include <QWheelEvent>
#include <QWidget>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <string>

namespace companion {

using TAMBO::WindowArea;

namespace {

constexpr char kPlugin[] = "companion";
// In pixels; without it cells have their own width.
constexpr char kWidth[] = "cell-width";
// Of the wheel, in eighths of a degree: what a notch turns.
constexpr int kNotch = 120;
// More cells than there are pixels.
constexpr unsigned long kMostCounted = 1'000'000;
constexpr auto kBeforeKeeping = std::chrono::milliseconds(500);

int keptWidth()
{
    const std::string text = WorkbenchValues::Get(kPlugin, kWidth).value_or("");
    int width = 0;
    std::from_chars(text.data(), text.data() + text.size(), width);
    return std::max(width, 0);
}

} // namespace

Zoom::Zoom(TAMBO::AlignmentWindow &window)
    : AlignmentViewObserver(window),
      CellEventFilter(window, WindowArea::Cells | WindowArea::Names | WindowArea::Header)
{
    m_Keeping.setSingleShot(true);
    m_Keeping.setInterval(kBeforeKeeping);
    m_Keeping.callOnTimeout([this] { keepSize(); });
    if (window.alignment() != nullptr)
        alignmentShown();
}

Zoom::~Zoom()
{
    if (m_Keeping.isActive() && window() != nullptr)
        keepSize();
}

TAMBO::AlignmentWindow *Zoom::window() const noexcept
{
    return AlignmentViewObserver::window();
}

void Zoom::alignmentShown()
{
    if (window()->alignment() == nullptr || m_HasBegun)
        return;
    m_HasBegun = true;
    const int width = keptWidth();
    if (width > 0 && width != window()->ownCellSize().width())
        window()->setCellSize(cellsOfWidth(width, window()->ownCellSize()));
}

QPoint Zoom::middle() const
{
    const QSize visible = window()->visibleSize();
    return {visible.width() / 2, visible.height() / 2};
}

void Zoom::setSize(const QSize &size, const QPoint &fixedPoint)
{
    if (size == window()->ownCellSize())
        window()->resetCellSize(fixedPoint);
    else
        window()->setCellSize(size, fixedPoint);
    m_Keeping.start();
}

void Zoom::keepSize() const
{
    const int width = window()->cellSize().width();
    WorkbenchValues::Set(kPlugin, kWidth,
                         width == window()->ownCellSize().width() ? "0" : std::to_string(width));
}

void Zoom::step(int steps, const QPoint &fixedPoint)
{
    const QSize own = window()->ownCellSize();
    QSize size = window()->cellSize();
    for (; steps > 0; --steps)
        size = zoomedIn(size, own, window()->maximumCellSize());
    for (; steps < 0; ++steps)
        size = zoomedOut(size, own);
    if (size != window()->cellSize())
        setSize(size, fixedPoint);
}

void Zoom::in()
{
    step(1, middle());
}

void Zoom::out()
{
    step(-1, middle());
}

void Zoom::reset()
{
    setSize(window()->ownCellSize(), middle());
}

void Zoom::showAllColumns()
{
    fit(false);
}

void Zoom::showAll()
{
    fit(true);
}

// The size is one for this alignment, and not for other windows. Rows that have room stay as high
// as their names need.
void Zoom::fit(bool hasAllRows)
{
    const auto columns = static_cast<int>(std::min(window()->columns(), kMostCounted));
    const auto rows = static_cast<int>(std::min(window()->rows(), kMostCounted));
    if (columns == 0 || rows == 0)
        return;
    const QSize own = window()->ownCellSize();
    const QSize visible = window()->visibleSize();
    QSize size(std::clamp(visible.width() / columns, 1, own.width()), own.height());
    if (hasAllRows)
        size.setHeight(std::clamp(visible.height() / rows, 1, own.height()));
    m_Keeping.stop();
    window()->setCellSize(size, {0, hasAllRows ? 0 : middle().y()});
}

bool Zoom::handle(TAMBO::AlignmentWindow &window, WindowArea area, QEvent &event)
{
    if (event.type() != QEvent::Wheel)
        return false;
    const auto &wheel = static_cast<const QWheelEvent &>(event);
    if (wheel.modifiers() != Qt::ControlModifier)
        return false;
    m_Turned += wheel.angleDelta().y();
    const int steps = m_Turned / kNotch;
    m_Turned -= steps * kNotch;
    // Of names and header the pointer is on the row, or column, that is to stay.
    const QPoint place =
        window.areaWidget(WindowArea::Cells)->mapFromGlobal(wheel.globalPosition().toPoint());
    const QSize visible = window.visibleSize();
    step(steps, {area == WindowArea::Names ? 0 : std::clamp(place.x(), 0, visible.width()),
                 area == WindowArea::Header ? 0 : std::clamp(place.y(), 0, visible.height())});
    return true;
}

} // namespace companion
