// SPDX-License-Identifier: GPL-3.0-or-later
#include "WrappedView.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "DataPoint.h"
#include "LetterFont.h"
#include "NameText.h"
#include "PlaceText.h"
#include "RowNumbers.h"
#include "Ruler.h"
#include "Space.h"
#include "TextColors.h"
#include "WorkbenchValues.h"
#include "ZoomSteps.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QMainWindow>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>

#include <limits>

namespace companion {

namespace {

constexpr char kWrappedOf[] = "companion";
constexpr char kNumbersOff[] = "wrapped-numbers-off";
constexpr int kWheelNotch = 120;
// Of an alignment that is shown: more names would be seen only after a while.
constexpr unsigned long kMeasuredNames = 1000;
// Between names, cells and numbers.
constexpr int kBesideCells = 6;
constexpr int kLeastDigits = 5;
constexpr QColor kDragShade(0, 0, 0, 70);

} // namespace

WrappedView::WrappedView(TAMBO::AlignmentWindow &window)
    : AlignmentViewObserver(window), m_Mark(window)
{
    m_HasNumbers = !WorkbenchValues::Get(kWrappedOf, kNumbersOff).has_value();
    setAccessibleName(tr("The alignment in blocks below each other"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { viewport()->update(); });
}

WrappedView::~WrappedView() = default;

TAMBO::Alignment *WrappedView::alignment() const
{
    const TAMBO::AlignmentWindow *const shown = AlignmentViewObserver::window();
    return shown == nullptr ? nullptr : shown->alignment();
}

// ---- In step with the window

void WrappedView::alignmentShown()
{
    m_Pressed.reset();
    m_Moved.reset();
    verticalScrollBar()->setValue(0);
    follow();
}

void WrappedView::layoutRebuilt()
{
    follow();
}

void WrappedView::cellSizeChanged()
{
    if (m_HasOwnCells)
        follow();
}

void WrappedView::commUpdate()
{
    viewport()->update();
}

void WrappedView::follow()
{
    if (isVisible())
        arrange();
}

void WrappedView::showEvent(QShowEvent *event)
{
    QAbstractScrollArea::showEvent(event);
    arrange();
}

void WrappedView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    follow();
}

// ---- Where things are

// The window tells its font while its cells have their own size, and else only of which kind it is.
QFont WrappedView::ownFont() const
{
    const TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    const QFont family = shown.nameFont().value_or(shown.mainWindow()->font());
    if (shown.cellSize() == shown.ownCellSize())
        return family;
    return lineFont(family, shown.ownCellSize().height()).value_or(family);
}

int WrappedView::nameWidthOf(const TAMBO::Alignment &alignment) const
{
    if (!m_NameFont)
        return kBesideCells;
    const QFontMetrics metrics(*m_NameFont);
    int widest = 0;
    for (unsigned long row = 0; row < std::min(alignment.height(), kMeasuredNames); ++row)
        widest = std::max(
            widest, metrics.horizontalAdvance(QString::fromStdString(alignment.GetSeqName(row))));
    return std::min(widest + 2 * kBesideCells, viewport()->width() / 3);
}

// The cell that is seen first stays so.
void WrappedView::arrange()
{
    const TAMBO::Alignment *const shown = alignment();
    if (shown == nullptr) {
        m_Layout = {};
        verticalScrollBar()->setRange(0, 0);
        viewport()->update();
        return;
    }
    const TAMBO::AlignmentWindow &window = *AlignmentViewObserver::window();
    const WrapLine first = m_Layout.at(firstLine());
    const QSize cell = m_HasOwnCells ? window.ownCellSize() : cellSize();
    m_RulerFont = ownFont();
    const bool isOwn = cell == window.ownCellSize();
    m_Tiles.setCells(cell, isOwn ? std::optional(m_RulerFont) : letterFont(m_RulerFont, cell),
                     viewport()->devicePixelRatioF());
    m_NameFont = isOwn ? std::optional(m_RulerFont) : lineFont(m_RulerFont, cell.height());
    if (m_NameFont && m_NameFont->pixelSize() > 0 &&
        QFontMetrics(*m_NameFont).height() > QFontMetrics(m_RulerFont).height())
        m_NameFont = m_RulerFont;
    m_NameWidth = nameWidthOf(*shown);
    const qsizetype digits =
        std::max<qsizetype>(kLeastDigits, QString::number(shown->width()).size());
    m_NumberWidth =
        m_HasNumbers && m_NameFont
            ? QFontMetrics(*m_NameFont).horizontalAdvance(QString(digits, u'0')) + kBesideCells
            : 0;
    const int room = viewport()->width() - m_NameWidth - m_NumberWidth - kBesideCells;
    const int rulerHeight = QFontMetrics(m_RulerFont).height();
    m_Layout = WrapLayout(shown->height(), shown->width(),
                          std::max(1UL, (unsigned long)(room / cell.width())),
                          (unsigned long)((rulerHeight + cell.height() - 1) / cell.height()));
    const auto seen = std::uint64_t(std::max(1, viewport()->height() / cell.height()));
    const std::uint64_t hidden = m_Layout.lines() > seen ? m_Layout.lines() - seen : 0;
    constexpr auto kMostLines = std::uint64_t(std::numeric_limits<int>::max());
    verticalScrollBar()->setRange(0, int(std::min(hidden, kMostLines)));
    verticalScrollBar()->setPageStep(int(seen));
    verticalScrollBar()->setSingleStep(1);
    if (first.kind == WrapLine::Kind::Row && first.row < shown->height() &&
        first.colBegin < shown->width())
        verticalScrollBar()->setValue(
            int(std::min(m_Layout.lineOf({first.row, first.colBegin}), kMostLines)));
    else if (first.kind == WrapLine::Kind::Ruler && first.colBegin < shown->width())
        verticalScrollBar()->setValue(
            int(std::min(m_Layout.firstLineOf(first.colBegin), kMostLines)));
    viewport()->update();
}

std::uint64_t WrappedView::firstLine() const
{
    return std::uint64_t(std::max(0, verticalScrollBar()->value()));
}

QRect WrappedView::cellRect(const TAMBO::CellIndex &cell) const
{
    if (cell.row >= m_Layout.rows() || cell.col >= m_Layout.columns())
        return {};
    const std::uint64_t line = m_Layout.lineOf(cell);
    if (line < firstLine())
        return {};
    const std::uint64_t below = line - firstLine();
    if (below * std::uint64_t(cellSize().height()) >= std::uint64_t(viewport()->height()))
        return {};
    const int inBlock = int(cell.col % m_Layout.columnsOfBlock());
    return {QPoint(m_NameWidth + inBlock * cellSize().width(), int(below) * cellSize().height()),
            cellSize()};
}

std::optional<TAMBO::CellIndex> WrappedView::cellAt(const QPoint &place) const
{
    if (place.x() < m_NameWidth)
        return std::nullopt;
    const std::optional<TAMBO::CellIndex> nearest = nearestCell(place);
    return nearest && cellRect(*nearest).contains(place) ? nearest : std::nullopt;
}

std::optional<TAMBO::CellIndex> WrappedView::nearestCell(const QPoint &place) const
{
    const int y = std::clamp(place.y(), 0, viewport()->height() - 1);
    const WrapLine line = m_Layout.at(firstLine() + std::uint64_t(y / cellSize().height()));
    if (line.kind != WrapLine::Kind::Row)
        return std::nullopt;
    const auto across = (unsigned long)(std::max(0, place.x() - m_NameWidth) / cellSize().width());
    return TAMBO::CellIndex{line.row, std::min(line.colBegin + across, line.colEnd - 1)};
}

// ---- How large cells are

void WrappedView::setCellSize(const QSize &size)
{
    const TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    const QSize wanted = size.expandedTo(kSmallestCell).boundedTo(shown.maximumCellSize());
    m_HasOwnCells = wanted == shown.ownCellSize();
    m_Tiles.setCells(wanted, std::nullopt, viewport()->devicePixelRatioF());
    follow();
}

void WrappedView::setNumbers(bool on)
{
    if (on == m_HasNumbers)
        return;
    m_HasNumbers = on;
    if (on)
        WorkbenchValues::Remove(kWrappedOf, kNumbersOff);
    else
        WorkbenchValues::Set(kWrappedOf, kNumbersOff, "1");
    follow();
}

void WrappedView::wheelEvent(QWheelEvent *event)
{
    if (event->modifiers() != Qt::ControlModifier)
        return QAbstractScrollArea::wheelEvent(event);
    const TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    m_Turned += event->angleDelta().y();
    QSize size = cellSize();
    for (; m_Turned >= kWheelNotch; m_Turned -= kWheelNotch)
        size = zoomedIn(size, shown.ownCellSize(), shown.maximumCellSize());
    for (; m_Turned <= -kWheelNotch; m_Turned += kWheelNotch)
        size = zoomedOut(size, shown.ownCellSize());
    if (size != cellSize())
        setCellSize(size);
    event->accept();
}

void WrappedView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Home)
        verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMinimum);
    else if (event->key() == Qt::Key_End)
        verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);
    else
        QAbstractScrollArea::keyPressEvent(event);
}

