// SPDX-License-Identifier: GPL-3.0-or-later
#include "TreeDock.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "FastTreeRun.h"
#include "Keyboard.h"
#include "LineLabel.h"
#include "RowChanges.h"
#include "TextColors.h"
#include "TreeFile.h"
#include "TreePainting.h"
#include "TreeView.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QProgressBar>
#include <QShowEvent>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace companion {

namespace {

// Of a frame, so that edits and scrolling are not felt.
constexpr auto kLookSlice = std::chrono::milliseconds(6);
constexpr int kFirstWidth = 230;
constexpr int kHundred = 100;

QToolButton *treeButton(const QString &text, const QString &toolTip)
{
    auto *const made = new QToolButton;
    made->setText(text);
    made->setToolTip(toolTip);
    made->setAccessibleName(toolTip);
    made->setAutoRaise(true);
    return made;
}

} // namespace

TreeDock::TreeDock(TAMBO::AlignmentWindow &window)
    : QDockWidget(tr("Tree"), window.mainWindow()), AlignmentViewObserver(window)
{
    setObjectName(QStringLiteral("Tree"));
    setAllowedAreas(Qt::LeftDockWidgetArea);
    makeWidgets();
    connect(&m_Slices, &QTimer::timeout, this, &TreeDock::lookOn);
    connect(this, &QDockWidget::topLevelChanged, this, [this](bool isAfloat) {
        m_View->setBesideRows(!isAfloat);
        showState();
    });
    window.mainWindow()->addDockWidget(Qt::LeftDockWidgetArea, this);
    hide();
    showState();
}

TreeDock::~TreeDock()
{
    m_Job.reset();
}

void TreeDock::makeWidgets()
{
    m_View = new TreeView(shownWindow(), m_Tree, m_Shown);
    m_View->setNames([this](std::size_t leaf) {
        const TAMBO::Alignment *const rows = alignment();
        return rows == nullptr ? QString()
                               : QString::fromStdString(rows->GetSeqName(m_Shown.rows()[leaf]));
    });
    connect(m_View, &TreeView::chosen, this, &TreeDock::choose);
    connect(m_View, &TreeView::menuWanted, this, [this](const QPoint &global) {
        auto *const menu = new QMenu(this);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        fillMenu(*menu);
        menu->popup(global);
    });
    m_State = makeLineLabel();
    m_Progress = new QProgressBar;
    m_Progress->setTextVisible(false);
    m_Progress->setMinimumWidth(1);
    m_Progress->setMaximumHeight(fontMetrics().height());
    m_Progress->setAccessibleName(tr("How much of the tree is made"));
    m_Compute = treeButton(tr("Compute"), tr("Make a tree of the rows"));
    m_Sort = treeButton(tr("Sort Rows"), tr("Put the rows into the order of the tree"));
    m_Cancel = treeButton(tr("Cancel"), tr("Give up making the tree"));
    m_More = treeButton(tr("Menu"), tr("What can be done with the tree"));
    m_More->setPopupMode(QToolButton::InstantPopup);
    auto *const menu = new QMenu(m_More);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        fillMenu(*menu);
    });
    m_More->setMenu(menu);
    connect(m_Compute, &QToolButton::clicked, this, [this] { compute(); });
    connect(m_Sort, &QToolButton::clicked, this, &TreeDock::sortRows);
    connect(m_Cancel, &QToolButton::clicked, this, &TreeDock::cancel);

    auto *const buttons = new QHBoxLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(0);
    for (QWidget *const widget :
         std::initializer_list<QWidget *>{m_Compute, m_Sort, m_Progress, m_Cancel})
        buttons->addWidget(widget);
    buttons->addStretch();
    buttons->addWidget(m_More);
    auto *const content = new QWidget;
    auto *const layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(buttons);
    layout->addWidget(m_State);
    layout->addWidget(m_View);
    setWidget(content);
}

TAMBO::AlignmentWindow &TreeDock::shownWindow() const
{
    return *AlignmentViewObserver::window();
}

TAMBO::Alignment *TreeDock::alignment() const
{
    return shownWindow().alignment();
}

void TreeDock::comeIntoSight()
{
    show();
    if (!m_HasWidth)
        shownWindow().mainWindow()->resizeDocks({this}, {kFirstWidth}, Qt::Horizontal);
    m_HasWidth = true;
}

