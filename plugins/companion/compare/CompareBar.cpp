// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompareBar.h"

#include "CompareTexts.h"
#include "ControlNames.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "LayoutChanges.h"
#include "LineLabel.h"
#include "SlicedWork.h"
#include "Space.h"
#include "StepName.h"
#include "Texts.h"
#include "WorkbenchCommands.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <utility>

namespace companion {

namespace {

constexpr auto kBeforeRestart = std::chrono::milliseconds(150);
constexpr int kLineGap = 2;
constexpr int kButtonGap = 6;

QString alignmentName(const TAMBO::Alignment &alignment)
{
    return QString::fromStdString(alignment.Name());
}

} // namespace

CompareBar::CompareBar(TAMBO::AlignmentWindow &window, std::function<void(const QString &)> tell,
                       std::function<std::optional<TAMBO::CellBlock>()> block)
    : QToolBar(companion::tr("Compare"), window.mainWindow()),
      AlignmentViewObserver(window),
      m_Tell(std::move(tell)),
      m_Block(std::move(block)),
      m_Marks(window, CompareMarks::Side::Here)
{
    setObjectName(QStringLiteral("Compared"));
    setMovable(false);
    makeWidgets();
    m_Restart.setSingleShot(true);
    m_Restart.setInterval(kBeforeRestart);
    connect(&m_Restart, &QTimer::timeout, this, &CompareBar::start);
    connect(&m_FileLooks, &QTimer::timeout, this, &CompareBar::lookForFile);
    window.mainWindow()->addToolBarBreak(Qt::BottomToolBarArea);
    window.mainWindow()->addToolBar(Qt::BottomToolBarArea, this);
    hide();
}

CompareBar::~CompareBar()
{
    m_Job.reset();
    m_OtherMarks.clear();
}

void CompareBar::makeWidgets()
{
    using companion::tr;
    const auto button = [](const QString &text, const QString &toolTip) {
        auto *const made = new QToolButton;
        made->setText(text);
        made->setToolTip(toolTip);
        made->setAccessibleName(toolTip);
        return made;
    };
    m_What = makeLineLabel();
    m_What->setObjectName(QStringLiteral("What"));
    m_State = makeLineLabel();
    m_State->setObjectName(QStringLiteral("State"));
    m_Only = makeLineLabel();
    m_Only->setObjectName(QStringLiteral("Only"));
    QToolButton *const back = button(QStringLiteral("◀"), tr("Previous difference (Shift+F4)"));
    QToolButton *const forth = button(QStringLiteral("▶"), tr("Next difference (F4)"));
    QToolButton *const take =
        button(tr("Take Over"), tr("Lay these columns out as in the other alignment"));
    QToolButton *const all =
        button(tr("Take Over All"), tr("Lay all columns out as in the other alignment"));
    QToolButton *const other =
        button(tr("Show the Other"), tr("Show the other alignment in a window"));
    QToolButton *const close = button(tr("End"), tr("Compare no more (Esc)"));
    m_Needs = {back, forth, take, all};
    auto *const lines = new QWidget;
    auto *const layout = new QVBoxLayout(lines);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kLineGap);
    auto *const upper = new QHBoxLayout;
    upper->setSpacing(kButtonGap);
    for (QToolButton *const each : {back, forth, take, all, other, close})
        upper->addWidget(each);
    upper->addWidget(m_What, 1);
    layout->addLayout(upper);
    layout->addWidget(m_State);
    layout->addWidget(m_Only);
    // Else the window would become as wide as the longest text.
    lines->setMinimumWidth(1);
    lines->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    addWidget(lines);
    nameInnerControls(*this);
    connect(back, &QToolButton::clicked, this, &CompareBar::previous);
    connect(forth, &QToolButton::clicked, this, &CompareBar::next);
    connect(take, &QToolButton::clicked, this, [this] { takeOver(); });
    connect(all, &QToolButton::clicked, this, &CompareBar::takeOverAll);
    connect(other, &QToolButton::clicked, this, &CompareBar::showOther);
    connect(close, &QToolButton::clicked, this, &CompareBar::end);
}

// ---- What is compared with

CompareDialog *CompareBar::ask()
{
    if (shown() == nullptr)
        return nullptr;
    expectNoFile();
    TAMBO::Alignment *const here = shown();
    // The window may show another alignment before one has chosen.
    const auto chosen = [this, here](const CompareChoice &choice) {
        if (shown() == here)
            compareWith(choice);
        else
            m_Tell(companion::tr("The window does not show %1 any more. Nothing was compared.")
                       .arg(alignmentName(*here)));
    };
    auto *const dialog =
        new CompareDialog(*here, AlignmentViewObserver::window()->mainWindow(), chosen);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
    return dialog;
}

