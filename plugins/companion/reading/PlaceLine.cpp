// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlaceLine.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "LineLabel.h"
#include "PlaceText.h"

#include <QLabel>
#include <QMainWindow>
#include <QMouseEvent>
#include <QToolBar>

namespace companion {

using TAMBO::WindowArea;

PlaceLine::PlaceLine(TAMBO::AlignmentWindow &window)
    : AlignmentViewObserver(window),
      CellEventFilter(window, WindowArea::Cells),
      m_Text(makeLineLabel())
{
    QMainWindow *const owner = window.mainWindow();
    auto *const bar = new QToolBar(QObject::tr("Under the Pointer"), owner);
    bar->setObjectName(QStringLiteral("UnderThePointer"));
    bar->setMovable(false);
    // Its text is its name.
    m_Text->setAccessibleDescription(QObject::tr("Under the pointer or the cell cursor"));
    bar->addWidget(m_Text);
    owner->addToolBar(Qt::BottomToolBarArea, bar);
}

PlaceLine::~PlaceLine() = default;

void PlaceLine::alignmentShown()
{
    show();
}

void PlaceLine::layoutRebuilt()
{
    show();
}

void PlaceLine::scrolled()
{
    show();
}

void PlaceLine::setCursor(const std::optional<TAMBO::CellIndex> &cell)
{
    m_Cursor = cell;
    m_Place.reset();
    show();
}

bool PlaceLine::handle(TAMBO::AlignmentWindow &, WindowArea, QEvent &event)
{
    if (event.type() == QEvent::Leave)
        m_Place.reset();
    else if (event.type() == QEvent::MouseMove)
        m_Place = static_cast<const QMouseEvent &>(event).pos();
    else
        return false;
    show();
    return false;
}

void PlaceLine::show()
{
    const TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    const TAMBO::Alignment *const alignment = shown.alignment();
    const auto cell = m_Place ? shown.cellAt(*m_Place) : m_Cursor;
    m_Text->setText(cell && alignment != nullptr ? placeText(*alignment, *cell) : QString());
}

} // namespace companion