void TreeDock::toggle()
{
    if (!isHidden())
        return hide();
    comeIntoSight();
    takeKeyboard(*m_View);
}

// However that happens: a session may bring the dock back.
void TreeDock::showEvent(QShowEvent *event)
{
    QDockWidget::showEvent(event);
    if (hasTree())
        look();
    else if (!event->spontaneous())
        computeIfQuick();
    showState();
}

void TreeDock::computeIfQuick()
{
    const unsigned long rows = alignment() == nullptr ? 0 : alignment()->height();
    if (!isComputing() && rows > 0 && rows <= TreeJob::kMostJoined)
        compute(TreeMethod::NeighborJoining);
}

// ---- Making a tree

void TreeDock::compute()
{
    const TAMBO::Alignment *const rows = alignment();
    if (rows == nullptr)
        return;
    const bool isJoined = rows->height() <= TreeJob::kMostJoined;
    if (!isJoined && FastTreeRun::program().isEmpty())
        return fail(tr("The alignment has %L1 rows; neighbor joining is for %L2 at most. Of more "
                       "rows the program fasttree makes a tree, and it is not installed. On Debian "
                       "it is in the package fasttree.")
                        .arg(rows->height())
                        .arg(TreeJob::kMostJoined));
    compute(isJoined ? TreeMethod::NeighborJoining : TreeMethod::FastTree);
}

void TreeDock::compute(TreeMethod method, const QString &file)
{
    if (alignment() == nullptr)
        return;
    const bool sorts = m_SortsWhenMade;
    endJob();
    m_SortsWhenMade = sorts;
    m_Job = std::make_unique<TreeJob>(shownWindow(), method, file);
    comeIntoSight();
    connect(m_Job.get(), &TreeJob::progressed, this, [this](int percent, const QString &what) {
        m_Progress->setRange(0, percent == 0 ? 0 : kHundred);
        m_Progress->setValue(percent);
        tell(what);
    });
    connect(m_Job.get(), &TreeJob::finished, this, &TreeDock::take);
    connect(m_Job.get(), &TreeJob::failed, this, &TreeDock::fail);
    m_Progress->setRange(0, 0);
    m_Job->start();
    showState();
}

// The job may be the one that calls.
void TreeDock::endJob()
{
    m_SortsWhenMade = false;
    if (m_Job == nullptr)
        return;
    m_Job->disconnect(this);
    m_Job.release()->deleteLater();
}

void TreeDock::cancel()
{
    // At once: who cancels wants the processor back.
    m_SortsWhenMade = false;
    m_Job.reset();
    showState();
}

void TreeDock::take(const MadeTree &made)
{
    const bool sorts = m_SortsWhenMade;
    endJob();
    m_Shown.clear();
    m_Made = MadeTree{{}, {}, made.method, made.file};
    m_Tree = made.tree;
    m_Leaves = LeafRows(made.leaves);
    m_ShownRevision = 0;
    look();
    if (sorts)
        sortRows();
}