void CompareBar::compareWith(const CompareChoice &choice)
{
    switch (choice.kind) {
    case CompareChoice::Kind::Alignment:
        if (isInWorkbench(choice.alignment))
            compareWith(*choice.alignment);
        return;
    case CompareChoice::Kind::Former:
        return compareWithFormer(choice.steps);
    case CompareChoice::Kind::Aligner:
        return compareWithAligner();
    case CompareChoice::Kind::File:
        return compareWithFile();
    }
}

void CompareBar::compareWith(TAMBO::Alignment &other)
{
    if (shown() == nullptr || shown() == &other)
        return;
    forget();
    m_Other = &other;
    begin(alignmentName(other));
}

void CompareBar::compareWithFormer(std::size_t steps)
{
    if (shown() == nullptr)
        return;
    expectNoFile();
    auto former = TAMBO::RowLayouts::before(*shown(), steps);
    if (!former) {
        m_Tell(companion::tr("The state before the last %1 steps is not known.").arg(steps));
        return;
    }
    forget();
    m_Former = std::make_shared<TAMBO::FormerLayout>(std::move(*former));
    begin(steps == 1 ? companion::tr("what it was before the last step")
                     : companion::tr("what it was before the last %1 steps").arg(steps));
}

void CompareBar::compareWithAligner()
{
    TAMBO::Alignment *const here = shown();
    if (here == nullptr)
        return;
    expectNoFile();
    const QPointer<CompareBar> self(this);
    TAMBO::Alignment *copy = nullptr;
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        if (!change.m_good)
            return;
        const StepName name("Align a copy of " + here->Name());
        const std::vector<bool> rows(here->height(), true);
        const std::vector<bool> columns(here->width(), true);
        copy = here->duplicate(rows, columns, here->Name() + " (aligned)");
        if (copy == nullptr)
            return;
        copy->rangeAll();
        const unsigned long revision = copy->layoutRevision();
        const auto outcome = TAMBO::WorkbenchCommands::realign(kCompareCaller, *copy);
        const bool isSame = isInWorkbench(copy) && copy->layoutRevision() == revision;
        if (outcome != PluginManager::Outcome::Done && isSame) {
            TAMBO::DataMaker::Destroy(copy);
            copy = nullptr;
        }
    }
    // The window may have been closed while the program ran.
    if (self == nullptr)
        return;
    if (copy != nullptr && isInWorkbench(copy) && shown() != nullptr)
        compareWith(*copy);
    else
        m_Tell(companion::tr("The aligner has made nothing to compare with."));
}

void CompareBar::compareWithFile()
{
    if (shown() == nullptr)
        return;
    expectNoFile();
    std::vector<TAMBO::Alignment *> before = allAlignments();
    const QPointer<CompareBar> self(this);
    bool isChosen = false;
    TAMBO::WorkbenchCommands::openFile(kCompareCaller, &isChosen);
    if (self == nullptr || !isChosen)
        return;
    m_BeforeFile = std::move(before);
    m_HasArrived = false;
    // It may be there already.
    beginLooks();
}

void CompareBar::expectNoFile()
{
    m_BeforeFile.reset();
    m_HasArrived = false;
    m_FileCandidates.reset();
    m_FileLooks.stop();
}

void CompareBar::beginLooks()
{
    if (!m_BeforeFile || shown() == nullptr)
        return;
    m_FileCandidates.emplace(*shown());
    m_FileLooks.start(0);
}

// Files are read beside the user's work.
void CompareBar::lookForFile()
{
    if (!m_FileCandidates || shown() == nullptr) {
        m_FileLooks.stop();
        return;
    }
    const bool isDone = !m_FileCandidates->goOn(kSlice);
    for (TAMBO::Alignment *const found : m_FileCandidates->found()) {
        if (std::ranges::find(*m_BeforeFile, found) != m_BeforeFile->end())
            continue;
        compareWith(*found);
        return;
    }
    if (!isDone)
        return;
    m_FileLooks.stop();
    m_FileCandidates.reset();
    const std::vector<TAMBO::Alignment *> now = allAlignments();
    const auto isNew = [this](TAMBO::Alignment *each) {
        return std::ranges::find(*m_BeforeFile, each) == m_BeforeFile->end();
    };
    const auto arrived = std::ranges::find_if(now, isNew);
    // The file is still being read.
    if (arrived == now.end() && !m_HasArrived)
        return;
    m_Tell(arrived == now.end()
               ? companion::tr("No alignment has come that could be compared.")
               : companion::tr("%1 has fewer than two sequences of this alignment.")
                     .arg(alignmentName(**arrived)));
    expectNoFile();
}

