// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogPanel.h"

#include "LogEntryDialog.h"
#include "LogFilter.h"
#include "LogModel.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDateTime>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace TAMBO::app {

LogPanel::LogPanel(LogModel &model, QWidget *parent) : QWidget(parent)
{
    m_Filter = new LogFilter(this);
    m_Filter->setSourceModel(&model);

    m_Severity = new QComboBox;
    m_Severity->setObjectName(QStringLiteral("LogSeverity"));
    m_Severity->addItems({tr("All messages"), tr("Warnings and errors"), tr("Errors")});
    connect(m_Severity, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_Filter->setLowestSeverity(Logger::Severity(index)); });

    m_Text = new QLineEdit;
    m_Text->setObjectName(QStringLiteral("LogText"));
    m_Text->setPlaceholderText(tr("Filter"));
    connect(m_Text, &QLineEdit::textChanged, m_Filter, &LogFilter::setText);
    // The button is not seen before, and its icon has to be searched for.
    connect(m_Text, &QLineEdit::textChanged, this, [this] { m_Text->setClearButtonEnabled(true); });

    auto *clear = new QToolButton;
    clear->setText(tr("Clear"));
    clear->setToolTip(tr("Empty the list; the log file keeps everything"));
    connect(clear, &QToolButton::clicked, this, [&model] { model.clear(); });

    m_List = new QListView;
    m_List->setObjectName(QStringLiteral("LogList"));
    m_List->setModel(m_Filter);
    m_List->setUniformItemSizes(true);
    m_List->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_List->setTextElideMode(Qt::ElideRight);
    m_List->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int icon = m_List->fontMetrics().height();
    m_List->setIconSize(QSize(icon, icon));

    auto *open = new QAction(tr("Open"), m_List);
    connect(open, &QAction::triggered, this, [this] { openEntry(m_List->currentIndex()); });
    m_List->addAction(open);
    connect(m_List, &QListView::activated, this, &LogPanel::openEntry);

    auto *copy = new QAction(tr("Copy"), m_List);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &LogPanel::copySelected);
    m_List->addAction(copy);
    m_List->setContextMenuPolicy(Qt::ActionsContextMenu);

    // A reader who has scrolled up is left where he is.
    QScrollBar *bar = m_List->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
            [this, bar](int value) { m_FollowsEnd = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (m_FollowsEnd)
            bar->setValue(maximum);
    });

    auto *controls = new QHBoxLayout;
    controls->addWidget(m_Severity);
    controls->addWidget(m_Text, 1);
    controls->addWidget(clear);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addLayout(controls);
    layout->addWidget(m_List);
}

LogPanel::~LogPanel() = default;

void LogPanel::openEntry(const QModelIndex &entry)
{
    if (!entry.isValid())
        return;
    const QDateTime time = entry.data(LogModel::TimeRole).toDateTime();
    auto *dialog = new LogEntryDialog(tr("Log, %1").arg(time.toString(QStringLiteral("HH:mm:ss"))),
                                      entry.data(LogModel::TextRole).toString(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // Beside the others, for comparing.
    dialog->show();
}

void LogPanel::copySelected() const
{
    QModelIndexList rows = m_List->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex &row : rows)
        lines << row.data(LogModel::TimeRole).toDateTime().toString(QStringLiteral("HH:mm:ss  ")) +
                     row.data(LogModel::TextRole).toString();
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

} // namespace TAMBO::app

#include "moc_LogPanel.cpp"