void TreeDock::fail(const QString &cause)
{
    endJob();
    showState();
    if (cause.isEmpty())
        return;
    auto *const box = new QMessageBox(QMessageBox::Warning, tr("Tree"), cause, QMessageBox::Ok,
                                      shownWindow().mainWindow());
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void TreeDock::clear()
{
    m_Slices.stop();
    m_Job.reset();
    m_SortsWhenMade = false;
    m_Made.reset();
    m_Tree = {};
    m_Leaves = LeafRows();
    m_Shown.clear();
    m_View->treeChanged();
    showState();
}

// ---- The rows of now

void TreeDock::alignmentShown()
{
    clear();
    if (isVisible())
        computeIfQuick();
}

void TreeDock::layoutRebuilt()
{
    // It is looked at when the tree comes into sight.
    if (hasTree() && !isHidden() && alignment() != nullptr &&
        alignment()->layoutRevision() != m_Layout)
        look();
}

void TreeDock::look()
{
    if (alignment() == nullptr)
        return;
    m_Layout = alignment()->layoutRevision();
    m_Leaves.begin();
    // At once what there is time for: then small trees never flicker.
    lookOn();
}

void TreeDock::lookOn()
{
    if (alignment() == nullptr || !m_Leaves.goOn(*alignment(), kLookSlice))
        m_Slices.stop();
    else if (!m_Slices.isActive())
        m_Slices.start(0);
    showRows();
    showState();
}

void TreeDock::showRows()
{
    if (m_ShownRevision == m_Leaves.revision())
        return;
    m_ShownRevision = m_Leaves.revision();
    m_Shown.show(m_Tree, [this](std::size_t leaf) { return m_Leaves.rowOf(leaf); });
    m_View->setBesideRows(!isFloating());
}

void TreeDock::choose(std::size_t shown, bool adds)
{
    if (alignment() == nullptr)
        return;
    // An edit of which nobody has told yet.
    const std::size_t node = m_Shown.nodes()[shown].node;
    if (alignment()->layoutRevision() != m_Layout)
        look();
    m_Leaves.findRows(*alignment());
    showRows();
    shown = m_Shown.shownOf(node);
    if (shown == kNoNode)
        return;
    const ShownNode &each = m_Shown.nodes()[shown];
    std::vector<unsigned long> rows(m_Shown.rows().begin() + std::ptrdiff_t(each.firstLeaf),
                                    m_Shown.rows().begin() + std::ptrdiff_t(each.leafEnd));
    std::ranges::sort(rows);
    if (!selectRows(*alignment(), rows, adds))
        tell(tr("Nothing can be selected now."));
}

void TreeDock::sortRows()
{
    if (alignment() == nullptr)
        return;
    if (!hasTree()) {
        m_SortsWhenMade = true;
        if (!isComputing())
            compute();
        return;
    }
    if (alignment()->layoutRevision() != m_Layout)
        look();
    m_Leaves.findRows(*alignment());
    showRows();
    if (!companion::sortRows(*alignment(), m_Shown.rows()))
        tell(tr("The rows cannot be sorted now."));
}

// ---- Files

void TreeDock::openFile(const QString &file)
{
    compute(TreeMethod::File, file);
}

void TreeDock::askAndOpen()
{
    if (alignment() == nullptr)
        return;
    const QString file = QFileDialog::getOpenFileName(
        this, tr("Open Tree"), {},
        tr("Trees in Newick form (*.nwk *.newick *.tree *.tre *.treefile *.dnd);;All files (*)"));
    if (!file.isEmpty())
        openFile(file);
}

std::string TreeDock::nameOfLeaf(std::size_t leaf) const
{
    const unsigned long row = m_Leaves.rowOf(leaf);
    return row == kNoRow || alignment() == nullptr ? m_Leaves.leaf(leaf).name
                                                   : alignment()->GetSeqName(row);
}

bool TreeDock::saveTo(const QString &file)
{
    if (!hasTree())
        return false;
    Tree tree = m_Tree;
    const std::vector<std::size_t> leaves = leafOrder(tree);
    for (std::size_t i = 0; i < leaves.size(); ++i)
        tree.nodes[leaves[i]].name = nameOfLeaf(i);
    const QString cause = writeTreeFile(file, tree);
    if (!cause.isEmpty()) {
        fail(cause);
        return false;
    }
    tell(tr("Written: %1").arg(file));
    return true;
}

void TreeDock::askAndSave()
{
    if (!hasTree())
        return;
    const QString file = QFileDialog::getSaveFileName(
        this, tr("Save Tree"), QStringLiteral("tree.nwk"), tr("Trees in Newick form (*.nwk)"));
    if (!file.isEmpty())
        saveTo(file);
}

// ---- What is told

QString TreeDock::originText() const
{
    switch (m_Made->method) {
    case TreeMethod::NeighborJoining:
        return tr("Neighbor joining");
    case TreeMethod::FastTree:
        return tr("fasttree");
    case TreeMethod::File:
        break;
    }
    return m_Made->file;
}

QString TreeDock::stateText() const
{
    if (!hasTree())
        return tr("No tree");
    QStringList parts;
    switch (m_Leaves.state()) {
    case LeafRows::State::Changed:
        parts << tr("Of an earlier state of the alignment");
        if (m_Leaves.gone() > 0)
            parts << tr("%1 gone").arg(rowsText(m_Leaves.gone()));
        if (m_Leaves.added() > 0)
            parts << tr("%1 not in it").arg(rowsText(m_Leaves.added()));
        break;
    case LeafRows::State::Looking:
        parts << tr("Comparing the tree with the rows…");
        break;
    case LeafRows::State::Same:
        break;
    }
    parts << tr("%1, %2").arg(originText(), rowsText(m_Leaves.size()));
    if (!m_Shown.isInOrder() && !m_Shown.nodes().empty())
        parts << tr("the rows stand in another order");
    return parts.join(QStringLiteral(" · "));
}

void TreeDock::tell(const QString &text)
{
    m_State->setText(text);
    m_State->setToolTip(text.toHtmlEscaped());
}

void TreeDock::showState()
{
    const bool isOld = hasTree() && m_Leaves.state() == LeafRows::State::Changed;
    if (!isComputing())
        tell(stateText());
    QPalette colors = palette();
    if (isOld)
        colors.setColor(QPalette::WindowText, warningTextOn(colors.color(QPalette::Window)));
    m_State->setPalette(colors);
    m_Compute->setText(hasTree() ? tr("Compute Anew") : tr("Compute"));
    for (QWidget *const widget : std::initializer_list<QWidget *>{m_Compute, m_Sort})
        widget->setVisible(!isComputing());
    for (QWidget *const widget : std::initializer_list<QWidget *>{m_Progress, m_Cancel})
        widget->setVisible(isComputing());
    m_Compute->setEnabled(alignment() != nullptr);
    m_Sort->setEnabled(hasTree() && !m_Shown.nodes().empty());
    const unsigned long rows = alignment() == nullptr ? 0 : alignment()->height();
    m_View->setRemark(rows == 0       ? tr("There are no rows.")
                      : isComputing() ? QString()
                      : hasTree()     ? tr("No row is in this tree any more.")
                      : rows > TreeJob::kMostJoined
                          ? tr("Compute has the program fasttree make a tree of the %L1 rows, "
                               "which may take long.")
                                .arg(rows)
                          : tr("No tree has been made yet."));
}

void TreeDock::fillMenu(QMenu &menu)
{
    const auto add = [&menu, this](const QString &text, const QString &key, bool isOn, auto run) {
        QAction *const action = menu.addAction(key.isEmpty() ? text : text + u'\t' + key);
        action->setEnabled(isOn);
        connect(action, &QAction::triggered, this, run);
        return action;
    };
    const std::size_t present = m_View->present();
    const bool isNode = present < m_Shown.nodes().size();
    const bool isClade = isNode && !m_Shown.nodes()[present].isLeaf();
    const bool isCollapsed = isNode && m_Shown.nodes()[present].isCollapsed;
    add(tr("&Select Rows"), tr("Enter"), isNode, [this, present] { choose(present, false); });
    add(tr("&Add Rows to Selection"), tr("Ctrl+Enter"), isNode,
        [this, present] { choose(present, true); });
    add(isCollapsed ? tr("E&xpand") : tr("&Collapse"), tr("Space"), isClade,
        [this, present] { m_View->toggleCollapsed(present); });
    add(tr("&Expand All"), {}, m_Shown.hasCollapsed(), [this] {
        m_Shown.expandAll();
        m_View->treeChanged();
    });
    menu.addSeparator();
    QAction *const lengths = add(tr("Branch &Lengths"), {}, m_Shown.hasLengths(),
                                 [this](bool isOn) { m_View->setShowsLengths(isOn); });
    lengths->setCheckable(true);
    lengths->setChecked(m_View->showsLengths());
    add(tr("S&ort Rows by Tree"), {}, alignment() != nullptr, [this] { sortRows(); });
    menu.addSeparator();
    const unsigned long rows = alignment() == nullptr ? 0 : alignment()->height();
    add(tr("Compute by &Neighbor Joining"), {}, rows > 0 && rows <= TreeJob::kMostJoined,
        [this] { compute(TreeMethod::NeighborJoining); });
    add(tr("Compute by &fasttree"), {}, rows > 0, [this] { compute(TreeMethod::FastTree); });
    add(tr("Open Ne&wick…"), {}, rows > 0, [this] { askAndOpen(); });
    add(tr("Sa&ve Newick…"), {}, hasTree(), [this] { askAndSave(); });
}

} // namespace companion