void CompareBar::begin(const QString &title)
{
    m_Title = title;
    show();
    start();
}

void CompareBar::forget()
{
    expectNoFile();
    m_Restart.stop();
    m_Job.reset();
    m_Compared.reset();
    m_Present.reset();
    m_Marks.setCompared(nullptr, nullptr);
    m_OtherMarks.clear();
    m_Other = nullptr;
    m_Former.reset();
    m_Trouble.clear();
}

void CompareBar::stop()
{
    forget();
    m_From.reset();
    hide();
}

void CompareBar::end()
{
    const bool wasShown = !isHidden();
    stop();
    if (wasShown)
        AlignmentViewObserver::window()
            ->areaWidget(TAMBO::WindowArea::Cells)
            ->parentWidget()
            ->setFocus();
}

void CompareBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        end();
    else
        QToolBar::keyPressEvent(event);
}

// ---- Comparing

void CompareBar::start()
{
    m_Restart.stop();
    m_Job.reset();
    TAMBO::Alignment *const here = shown();
    if (!isActive() || here == nullptr)
        return;
    const OtherRows there = m_Other != nullptr ? OtherRows(m_Other) : OtherRows(m_Former.get());
    m_Job = std::make_unique<CompareJob>(*here, there);
    connect(m_Job.get(), &CompareJob::progressed, this, &CompareBar::showState);
    connect(m_Job.get(), &CompareJob::finished, this, &CompareBar::take);
    connect(m_Job.get(), &CompareJob::failed, this, [this](const QString &cause) {
        m_Trouble = cause;
        m_Compared.reset();
        m_Marks.setCompared(nullptr, nullptr);
        m_OtherMarks.clear();
        m_Job.release()->deleteLater();
        showState();
    });
    m_Job->start();
    showState();
}

void CompareBar::take(const std::shared_ptr<const Compared> &compared)
{
    m_Trouble.clear();
    m_Compared = compared;
    m_Job.release()->deleteLater();
    // Where the user was is still a difference, or it is not.
    m_Present.reset();
    m_Marks.setCompared(compared, shown());
    markOthers();
    showState();
}

void CompareBar::markOthers()
{
    m_OtherMarks.clear();
    if (m_Other == nullptr || m_Compared == nullptr)
        return;
    for (TAMBO::AlignmentWindow *const window : TAMBO::AlignmentWindow::All()) {
        if (window->alignment() != m_Other)
            continue;
        auto &marks = m_OtherMarks[window];
        marks = std::make_unique<CompareMarks>(*window, CompareMarks::Side::There);
        marks->setCompared(m_Compared, m_Other);
        marks->setPresent(m_Present);
    }
}

bool CompareBar::isFresh() const
{
    return m_Compared != nullptr && shown() != nullptr &&
           TAMBO::LayoutChanges::revision(*shown()) == m_Compared->revisionHere &&
           (m_Other == nullptr ||
            TAMBO::LayoutChanges::revision(*m_Other) == m_Compared->revisionThere);
}

// A little later, since edits come one after the other. A comparison that runs begins anew by
// itself.
void CompareBar::followEdits()
{
    if (!isActive() || m_Job != nullptr || isFresh())
        return;
    m_Restart.start();
    showState();
}

void CompareBar::alignmentShown()
{
    stop();
}

void CompareBar::layoutRebuilt()
{
    followEdits();
}

// Undo may take the other one away as well.
void CompareBar::commUpdate()
{
    if (m_Other != nullptr && !isInWorkbench(m_Other)) {
        m_Tell(companion::tr("%1 is not there any more.").arg(m_Title));
        stop();
    }
    followEdits();
}

void CompareBar::commAdd()
{
    m_HasArrived = true;
    beginLooks();
    // A window may show it only now.
    if (m_Other != nullptr && m_Compared != nullptr)
        markOthers();
}

void CompareBar::commDelete()
{
    if (m_FileCandidates)
        beginLooks();
    commUpdate();
}

// It is empty at first.
void CompareBar::windowOpened(TAMBO::AlignmentWindow &)
{
    QMetaObject::invokeMethod(this, &CompareBar::markOthers, Qt::QueuedConnection);
}

void CompareBar::windowGoing(TAMBO::AlignmentWindow &window)
{
    m_OtherMarks.erase(&window);
}

// ---- Going from one to the next

