// SPDX-License-Identifier: GPL-3.0-or-later
#include "SelectBar.h"

#include "ControlNames.h"
#include "Keyboard.h"
#include "LineLabel.h"
#include "SlicedWork.h"
#include "Texts.h"

#include <QComboBox>
#include <QCursor>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace companion {

namespace {

constexpr int kSelectGap = 6;
constexpr int kNameLetters = 22;
constexpr double kWholeShare = 100;
constexpr double kConservationStep = 0.05;
constexpr double kUsualIdentity = 70;
constexpr double kUsualConservation = 0.7;
constexpr double kUsualGaps = 50;

QSpinBox *placeBox(const QString &name)
{
    auto *const box = new QSpinBox;
    box->setAccessibleName(name);
    box->setToolTip(name);
    // A number is counted for when it has been typed.
    box->setKeyboardTracking(false);
    return box;
}

QComboBox *choiceBox(const QString &name, const QStringList &choices)
{
    auto *const box = new QComboBox;
    box->addItems(choices);
    box->setAccessibleName(name);
    box->setToolTip(name);
    return box;
}

QLabel *word(const QString &text)
{
    auto *const label = new QLabel(text);
    label->setContentsMargins(kSelectGap, 0, kSelectGap, 0);
    return label;
}

int boxNumber(unsigned long number)
{
    return int(std::min<unsigned long>(number, std::numeric_limits<int>::max()));
}

} // namespace

SelectBar::SelectBar(TAMBO::AlignmentWindow &window)
    : QToolBar(companion::tr("Select"), window.mainWindow()), AlignmentViewObserver(window)
{
    setObjectName(QStringLiteral("Select"));
    setMovable(false);
    m_Limits[std::size_t(SelectBy::Likeness)] = kUsualIdentity;
    m_Limits[std::size_t(SelectBy::Conservation)] = kUsualConservation;
    m_Limits[std::size_t(SelectBy::Gaps)] = kUsualGaps;
    makeWidgets();
    nameInnerControls(*this);
    showControls();
    connect(&m_Slices, &QTimer::timeout, this, &SelectBar::goOn);
    window.mainWindow()->addToolBarBreak(Qt::BottomToolBarArea);
    window.mainWindow()->addToolBar(Qt::BottomToolBarArea, this);
    hide();
}

SelectBar::~SelectBar() = default;

void SelectBar::makeWidgets()
{
    using companion::tr;
    QLabel *const label = word(tr("Se&lect:"));
    m_By = choiceBox(tr("What to select"),
                     {tr("block"), tr("rows like"), tr("columns by conservation"),
                      tr("columns by gaps"), tr("rows by name")});
    label->setBuddy(m_By);
    m_RowFrom = placeBox(tr("First row"));
    m_RowTo = placeBox(tr("Last row"));
    m_ColumnFrom = placeBox(tr("First column"));
    m_ColumnTo = placeBox(tr("Last column"));
    m_Row = placeBox(tr("Which row they are like"));
    m_Row->setPrefix(tr("row "));
    m_Compared = new QComboBox;
    m_Compared->addItem(tr("of aligned pairs"), int(IdentityOf::AlignedPairs));
    m_Compared->addItem(tr("of the shorter sequence"), int(IdentityOf::ShorterSequence));
    m_Compared->addItem(tr("of all columns"), int(IdentityOf::AlignmentLength));
    m_Compared->setAccessibleName(tr("What identical pairs are a share of"));
    m_Compared->setToolTip(m_Compared->accessibleName());
    m_Side = choiceBox(tr("At least or at most"), {tr("at least"), tr("at most")});
    m_Limit = new QDoubleSpinBox;
    m_Limit->setAccessibleName(tr("Limit"));
    m_Name = new QLineEdit;
    m_Name->setAccessibleName(tr("What the name is like"));
    m_Name->setPlaceholderText(tr("name"));
    m_Name->setMaximumWidth(kNameLetters * m_Name->fontMetrics().averageCharWidth());
    m_Language = choiceBox(tr("How the name is written"),
                           {tr("plain text"), tr("* and ?"), tr("regular expression")});
    m_How = choiceBox(tr("What becomes of the selection"),
                      {tr("instead of the selection"), tr("added to the selection"),
                       tr("taken out of the selection")});
    auto *const go = new QToolButton;
    go->setText(tr("Select"));
    go->setToolTip(tr("Select what is chosen (Enter)"));
    go->setAccessibleName(go->toolTip());
    m_State = makeLineLabel();
    m_State->setObjectName(QStringLiteral("State"));

    layOut(label, go);

    connect(m_By, &QComboBox::currentIndexChanged, this, [this] {
        showControls();
        begin();
    });
    for (QSpinBox *const box : {m_RowFrom, m_RowTo, m_ColumnFrom, m_ColumnTo, m_Row})
        connect(box, &QSpinBox::valueChanged, this, &SelectBar::begin);
    for (QComboBox *const box : {m_Compared, m_Language})
        connect(box, &QComboBox::currentIndexChanged, this, &SelectBar::begin);
    connect(m_Name, &QLineEdit::textChanged, this, &SelectBar::begin);
    connect(m_Name, &QLineEdit::returnPressed, this, &SelectBar::apply);
    connect(m_Side, &QComboBox::currentIndexChanged, this, &SelectBar::countAnew);
    connect(m_Limit, &QDoubleSpinBox::valueChanged, this, [this](double value) {
        m_Limits[std::size_t(by())] = value;
        countAnew();
    });
    connect(go, &QToolButton::clicked, this, &SelectBar::apply);
}

