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
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QScrollBar>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace TAMBO::app {

namespace {

QString logTimeOf(const QModelIndex &entry)
{
    return entry.data(LogModel::TimeRole).toDateTime().toString(QStringLiteral("HH:mm:ss"));
}

// The lines that stand for the entry: itself, or those of a fold that are let through.
QModelIndexList logLinesOf(const QModelIndex &entry)
{
    const int count = entry.model()->rowCount(entry);
    if (count == 0)
        return {entry};
    QModelIndexList lines;
    for (int line = 0; line < count; ++line)
        lines << entry.model()->index(line, 0, entry);
    return lines;
}

} // namespace

LogPanel::LogPanel(LogModel &model, QWidget *parent) : QWidget(parent)
{
    m_Filter = new LogFilter(this);
    m_Filter->setSourceModel(&model);

    m_Severity = new QComboBox;
    m_Severity->setObjectName(QStringLiteral("LogSeverity"));
    m_Severity->addItems({tr("All messages"), tr("Warnings and errors"), tr("Errors"),
                          tr("All, and checks for developers")});
    connect(m_Severity, &QComboBox::currentIndexChanged, this, &LogPanel::filterBySeverity);

    m_Text = new QLineEdit;
    m_Text->setObjectName(QStringLiteral("LogText"));
    m_Text->setPlaceholderText(tr("Filter"));
    connect(m_Text, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_Filter->setText(text);
        followFilter();
    });
    // The button is not seen before, and its icon has to be searched for.
    connect(m_Text, &QLineEdit::textChanged, this, [this] { m_Text->setClearButtonEnabled(true); });

    auto *clear = new QToolButton;
    clear->setText(tr("Clear"));
    clear->setToolTip(tr("Empty the list; the log file keeps everything"));
    connect(clear, &QToolButton::clicked, this, [&model] { model.clear(); });

    m_List = new QTreeView;
    m_List->setObjectName(QStringLiteral("LogList"));
    m_List->setModel(m_Filter);
    m_List->setHeaderHidden(true);
    m_List->setUniformRowHeights(true);
    // A double click opens what has no lines below it, and unfolds what has.
    m_List->setExpandsOnDoubleClick(false);
    m_List->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_List->setTextElideMode(Qt::ElideRight);
    m_List->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int icon = m_List->fontMetrics().height();
    m_List->setIconSize(QSize(icon, icon));
    m_List->setIndentation(icon);

    auto *open = new QAction(tr("Open"), m_List);
    connect(open, &QAction::triggered, this, [this] { openEntry(m_List->currentIndex()); });
    m_List->addAction(open);
    connect(m_List, &QTreeView::activated, this, [this](const QModelIndex &entry) {
        if (m_Filter->hasChildren(entry))
            m_List->setExpanded(entry, !m_List->isExpanded(entry));
        else
            openEntry(entry);
    });

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
        else
            m_FollowsEnd = bar->value() == maximum;
    });
    // Who unfolds lines begins to read with the first one.
    connect(m_List, &QTreeView::expanded, this, [this] { m_FollowsEnd = false; });

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

void LogPanel::filterBySeverity(int choice)
{
    const int checks = m_Severity->count() - 1;
    m_Filter->setLowestSeverity(
        choice == checks ? Logger::Severity::Info : Logger::Severity(choice), choice == checks);
    followFilter();
}

void LogPanel::followFilter()
{
    if (m_Filter->isNarrow())
        m_List->expandAll();
    else
        m_List->collapseAll();
}

void LogPanel::openEntry(const QModelIndex &entry)
{
    if (!entry.isValid())
        return;
    QStringList lines;
    for (const QModelIndex &line : logLinesOf(entry))
        lines << line.data(LogModel::TextRole).toString();
    auto *dialog = new LogEntryDialog(tr("Log, %1").arg(logTimeOf(entry)), lines.join(u'\n'), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // Beside the others, for comparing.
    dialog->show();
}

void LogPanel::copySelected() const
{
    QItemSelectionModel &selection = *m_List->selectionModel();
    QStringList lines;
    for (int row = 0; row < m_Filter->rowCount(); ++row) {
        const QModelIndex entry = m_Filter->index(row, 0);
        const bool isChosen = selection.isSelected(entry);
        for (const QModelIndex &line : logLinesOf(entry))
            if (isChosen || selection.isSelected(line))
                lines << logTimeOf(line) + QStringLiteral("  ") +
                             line.data(LogModel::TextRole).toString();
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

} // namespace TAMBO::app

#include "moc_LogPanel.cpp"
