// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindBar.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "ControlNames.h"
#include "DataPoint.h"
#include "Keyboard.h"
#include "LineLabel.h"
#include "SlicedWork.h"
#include "Space.h"
#include "StepName.h"
#include "WorkbenchValues.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <string>

namespace companion {

namespace {

constexpr int kMostRemembered = 20;
constexpr int kGap = 6;
constexpr int kTextLetters = 26;
constexpr int kMostMismatches = 20;
// So many hits in rows in sight are looked at for one that is in sight.
constexpr int kMostLooks = 4096;

constexpr char kValuesOf[] = "companion";
constexpr char kHistory[] = "found";

QStringList rememberedTexts()
{
    const std::string kept = WorkbenchValues::Get(kValuesOf, kHistory).value_or("");
    return QString::fromStdString(kept).split(u'\n', Qt::SkipEmptyParts).mid(0, kMostRemembered);
}

QToolButton *button(const QString &text, const QString &toolTip)
{
    auto *const made = new QToolButton;
    made->setText(text);
    made->setToolTip(toolTip);
    made->setAccessibleName(toolTip);
    return made;
}

} // namespace

FindBar::FindBar(TAMBO::AlignmentWindow &window)
    : QToolBar(tr("Find"), window.mainWindow()), AlignmentViewObserver(window), m_Marks(window)
{
    setObjectName(QStringLiteral("Find"));
    setMovable(false);
    makeWidgets();
    connect(&m_Slices, &QTimer::timeout, this, &FindBar::goOn);
    window.mainWindow()->addToolBarBreak(Qt::BottomToolBarArea);
    window.mainWindow()->addToolBar(Qt::BottomToolBarArea, this);
    hide();
}

FindBar::~FindBar()
{
    m_Marks.setRun(nullptr);
}

void FindBar::makeWidgets()
{
    auto *const label = new QLabel(tr("F&ind:"));
    label->setContentsMargins(kGap, 0, kGap, 0);
    m_Text = new QComboBox;
    m_Text->setEditable(true);
    m_Text->setInsertPolicy(QComboBox::NoInsert);
    m_Text->addItems(rememberedTexts());
    m_Text->setCurrentText(QString());
    m_Text->setMinimumContentsLength(kTextLetters);
    m_Text->setAccessibleName(tr("What to find"));
    label->setBuddy(m_Text);
    m_Where = new QComboBox;
    m_Where->addItems({tr("in sequences"), tr("in names")});
    m_Where->setAccessibleName(tr("Where to find it"));
    m_Language = new QComboBox;
    m_Language->addItems({tr("plain text"), tr("regular expression"), tr("PROSITE pattern")});
    m_Language->setAccessibleName(tr("How it is written"));
    // Before the search begins anew.
    connect(m_Where, &QComboBox::currentIndexChanged, this, &FindBar::fitLanguages);
    m_Mismatches = new QSpinBox;
    m_Mismatches->setRange(0, kMostMismatches);
    m_Mismatches->setSuffix(tr(" mismatches"));
    m_Mismatches->setAccessibleName(tr("How many letters may be others"));
    m_OnlySelected = new QCheckBox(tr("s&elected only"));
    m_State = makeLineLabel();
    QToolButton *const back = button(QStringLiteral("◀"), tr("Previous hit (Shift+F3)"));
    QToolButton *const forth = button(QStringLiteral("▶"), tr("Next hit (F3, Enter)"));
    QToolButton *const all = button(tr("Select All"), tr("Select all hits"));
    layOut({label, m_Text, m_Where, m_Language, m_Mismatches, m_OnlySelected},
           {back, forth, all, m_State});
    nameInnerControls(*this);

    connect(m_Text, &QComboBox::editTextChanged, this, &FindBar::beginAsked);
    connect(m_Where, &QComboBox::currentIndexChanged, this, &FindBar::beginAsked);
    connect(m_Language, &QComboBox::currentIndexChanged, this, &FindBar::beginAsked);
    connect(m_Mismatches, &QSpinBox::valueChanged, this, &FindBar::beginAsked);
    connect(m_OnlySelected, &QCheckBox::toggled, this, &FindBar::beginAsked);
    connect(m_Text->lineEdit(), &QLineEdit::returnPressed, this, &FindBar::next);
    connect(back, &QToolButton::clicked, this, &FindBar::previous);
    connect(forth, &QToolButton::clicked, this, &FindBar::next);
    connect(all, &QToolButton::clicked, this, &FindBar::selectAll);
}

// In two lines: in one, what is said of the hits would have no room in many a window.
void FindBar::layOut(std::initializer_list<QWidget *> asking,
                     std::initializer_list<QWidget *> going)
{
    auto *const lines = new QWidget;
    auto *const layout = new QVBoxLayout(lines);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kGap / 3);
    for (const auto &widgets : {asking, going}) {
        auto *const line = new QHBoxLayout;
        for (QWidget *const widget : widgets)
            line->addWidget(widget);
        layout->addLayout(line);
        if (std::ranges::find(widgets, m_State) == widgets.end())
            line->addStretch();
    }
    // Else the window would become as wide as the upper line.
    lines->setMinimumWidth(1);
    lines->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    addWidget(lines);
}

