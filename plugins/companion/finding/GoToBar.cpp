// SPDX-License-Identifier: GPL-3.0-or-later
#include "GoToBar.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "ControlNames.h"
#include "Keyboard.h"
#include "LineLabel.h"
#include "Places.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>

namespace companion {

namespace {

constexpr int kGoToMargin = 6;
constexpr int kPlaceLetters = 24;

} // namespace

GoToBar::GoToBar(TAMBO::AlignmentWindow &window)
    : QToolBar(tr("Go To"), window.mainWindow()),
      m_Window(window),
      m_Mark(window),
      m_Place(new QLineEdit),
      m_Remark(makeLineLabel())
{
    setObjectName(QStringLiteral("GoTo"));
    setMovable(false);
    auto *const label = new QLabel(tr("&Go to:"));
    label->setBuddy(m_Place);
    label->setContentsMargins(kGoToMargin, 0, kGoToMargin, 0);
    m_Place->setPlaceholderText(tr("column, name, or A:57"));
    m_Place->setAccessibleName(tr("Column, name, or residue to go to"));
    m_Place->setClearButtonEnabled(true);
    m_Place->setMaximumWidth(kPlaceLetters * m_Place->fontMetrics().averageCharWidth());
    addWidget(label);
    addWidget(m_Place);
    addWidget(m_Remark);
    nameInnerControls(*this);
    connect(m_Place, &QLineEdit::returnPressed, this, &GoToBar::go);
    connect(m_Place, &QLineEdit::textEdited, m_Remark, &QLabel::clear);
    window.mainWindow()->addToolBar(Qt::BottomToolBarArea, this);
    hide();
}

GoToBar::~GoToBar() = default;

void GoToBar::ask()
{
    show();
    m_Place->selectAll();
    takeKeyboard(*m_Place);
}

void GoToBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        leave();
    else
        QToolBar::keyPressEvent(event);
}

void GoToBar::leave()
{
    m_Mark.hide();
    hide();
    m_Window.areaWidget(TAMBO::WindowArea::Cells)->parentWidget()->setFocus();
}

void GoToBar::go()
{
    const TAMBO::Alignment *const alignment = m_Window.alignment();
    if (alignment == nullptr) {
        m_Remark->setText(tr("No alignment is shown."));
        return;
    }
    const Place place = findPlace(*alignment, m_Place->text());
    if (const auto *const none = std::get_if<NoPlace>(&place)) {
        m_Mark.hide();
        m_Remark->setText(none->reason);
        return;
    }
    m_Remark->clear();
    show(place);
}

// What is to be seen of rows stays for a column, and of columns for a row.
void GoToBar::show(const Place &place)
{
    const QPoint before = m_Window.scrollPosition();
    TAMBO::CellIndex cell{0, 0};
    TAMBO::CellBlock marked{0, m_Window.rows(), 0, m_Window.columns()};
    if (const auto *const column = std::get_if<ColumnPlace>(&place)) {
        cell.col = marked.colBegin = column->col;
        marked.colEnd = column->col + 1;
    } else if (const auto *const row = std::get_if<RowPlace>(&place)) {
        cell.row = marked.rowBegin = row->row;
        marked.rowEnd = row->row + 1;
    } else {
        cell = std::get<TAMBO::CellIndex>(place);
        marked = TAMBO::CellBlock::of(cell);
    }
    m_Window.showCell(cell, TAMBO::AlignmentWindow::Placement::Centred);
    const QPoint now = m_Window.scrollPosition();
    if (std::holds_alternative<ColumnPlace>(place))
        m_Window.scrollTo({now.x(), before.y()});
    else if (std::holds_alternative<RowPlace>(place))
        m_Window.scrollTo({before.x(), now.y()});
    m_Mark.show(marked);
}

} // namespace companion