// In two lines, of which the upper one depends on the choice: one is wider than many a window.
void SelectBar::layOut(QLabel *label, QWidget *go)
{
    using By = SelectBy;
    using companion::tr;
    auto *const upper = new QHBoxLayout;
    upper->addWidget(label);
    upper->addWidget(m_By);
    const auto add = [this, upper](QWidget *widget, std::initializer_list<SelectBy> uses) {
        upper->addWidget(widget);
        m_Controls.push_back({widget, uses});
    };
    add(word(tr("rows")), {By::Block});
    add(m_RowFrom, {By::Block});
    add(word(tr("to")), {By::Block});
    add(m_RowTo, {By::Block});
    add(word(tr("columns")), {By::Block});
    add(m_ColumnFrom, {By::Block});
    add(word(tr("to")), {By::Block});
    add(m_ColumnTo, {By::Block});
    add(m_Row, {By::Likeness});
    add(m_Side, {By::Likeness, By::Conservation, By::Gaps});
    add(m_Limit, {By::Likeness, By::Conservation, By::Gaps});
    add(m_Compared, {By::Likeness});
    add(m_Name, {By::Names});
    add(m_Language, {By::Names});
    upper->addStretch();
    auto *const lower = new QHBoxLayout;
    lower->addWidget(m_How);
    lower->addWidget(go);
    lower->addWidget(m_State, 1);
    auto *const lines = new QWidget;
    auto *const layout = new QVBoxLayout(lines);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kSelectGap / 3);
    layout->addLayout(upper);
    layout->addLayout(lower);
    // Else the window would become as wide as the widest choice.
    lines->setMinimumWidth(1);
    lines->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    addWidget(lines);
}

SelectBy SelectBar::by() const
{
    return static_cast<SelectBy>(m_By->currentIndex());
}

TAMBO::CellBlock SelectBar::block() const
{
    const auto ends = [](const QSpinBox *from, const QSpinBox *to) {
        return std::minmax({from->value(), to->value()});
    };
    const auto [row, lastRow] = ends(m_RowFrom, m_RowTo);
    const auto [col, lastCol] = ends(m_ColumnFrom, m_ColumnTo);
    return {static_cast<unsigned long>(row - 1), static_cast<unsigned long>(lastRow),
            static_cast<unsigned long>(col - 1), static_cast<unsigned long>(lastCol)};
}

Limit SelectBar::limit() const
{
    if (by() == SelectBy::Names)
        return {1, true};
    const double value = m_Limits[std::size_t(by())];
    return {by() == SelectBy::Conservation ? value : value / kWholeShare,
            m_Side->currentIndex() == 0};
}

void SelectBar::showControls()
{
    for (const Control &control : m_Controls)
        control.widget->setVisible(std::ranges::find(control.uses, by()) != control.uses.end());
    const bool isShare = by() != SelectBy::Conservation;
    const double value = m_Limits[std::size_t(by())];
    const QSignalBlocker quiet(m_Limit);
    m_Limit->setDecimals(isShare ? 0 : 2);
    m_Limit->setRange(0, isShare ? kWholeShare : 1);
    m_Limit->setSingleStep(isShare ? 1 : kConservationStep);
    m_Limit->setSuffix(isShare ? QStringLiteral(" %") : QString());
    m_Limit->setValue(value);
    const QString meant = by() == SelectBy::Likeness ? companion::tr("Identical pairs of residues")
                          : isShare ? companion::tr("Rows with a gap in the column")
                                    : companion::tr("Conservation as in the tracks, from 0 to 1");
    m_Limit->setToolTip(meant);
    m_Limit->setAccessibleName(meant);
    if (auto *const field = m_Limit->findChild<QLineEdit *>())
        field->setAccessibleName(meant);
}