// A pattern of residues is none for names, which are looked for as text meanwhile.
void FindBar::fitLanguages()
{
    const bool isInNames = m_Where->currentIndex() == 1;
    const int pattern = int(PatternLanguage::Prosite);
    // As the list's own model has it.
    static_cast<QStandardItemModel &>(*m_Language->model()).item(pattern)->setEnabled(!isInNames);
    const QSignalBlocker quiet(m_Language);
    if (isInNames) {
        m_IsPatternKept = m_Language->currentIndex() == pattern;
        if (m_IsPatternKept)
            m_Language->setCurrentIndex(int(PatternLanguage::Plain));
    } else if (m_IsPatternKept && m_Language->currentIndex() == int(PatternLanguage::Plain)) {
        m_Language->setCurrentIndex(pattern);
    }
}

void FindBar::ask()
{
    show();
    m_Text->lineEdit()->selectAll();
    takeKeyboard(*m_Text);
    if (!m_Run)
        begin();
}

void FindBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        leave();
    else
        QToolBar::keyPressEvent(event);
}

void FindBar::leave()
{
    giveUp();
    m_State->clear();
    hide();
    AlignmentViewObserver::window()
        ->areaWidget(TAMBO::WindowArea::Cells)
        ->parentWidget()
        ->setFocus();
}

void FindBar::giveUp()
{
    m_Slices.stop();
    m_Marks.setRun(nullptr);
    m_Run.reset();
    m_Present.reset();
    m_IsFirstWanted = false;
}

void FindBar::alignmentShown()
{
    giveUp();
    m_FromRow = 0;
    m_ScrolledTo.reset();
    if (!isHidden())
        begin();
}

void FindBar::layoutRebuilt()
{
    if (m_Run)
        begin();
}

void FindBar::scrolled()
{
    const TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    if (shown.scrollPosition() != m_ScrolledTo)
        m_FromRow = shown.visibleCells().rowBegin;
}

// ---- Searching

void FindBar::beginAsked()
{
    begin();
    m_IsFirstWanted = m_Run.has_value();
}

void FindBar::begin()
{
    giveUp();
    const TAMBO::Alignment *const alignment = AlignmentViewObserver::window()->alignment();
    const QString text = m_Text->currentText();
    const bool isInNames = m_Where->currentIndex() == 1;
    m_Mismatches->setEnabled(!isInNames);
    if (alignment == nullptr || text.isEmpty()) {
        m_State->setText(alignment == nullptr ? tr("No alignment is shown.") : QString());
        return;
    }
    const auto mismatches = isInNames ? 0U : static_cast<unsigned>(m_Mismatches->value());
    SequencePattern pattern(text, static_cast<PatternLanguage>(m_Language->currentIndex()),
                            mismatches);
    if (!pattern.isGood()) {
        m_State->setText(pattern.mistake());
        return;
    }
    m_Run.emplace(*alignment, std::move(pattern), isInNames ? FindIn::Names : FindIn::Sequences,
                  m_OnlySelected->isChecked());
    m_Marks.setRun(&*m_Run);
    m_Slices.start(0);
    showState();
}

void FindBar::goOn()
{
    const std::size_t before = m_Run->hits().size();
    if (!m_Run->goOn(kSlice))
        m_Slices.stop();
    if (m_Run->hits().size() != before)
        m_Marks.refresh();
    if (m_IsFirstWanted)
        showFirst();
    showState();
}

void FindBar::showFirst()
{
    const std::vector<Hit> &hits = m_Run->hits();
    const unsigned long lastRow = AlignmentViewObserver::window()->visibleCells().rowEnd;
    const bool isKnown =
        m_Run->isDone() || (!hits.empty() && hits.back().row >= std::max(m_FromRow, lastRow));
    if (!isKnown)
        return;
    m_IsFirstWanted = false;
    if (!hits.empty() && !isAnyInSight())
        bringIntoSight(hits[firstFrom(m_FromRow)]);
}

