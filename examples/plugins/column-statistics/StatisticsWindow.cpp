// SPDX-License-Identifier: GPL-3.0-or-later
#include "StatisticsWindow.h"

#include <Alignment.h>
#include <AlignmentWindow.h>
#include <Config.h>
#include <HelpViewer.h>

#include <QAction>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

StatisticsWindow *s_Window = nullptr;

QIcon icon(const char *file)
{
    return QIcon(QString::fromStdString(Config::GetIconDir() + "/" + file));
}

} // namespace

StatisticsWindow::Editor::Editor(TAMBO::AlignmentWindow &window, StatisticsWindow &owner)
    : AlignmentViewObserver(window), m_Owner(owner)
{ }

void StatisticsWindow::Editor::alignmentShown()
{
    // Not an edit: the current row and its frame mean nothing to another alignment.
    m_Owner.m_Model.setColumns({}, 0);
    m_Owner.refresh();
}

void StatisticsWindow::Editor::layoutRebuilt()
{
    m_Owner.refresh();
}

void StatisticsWindow::open()
{
    if (!s_Window)
        s_Window = new StatisticsWindow;
    s_Window->show();
    s_Window->raise();
    s_Window->activateWindow();
}

StatisticsWindow *StatisticsWindow::opened()
{
    return s_Window;
}

StatisticsWindow::StatisticsWindow()
    : BaseWindow("Column Statistics", {520, 560}, "Column Statistics", false, nullptr,
                 "column-statistics")
{
    addToolBar();
    addTable();
    follow(TAMBO::AlignmentWindow::LastUsed());
}

void StatisticsWindow::addToolBar()
{
    QToolBar *bar = QMainWindow::addToolBar("Column Statistics");
    bar->setObjectName("ColumnStatisticsTools");
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_Mark = bar->addAction(icon("color-conserved.svg"), "Mark sparse columns");
    m_Mark->setToolTip("Draw a line in the editor above each column below the threshold");
    m_Mark->setCheckable(true);
    m_Mark->setChecked(true);
    connect(m_Mark, &QAction::toggled, this, [this] { showMarks(); });
    QAction *help = bar->addAction(icon("help.svg"), "Help");
    help->setShortcut(QKeySequence::HelpContents);
    connect(help, &QAction::triggered, this, [] { HelpViewer::Show("column-statistics.html"); });
}

void StatisticsWindow::addTable()
{
    m_Sorted.setSourceModel(&m_Model);
    m_Sorted.setSortRole(StatisticsModel::kSortRole);
    m_Table = new QTableView;
    m_Table->setModel(&m_Sorted);
    m_Table->setSortingEnabled(true);
    m_Table->sortByColumn(StatisticsModel::Column, Qt::AscendingOrder);
    m_Table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_Table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_Table->setAlternatingRowColors(true);
    m_Table->setShowGrid(false);
    m_Table->verticalHeader()->hide();
    m_Table->verticalHeader()->setDefaultSectionSize(m_Table->fontMetrics().height() + 6);
    m_Table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_Table->horizontalHeader()->setHighlightSections(false);
    // Of the selection, as the current row is set by the focus as well, which is no wish to see it.
    // A click into the selected row scrolls again.
    const auto show = [this] {
        const QModelIndexList rows = m_Table->selectionModel()->selectedRows();
        if (!rows.isEmpty())
            showColumn(static_cast<unsigned long>(m_Sorted.mapToSource(rows.front()).row()));
    };
    connect(m_Table, &QTableView::clicked, this, show);
    connect(m_Table->selectionModel(), &QItemSelectionModel::selectionChanged, this, show);

    auto *page = new QWidget(this);
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(m_Summary = new QLabel);
    layout->addWidget(m_Table);
    m_Summary->setWordWrap(true);
    setCentralWidget(page);
}

void StatisticsWindow::Kill(BaseWindow *)
{
    s_Window = nullptr;
    delete this;
}

void StatisticsWindow::windowOpened(TAMBO::AlignmentWindow &window)
{
    follow(&window);
}

void StatisticsWindow::windowActivated(TAMBO::AlignmentWindow &window)
{
    follow(&window);
}

void StatisticsWindow::windowGoing(TAMBO::AlignmentWindow &window)
{
    if (m_Editor && m_Editor->window() == &window)
        follow(TAMBO::AlignmentWindow::LastUsed());
}

void StatisticsWindow::follow(TAMBO::AlignmentWindow *window)
{
    if (window && m_Editor && m_Editor->window() == window)
        return;
    m_Frame.reset();
    m_Model.setColumns({}, 0);
    m_Editor = window ? std::make_unique<Editor>(*window, *this) : nullptr;
    refresh();
    showMarks();
}

void StatisticsWindow::refresh()
{
    const TAMBO::AlignmentWindow *window = m_Editor ? m_Editor->window() : nullptr;
    const TAMBO::Alignment *alignment = window ? window->alignment() : nullptr;
    const float threshold = occupancyThreshold();
    m_Model.setColumns(alignment ? statisticsOf(*alignment) : std::vector<ColumnStatistics>{},
                       threshold);
    if (m_Marks)
        m_Marks->refresh();
    // Columns came or went, and the table has begun anew.
    if (!m_Table->selectionModel()->hasSelection())
        m_Frame.reset();
    m_Summary->setText(alignment ? QString("%1: %2 rows, %3 columns, %4 of them below occupancy %5")
                                       .arg(QString::fromStdString(alignment->Name()))
                                       .arg(alignment->height())
                                       .arg(alignment->width())
                                       .arg(m_Model.sparseCount())
                                       .arg(double(threshold))
                       : window ? QString("The editor window used last is empty.")
                                : QString("No editor window is open."));
}

void StatisticsWindow::showMarks()
{
    TAMBO::AlignmentWindow *window = m_Editor ? m_Editor->window() : nullptr;
    m_Marks = window && m_Mark->isChecked() ? std::make_unique<OccupancyMarks>(*window, m_Model)
                                            : nullptr;
}

void StatisticsWindow::showColumn(unsigned long column)
{
    TAMBO::AlignmentWindow *window = m_Editor ? m_Editor->window() : nullptr;
    if (!window || column >= window->columns())
        return;
    // To the middle, and only sideways: showCell() would leave the rows that the user looks at.
    const QRect cell = window->cellRect({0, column});
    window->scrollBy({cell.center().x() - window->visibleSize().width() / 2, 0});
    m_Frame = std::make_unique<ColumnFrame>(*window, column);
}