// ---- Opening and closing

void SelectBar::ask(SelectBy by)
{
    // With what is in sight before the line takes room.
    prefill();
    m_By->setCurrentIndex(int(by));
    show();
    QWidget *const first = by == SelectBy::Block   ? m_RowFrom
                           : by == SelectBy::Names ? static_cast<QWidget *>(m_Name)
                                                   : m_Limit;
    takeKeyboard(*first);
    begin();
}

void SelectBar::prefill()
{
    fitRanges();
    const TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    const TAMBO::Alignment *const alignment = shown.alignment();
    if (alignment == nullptr)
        return;
    TAMBO::CellBlock block = shown.visibleCells();
    const TAMBO::Alignment::Range &range = alignment->range();
    const bool hasRange =
        range.first < range.second && (range.first > 0 || range.second < alignment->width());
    if (hasRange) {
        block.colBegin = range.first;
        block.colEnd = range.second;
    }
    const auto fill = [](QSpinBox *box, unsigned long number) {
        const QSignalBlocker quiet(box);
        box->setValue(boxNumber(number));
    };
    fill(m_RowFrom, block.rowBegin + 1);
    fill(m_RowTo, block.rowEnd);
    fill(m_ColumnFrom, block.colBegin + 1);
    fill(m_ColumnTo, block.colEnd);
    fill(m_Row, referenceRow() + 1);
}

void SelectBar::fitRanges()
{
    const TAMBO::Alignment *const alignment = AlignmentViewObserver::window()->alignment();
    const int rows = alignment == nullptr ? 1 : boxNumber(std::max(1UL, alignment->height()));
    const int columns = alignment == nullptr ? 1 : boxNumber(std::max(1UL, alignment->width()));
    const auto fit = [](QSpinBox *box, int end) {
        const QSignalBlocker quiet(box);
        box->setRange(1, end);
    };
    for (QSpinBox *const box : {m_RowFrom, m_RowTo, m_Row})
        fit(box, rows);
    for (QSpinBox *const box : {m_ColumnFrom, m_ColumnTo})
        fit(box, columns);
}

unsigned long SelectBar::referenceRow() const
{
    const TAMBO::AlignmentWindow &shown = *AlignmentViewObserver::window();
    const TAMBO::Alignment &alignment = *shown.alignment();
    for (const TAMBO::WindowArea area : {TAMBO::WindowArea::Cells, TAMBO::WindowArea::Names}) {
        const QWidget *const widget = shown.areaWidget(area);
        const QPoint at = widget->mapFromGlobal(QCursor::pos());
        const std::optional<unsigned long> row =
            widget->rect().contains(at) && widget->isActiveWindow() ? shown.rowAt(at.y())
                                                                    : std::nullopt;
        if (row)
            return *row;
    }
    // A row of gaps alone counts as selected.
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        if (alignment.isRowSelected(row) && alignment.residueCount(row, alignment.width()) > 0)
            return row;
    }
    return shown.visibleCells().rowBegin;
}

void SelectBar::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        leave();
    else if (isEnter && !m_Name->hasFocus())
        apply();
    else if (!isEnter)
        QToolBar::keyPressEvent(event);
}

void SelectBar::leave()
{
    giveUp();
    m_State->clear();
    hide();
    AlignmentViewObserver::window()
        ->areaWidget(TAMBO::WindowArea::Cells)
        ->parentWidget()
        ->setFocus();
}

void SelectBar::giveUp()
{
    m_Slices.stop();
    m_Measure.reset();
    m_Counted = m_Chosen = 0;
}

void SelectBar::alignmentShown()
{
    giveUp();
    if (isHidden())
        return;
    prefill();
    begin();
}

void SelectBar::layoutRebuilt()
{
    if (isHidden())
        return;
    fitRanges();
    begin();
}

// ---- Counting

void SelectBar::begin()
{
    giveUp();
    const TAMBO::Alignment *const alignment = AlignmentViewObserver::window()->alignment();
    if (isHidden() || alignment == nullptr || alignment->height() == 0)
        return showState();
    switch (by()) {
    case SelectBy::Block:
        break;
    case SelectBy::Likeness:
        m_Measure = std::make_unique<RowIdentities>(
            *alignment, static_cast<unsigned long>(m_Row->value() - 1),
            static_cast<IdentityOf>(m_Compared->currentData().toInt()));
        break;
    case SelectBy::Conservation:
        m_Measure = std::make_unique<ColumnValues>(*alignment, ColumnValue::Conservation);
        break;
    case SelectBy::Gaps:
        m_Measure = std::make_unique<ColumnValues>(*alignment, ColumnValue::Gaps);
        break;
    case SelectBy::Names: {
        NamePattern pattern(m_Name->text(), static_cast<NameLanguage>(m_Language->currentIndex()));
        if (!pattern.mistake().isEmpty()) {
            m_State->setText(pattern.mistake());
            return;
        }
        if (!m_Name->text().isEmpty())
            m_Measure = std::make_unique<NameMatches>(*alignment, std::move(pattern));
    }
    }
    if (m_Measure != nullptr)
        m_Slices.start(0);
    showState();
}