bool FindBar::isAnyInSight() const
{
    const TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    const TAMBO::CellBlock cells = shown.visibleCells();
    const std::vector<Hit> &hits = m_Run->hits();
    int looks = 0;
    for (std::size_t i = firstFrom(cells.rowBegin);
         i < hits.size() && hits[i].row >= cells.rowBegin && hits[i].row < cells.rowEnd; ++i) {
        if (hits[i].isName())
            return true;
        const auto [begin, end] = columnsOf(*shown.alignment(), hits[i]);
        // Of so many some are, or one more look takes too long.
        if ((begin < cells.colEnd && end > cells.colBegin) || ++looks == kMostLooks)
            return true;
    }
    return false;
}

void FindBar::bringIntoSight(const Hit &hit)
{
    TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    if (hit.isName()) {
        shown.showCell({hit.row, shown.visibleCells().colBegin});
    } else {
        const auto [begin, end] = columnsOf(*shown.alignment(), hit);
        shown.showCell({hit.row, end - 1});
        shown.showCell({hit.row, begin});
    }
    m_ScrolledTo = shown.scrollPosition();
}

void FindBar::showState()
{
    const std::size_t count = m_Run->hits().size();
    QString text = m_Present                       ? tr("%1 of %2").arg(*m_Present + 1).arg(count)
                   : count == 0 && m_Run->isDone() ? nothingText()
                                                   : tr("%n found", nullptr, int(count));
    if (m_Run->isFull())
        text += tr("; those behind are not looked for");
    else if (!m_Run->isDone())
        text += tr(", %1 % searched").arg(m_Run->percent());
    m_State->setText(text);
}

// With what may help.
QString FindBar::nothingText() const
{
    if (m_OnlySelected->isChecked())
        return tr("nothing found among what is selected: untick “selected only”");
    if (m_Where->currentIndex() == 1)
        return tr("nothing found: look in sequences, or type less");
    if (m_Language->currentIndex() == 0 && m_Mismatches->value() == 0)
        return tr("nothing found: allow mismatches, or look in names");
    return tr("nothing found: look in names, or type less");
}

std::size_t FindBar::firstInSight() const
{
    return firstFrom(AlignmentViewObserver::window()->visibleCells().rowBegin);
}

std::size_t FindBar::firstFrom(unsigned long row) const
{
    const std::vector<Hit> &hits = m_Run->hits();
    const auto found = std::ranges::lower_bound(hits, row, {}, &Hit::row);
    return found == hits.end() ? 0 : static_cast<std::size_t>(found - hits.begin());
}

void FindBar::go(int step)
{
    if (!m_Run) {
        ask();
        return;
    }
    // What is asked for may be just ahead.
    while (m_Run->hits().empty() && m_Run->goOn(kSlice)) {
    }
    const std::size_t count = m_Run->hits().size();
    if (count == 0)
        return showState();
    if (!m_Present)
        m_Present = step > 0 ? firstInSight() : (firstInSight() + count - 1) % count;
    else
        m_Present = (*m_Present + (step > 0 ? 1 : count - 1)) % count;
    m_IsFirstWanted = false;
    bringIntoSight(m_Run->hits()[*m_Present]);
    m_FromRow = AlignmentViewObserver::window()->visibleCells().rowBegin;
    m_Marks.setPresent(m_Present);
    remember();
    showState();
}

void FindBar::remember()
{
    const QString text = m_Text->currentText();
    QStringList texts = rememberedTexts();
    if (!texts.isEmpty() && texts.front() == text)
        return;
    texts.removeAll(text);
    texts.prepend(text);
    texts = texts.mid(0, kMostRemembered);
    WorkbenchValues::Set(kValuesOf, kHistory, texts.join(u'\n').toStdString());
    const QSignalBlocker quiet(m_Text);
    m_Text->clear();
    m_Text->addItems(texts);
    m_Text->setCurrentText(text);
}

void FindBar::selectAll()
{
    if (!m_Run)
        return;
    // All of them, whatever has been found by now.
    const QPointer<FindBar> self(this);
    const bool isDone = finish({[this](auto most) { return m_Run && m_Run->goOn(most); },
                                [this] { return m_Run ? m_Run->percent() : 0; }},
                               tr("Searching…"), this);
    if (self == nullptr || !m_Run)
        return;
    if (!isDone)
        return showState();
    TAMBO::Alignment *const alignment = AlignmentViewObserver::window()->alignment();
    // Of the search that is gone as soon as the change is told.
    const std::vector<Hit> hits = m_Run->hits();
    if (hits.empty())
        return showState();
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        if (!change.m_good) {
            m_State->setText(tr("Nothing can be selected now."));
            return;
        }
        const StepName name("Select what was found");
        for (const Hit &hit : hits) {
            const auto columns =
                hit.isName() ? std::pair(0UL, alignment->width()) : columnsOf(*alignment, hit);
            alignment->selectInRow(hit.row, columns);
        }
    }
    remember();
    m_State->setText(tr("%n selected", nullptr, int(hits.size())));
}

} // namespace companion
