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
    m_Message.clear();
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
    m_Message.clear();
    show();
}

void PlaceLine::tell(const QString &message)
{
    m_Message = message;
    m_CellOfMessage = cell();
    show();
}

QString PlaceLine::text() const
{
    return m_Text->text();
}

std::optional<TAMBO::CellIndex> PlaceLine::cell() const
{
    return m_Place ? AlignmentViewObserver::window()->cellAt(*m_Place) : m_Cursor;
}

bool PlaceLine::handle(TAMBO::AlignmentWindow &, WindowArea, QEvent &event)
{
    if (event.type() == QEvent::Leave)
        m_Place.reset();
    else if (event.type() == QEvent::MouseMove)
        m_Place = static_cast<const QMouseEvent &>(event).pos();
    else
        return false;
    if (cell() && cell() != m_CellOfMessage)
        m_Message.clear();
    show();
    return false;
}

void PlaceLine::show()
{
    if (!m_Message.isEmpty()) {
        m_Text->setText(m_Message);
        return;
    }
    const TAMBO::Alignment *const alignment = AlignmentViewObserver::window()->alignment();
    const std::optional<TAMBO::CellIndex> place = cell();
    m_Text->setText(place && alignment != nullptr ? placeText(*alignment, *place) : QString());
}

} // namespace companion