void CompareBar::go(int step)
{
    if (!isActive()) {
        m_Tell(companion::tr("Nothing is compared: choose Compare With first."));
        return;
    }
    if (!isFresh()) {
        m_Tell(companion::tr("The alignments are still being compared."));
        return;
    }
    const std::vector<Stretch> &all = m_Compared->comparison.stretches;
    if (all.empty()) {
        m_Tell(companion::tr("There is no difference in what both have."));
        return;
    }
    if (m_Present) {
        goTo((*m_Present + all.size() + std::size_t(step + int(all.size()))) % all.size());
        return;
    }
    // From where the user was before an edit, else from what is to be seen first.
    const unsigned long column =
        m_From.value_or(AlignmentViewObserver::window()->visibleCells().colBegin);
    const auto behind =
        std::ranges::partition_point(all, [&](const Stretch &one) { return one.end <= column; });
    const auto place = std::size_t(behind - all.begin());
    goTo(step > 0 ? place % all.size() : (place + all.size() - 1) % all.size());
}

void CompareBar::goTo(std::size_t stretch)
{
    m_Present = stretch;
    m_Marks.setPresent(stretch);
    const Stretch &at = m_Compared->comparison.stretches[stretch];
    m_From = at.begin;
    const auto show = [](TAMBO::AlignmentWindow &window, unsigned long begin, unsigned long end) {
        const unsigned long row = window.visibleCells().rowBegin;
        window.showCell({row, end - 1});
        window.showCell({row, begin});
    };
    show(*AlignmentViewObserver::window(), at.begin, at.end);
    for (const auto &[window, marks] : m_OtherMarks) {
        marks->setPresent(stretch);
        // It may show a third one by now.
        if (window->alignment() == m_Other)
            show(*window, at.otherBegin, at.otherEnd);
    }
    showState();
}

std::optional<std::size_t> CompareBar::stretchAtHand() const
{
    if (m_Present)
        return m_Present;
    const std::optional<TAMBO::CellBlock> block = m_Block();
    if (!block)
        return std::nullopt;
    const std::vector<Stretch> &all = m_Compared->comparison.stretches;
    const auto found = std::ranges::find_if(all, [&](const Stretch &one) {
        return one.begin < block->colEnd && block->colBegin < one.end;
    });
    return found == all.end() ? std::nullopt : std::optional(std::size_t(found - all.begin()));
}

// ---- Telling

// Rows and residues that only one of the two has.
QString CompareBar::leftOut() const
{
    const Comparison &found = m_Compared->comparison;
    QStringList texts;
    const std::size_t onlyHere = m_Compared->placesHere.size() - m_Compared->rows();
    const std::size_t onlyThere = m_Compared->placesThere.size() - m_Compared->rows();
    if (onlyHere > 0 || onlyThere > 0)
        texts << companion::tr("Left out: rows only here %1, only there %2.")
                     .arg(onlyHere)
                     .arg(onlyThere);
    if (found.here.alone > 0 || found.there.alone > 0)
        texts << companion::tr("Residues only here %1, only there %2.")
                     .arg(found.here.alone)
                     .arg(found.there.alone);
    return texts.join(u' ');
}

QString CompareBar::scores() const
{
    const Comparison &found = m_Compared->comparison;
    return companion::tr(
               "Equal pairs: %1 of those there (SP), %2 of those here. Equal columns: %3 of "
               "those there (TC), %4 of those here.")
        .arg(shareText(found.samePairs, found.there.pairs),
             shareText(found.samePairs, found.here.pairs),
             shareText(found.sameColumns, found.there.columns),
             shareText(found.sameColumns, found.here.columns));
}

void CompareBar::showState()
{
    QString what = companion::tr("Compared with %1").arg(m_Title);
    QString state;
    QString only;
    if (!m_Trouble.isEmpty()) {
        state = m_Trouble;
    } else if (m_Compared == nullptr || !isFresh()) {
        state = m_Job == nullptr ? companion::tr("Comparing…")
                                 : companion::tr("Comparing… %1 %").arg(m_Job->percent());
    } else {
        const std::vector<Stretch> &all = m_Compared->comparison.stretches;
        what += all.empty() ? noDifference(m_Compared->comparison)
                : m_Present ? companion::tr(": difference %1 of %2, columns %3")
                                  .arg(*m_Present + 1)
                                  .arg(all.size())
                                  .arg(stretchText(all[*m_Present]))
                : all.size() == 1 ? companion::tr(": 1 difference")
                                  : companion::tr(": %1 differences").arg(all.size());
        state = scores();
        only = leftOut();
    }
    const bool hasStretches = m_Trouble.isEmpty() && m_Compared != nullptr && isFresh() &&
                              !m_Compared->comparison.stretches.empty();
    for (QToolButton *const button : m_Needs)
        button->setEnabled(hasStretches);
    m_What->setText(what);
    m_What->setToolTip(what);
    m_State->setText(state);
    m_State->setToolTip(state);
    m_Only->setText(only);
    m_Only->setToolTip(only);
    m_Only->setHidden(only.isEmpty());
}

} // namespace companion