// ---- What is to be seen

void WrappedView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), Qt::white);
    const TAMBO::Alignment *const shown = alignment();
    // What the window has not rebuilt yet is painted once it has.
    if (shown == nullptr || shown->height() < m_Layout.rows() || m_Layout.blocks() == 0)
        return;
    const int height = cellSize().height();
    const int last = std::min(event->rect().bottom(), viewport()->height() - 1) / height;
    for (int line = event->rect().top() / height; line <= last; ++line)
        paintLine(painter, m_Layout.at(firstLine() + std::uint64_t(line)), line * height);
}

void WrappedView::paintLine(QPainter &painter, const WrapLine &line, int top)
{
    if (line.kind == WrapLine::Kind::Ruler)
        paintRuler(painter, line, top);
    else if (line.kind == WrapLine::Kind::Row)
        paintRow(painter, line, top);
}

// Each of the ruler's lines paints the whole of it, so that any part can be painted alone.
void WrappedView::paintRuler(QPainter &painter, const WrapLine &line, int top) const
{
    const QFontMetrics metrics(m_RulerFont);
    const int digit = metrics.horizontalAdvance(u'0');
    const int cell = cellSize().width();
    const unsigned long step =
        rulerStep(double(QString::number(m_Layout.columns()).size()) * digit, cell);
    painter.setFont(m_RulerFont);
    painter.setPen(kQuietText);
    const int up = top - int(line.rulerLine) * cellSize().height();
    for (const RulerMark &mark : rulerMarks(line.colBegin, line.colEnd, step, digit, cell)) {
        const int right = m_NameWidth + int(mark.col - line.colBegin + 1) * cell;
        painter.drawText(QRect(right - 20 * digit, up, 20 * digit, metrics.height()),
                         Qt::AlignRight | Qt::AlignTop, mark.text);
    }
}

