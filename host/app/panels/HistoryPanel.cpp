// SPDX-License-Identifier: GPL-3.0-or-later
#include "HistoryPanel.h"

#include "HistoryModel.h"
#include "UndoCommands.h"

#include <QLabel>
#include <QListView>
#include <QLocale>
#include <QVBoxLayout>

namespace TAMBO::app {

HistoryPanel::HistoryPanel(UndoCommands &undo, QWidget *parent) : QWidget(parent), m_Undo(undo)
{
    m_Model = new HistoryModel(undo.history(), this);
    m_List = new QListView;
    m_List->setObjectName(QStringLiteral("HistoryList"));
    m_List->setModel(m_Model);
    m_List->setUniformItemSizes(true);
    m_List->setEditTriggers(QAbstractItemView::NoEditTriggers);
    const auto jump = [this](const QModelIndex &index) {
        m_Undo.history().goTo(m_Model->positionOf(index.row()));
    };
    connect(m_List, &QListView::clicked, this, jump);
    connect(m_List, &QListView::activated, this, jump);

    m_Memory = new QLabel;
    m_Memory->setObjectName(QStringLiteral("HistoryMemory"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_List);
    layout->addWidget(m_Memory);
    connect(&undo, &UndoCommands::changed, this, &HistoryPanel::refresh);
}

HistoryPanel::~HistoryPanel() = default;

void HistoryPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
}

void HistoryPanel::refresh()
{
    if (!isVisible())
        return;
    m_Model->refresh();
    const QModelIndex present = m_Model->index(m_Model->presentRow(), 0);
    m_List->setCurrentIndex(present);
    m_List->scrollTo(present);
    const History &history = m_Undo.history();
    const QLocale locale;
    m_Memory->setText((history.size() == 1 ? tr("%1 step, %2 of %3") : tr("%1 steps, %2 of %3"))
                          .arg(locale.toString(qulonglong(history.size())),
                               locale.formattedDataSize(qint64(history.bytes())),
                               locale.formattedDataSize(qint64(history.limit()))));
}

} // namespace TAMBO::app

#include "moc_HistoryPanel.cpp"