void SelectBar::goOn()
{
    if (m_Measure == nullptr || !m_Measure->goOn(kSlice))
        m_Slices.stop();
    countOn();
    showState();
}

void SelectBar::countOn()
{
    if (m_Measure == nullptr)
        return;
    const std::vector<double> &values = m_Measure->values();
    const Limit wanted = limit();
    for (; m_Counted < values.size(); ++m_Counted)
        m_Chosen += wanted.holds(values[m_Counted]) ? 1 : 0;
}

void SelectBar::countAnew()
{
    m_Counted = m_Chosen = 0;
    countOn();
    showState();
}

QString SelectBar::blockText(const TAMBO::Alignment &alignment) const
{
    const TAMBO::CellBlock chosen =
        block().intersected({0, alignment.height(), 0, alignment.width()});
    return companion::tr("%1 of %2 rows × %3 of %4 columns")
        .arg(chosen.rowEnd - chosen.rowBegin)
        .arg(alignment.height())
        .arg(chosen.colEnd - chosen.colBegin)
        .arg(alignment.width());
}

QString SelectBar::chosenText(const TAMBO::Alignment &alignment) const
{
    return companion::tr(m_Measure->isOfRows() ? "%1 of %2 rows" : "%1 of %2 columns")
        .arg(m_Chosen)
        .arg(m_Measure->isOfRows() ? alignment.height() : alignment.width());
}

void SelectBar::showState()
{
    const TAMBO::Alignment *const alignment = AlignmentViewObserver::window()->alignment();
    if (alignment == nullptr || by() == SelectBy::Block || m_Measure == nullptr) {
        m_State->setText(alignment == nullptr      ? companion::tr("No alignment is shown.")
                         : by() == SelectBy::Block ? blockText(*alignment)
                                                   : QString());
        return;
    }
    QString text = chosenText(*alignment);
    if (by() == SelectBy::Likeness)
        text += companion::tr(" are like %1")
                    .arg(QString::fromStdString(
                        alignment->GetSeqName(static_cast<unsigned long>(m_Row->value() - 1))));
    if (!m_Measure->isDone())
        text += companion::tr(", %1 % counted").arg(m_Measure->percent());
    m_State->setText(text);
}

// ---- Selecting

// False when the user has cancelled it, or it cannot be.
bool SelectBar::measureToTheEnd()
{
    const QPointer<SelectBar> self(this);
    const SlicedWork work{
        [this](auto most) { return m_Measure != nullptr && m_Measure->goOn(most); },
        [this] { return m_Measure == nullptr ? 0 : m_Measure->percent(); }};
    m_Slices.stop();
    const bool isDone = finish(work, companion::tr("Counting…"), this);
    if (self == nullptr)
        return false;
    if (m_Measure != nullptr && !m_Measure->isDone())
        m_Slices.start(0);
    countOn();
    showState();
    return isDone && m_Measure != nullptr;
}

bool SelectBar::apply()
{
    if (by() != SelectBy::Block) {
        if (m_Measure == nullptr)
            return false;
        if (!measureToTheEnd())
            return false;
    }
    TAMBO::Alignment *const alignment = AlignmentViewObserver::window()->alignment();
    if (alignment == nullptr)
        return false;
    const bool isBlock = by() == SelectBy::Block;
    const QString what = isBlock ? blockText(*alignment) : chosenText(*alignment);
    const CellChoice choice =
        isBlock ? choiceOf(*alignment, block()) : choiceOf(*alignment, *m_Measure, limit());
    const auto how = static_cast<TAMBO::Alignment::Selecting>(m_How->currentIndex());
    if (!select(*alignment, choice, how)) {
        m_State->setText(companion::tr("Nothing can be selected now."));
        return false;
    }
    const bool isRemoved = how == TAMBO::Alignment::Selecting::Remove;
    m_State->setText(
        companion::tr(isRemoved ? "Taken out of the selection: %1" : "Selected: %1").arg(what));
    return true;
}

} // namespace companion