void WrappedView::paintRow(QPainter &painter, const WrapLine &line, int top)
{
    const TAMBO::Alignment &shown = *alignment();
    const int height = cellSize().height();
    m_Cells.clear();
    shown.readRow(line.row, line.colBegin, line.colEnd, m_Cells);
    m_CellsRead += m_Cells.size();
    m_Tiles.paintRow(painter, {m_NameWidth, top}, m_Cells);
    paintDragged(painter, line, top);
    if (!m_NameFont)
        return;
    const QFontMetrics metrics(*m_NameFont);
    painter.setFont(*m_NameFont);
    painter.setPen(shown.isRowSelected(line.row) ? kSelectedText : QColor(Qt::black));
    const QString name = QString::fromStdString(shown.GetSeqName(line.row));
    painter.drawText(QRect(kBesideCells, top, m_NameWidth - 2 * kBesideCells, height),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                     cutInTheMiddle(name, m_NameWidth - 2 * kBesideCells, metrics));
    if (!m_HasNumbers)
        return;
    painter.setPen(kQuietText);
    const int end = m_NameWidth + int(line.colEnd - line.colBegin) * cellSize().width();
    painter.drawText(QRect(end, top, m_NumberWidth, height),
                     Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip,
                     lastNumber(shown, line.row, line.colBegin, line.colEnd));
}

// ---- Going to cells and selecting them

TAMBO::CellBlock WrappedView::dragged() const
{
    if (!m_Pressed || !m_Moved)
        return {};
    return TAMBO::CellBlock::of(*m_Pressed).united(TAMBO::CellBlock::of(*m_Moved));
}

void WrappedView::paintDragged(QPainter &painter, const WrapLine &line, int top) const
{
    const TAMBO::CellBlock common =
        dragged().intersected({line.row, line.row + 1, line.colBegin, line.colEnd});
    if (common.isEmpty())
        return;
    const int cell = cellSize().width();
    painter.fillRect(m_NameWidth + int(common.colBegin - line.colBegin) * cell, top,
                     int(common.colEnd - common.colBegin) * cell, cellSize().height(), kDragShade);
}

void WrappedView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_Pressed = cellAt(event->pos());
    m_Moved.reset();
}

void WrappedView::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_Pressed || !event->buttons().testFlag(Qt::LeftButton))
        return;
    // What lies beyond the edge comes into sight.
    if (event->pos().y() < 0)
        verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    else if (event->pos().y() >= viewport()->height())
        verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    const std::optional<TAMBO::CellIndex> nearest = nearestCell(event->pos());
    if (!nearest || (!m_Moved && *nearest == *m_Pressed))
        return;
    m_Moved = nearest;
    viewport()->update();
}

void WrappedView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_Pressed)
        return;
    const TAMBO::CellIndex pressed = *m_Pressed;
    const TAMBO::CellBlock cells = dragged();
    m_Pressed.reset();
    m_Moved.reset();
    viewport()->update();
    if (alignment() == nullptr)
        return;
    if (cells.isEmpty())
        goTo(pressed);
    else
        select(cells);
}

void WrappedView::goTo(const TAMBO::CellIndex &cell)
{
    AlignmentViewObserver::window()->showCell(cell, TAMBO::AlignmentWindow::Placement::Centred);
    m_Mark.show(TAMBO::CellBlock::of(cell));
}

void WrappedView::select(const TAMBO::CellBlock &cells)
{
    TAMBO::Alignment *const shown = alignment();
    DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
    if (!change.m_good)
        return;
    for (unsigned long row = cells.rowBegin; row < std::min(cells.rowEnd, shown->height()); ++row)
        shown->selectInRow(row, {cells.colBegin, cells.colEnd});
}

QString WrappedView::toolTipText(const QPoint &place) const
{
    const TAMBO::Alignment *const shown = alignment();
    if (shown == nullptr)
        return {};
    if (const std::optional<TAMBO::CellIndex> cell = cellAt(place))
        return placeText(*shown, *cell);
    const std::optional<TAMBO::CellIndex> nearest = nearestCell(place);
    return nearest && place.x() < m_NameWidth
               ? QString::fromStdString(shown->GetSeqName(nearest->row))
               : QString();
}

bool WrappedView::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto *const help = static_cast<QHelpEvent *>(event);
    const QString text = toolTipText(help->pos());
    if (text.isEmpty())
        QToolTip::hideText();
    else
        // A name may look like markup.
        QToolTip::showText(help->globalPos(), text.toHtmlEscaped(), viewport());
    return true;
}

} // namespace companion
