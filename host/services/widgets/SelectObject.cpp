// SPDX-License-Identifier: GPL-3.0-or-later
#include "SelectObject.h"

#include "Alignment.h"
#include "CandidateList.h"
#include "CandidateModel.h"
#include "Logger.h"
#include "ObjectOrigins.h"
#include "PointerSet.h"
#include "SelectObjectAnswers.h"
#include "ShownCandidates.h"
#include "ShownObjects.h"
#include "Subscriber.h"
#include "WindowPlaces.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <cstddef>
#include <functional>
#include <numeric>

namespace TAMBO {

using namespace services;

namespace {

constexpr QSize kFirstSize(680, 460);
constexpr int kNameWidth = 300;
// Who asks in such words adds what is chosen to what its window shows.
const QString kAdding = QStringLiteral(" to add");
const QString kPlaceKey = QStringLiteral("SelectObject");

bool isBelowOneOf(const Compound *object, const PointerSet<Compound> &picked)
{
    while (object != nullptr && !picked.contains(object))
        object = object->Parent();
    return object != nullptr;
}

// A file with one sequence alone is an alignment of one row: the sequence is meant.
const Compound *loneSequence(const Compound &object)
{
    if (object.Kind() != CompoundKind::Alignment)
        return nullptr;
    const auto &alignment = dynamic_cast<const Alignment &>(object);
    return alignment.height() == 1 ? alignment.GetSeq(0) : nullptr;
}

} // namespace

// The inside of the dialog. It follows the deletions of objects, since jobs that end while the
// dialog is open may delete what it offers.
class SelectObject::Picker : public QObject, private Subscriber
{
public:
    using Write = std::function<void(const std::vector<Compound *> &)>;

    Picker(SelectObject &dialog, const std::vector<Compound *> &candidates,
           CandidateModel::Ticks ticks, Write write);

    // The widgets, once. A question that has been answered in advance takes none.
    void make();
    void preselect(const std::vector<Compound *> &objects);
    // Once caption and former choice are known.
    void begin();
    // False for a single choice without anything chosen.
    bool writeChoice();
    // The result of exec() when there is an answer.
    int answer(const std::optional<std::vector<Compound *>> &given);
    [[nodiscard]] services::SelectObjectQuestion question() const;
    [[nodiscard]] bool isSeveral() const noexcept { return m_Ticks == CandidateModel::Ticks::With; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // What is shown may have got another name.
    void commUpdate() override
    {
        m_Model.forgetNames();
        if (m_List != nullptr)
            m_List->viewport()->update();
    }
    void commAdd() override { }
    void commDelete() override { m_Shown.forgetDeletedObjects(currentRow()); }

    void makeList();
    void makeButtons(QVBoxLayout &layout);
    void chooseWanted();
    void follow();
    void toggleCurrent();
    void preferTyped();
    void tickAllShown(bool ticked);
    void refresh();
    // What the user has picked in the tree is the start where the caller has none.
    void startWithPicked();
    void showPresent();
    [[nodiscard]] std::vector<int> pickedRows() const;
    [[nodiscard]] QString counts() const;
    // The only row that is shown when the user has ticked none: it is what he means; else below 0.
    [[nodiscard]] int onlyMatch() const;
    // Of the candidates; below 0 for none.
    [[nodiscard]] int currentRow() const;

    SelectObject &m_Dialog;
    std::vector<Compound *> m_Candidates;
    CandidateModel::Ticks m_Ticks;
    Write m_Write;
    CandidateModel m_Model;
    ShownCandidates m_Shown;
    // Of a single choice.
    Compound *m_Wanted = nullptr;
    // Of several: what the caller has handed over may be taken back, so that none is an answer.
    bool m_CameWithChoice = false;
    bool m_IsBegun = false;
    // What is ticked is what was picked in the tree, and the user has not touched it.
    bool m_AreTicksOfTree = false;
    QLineEdit *m_Filter = nullptr;
    CandidateList *m_List = nullptr;
    QLabel *m_Counts = nullptr;
    QPushButton *m_Ok = nullptr;
};

SelectObject::Picker::Picker(SelectObject &dialog, const std::vector<Compound *> &candidates,
                             CandidateModel::Ticks ticks, Write write)
    : m_Dialog(dialog),
      m_Candidates(candidates),
      m_Ticks(ticks),
      m_Write(std::move(write)),
      m_Model(candidates, ticks),
      m_Shown(m_Model)
{
    if (SelectObjectAnswers::isEmpty())
        make();
}

void SelectObject::Picker::make()
{
    if (m_List != nullptr)
        return;
    m_Model.tellApart();
    m_Filter = new QLineEdit(&m_Dialog);
    m_List = new CandidateList(&m_Dialog);
    m_Counts = new QLabel(&m_Dialog);
    auto *layout = new QVBoxLayout(&m_Dialog);
    auto *heading = new QLabel(
        isSeveral() ? tr("Choose one or several: tick them by a click on the box, or by Space.")
                    : tr("Choose one:"));
    heading->setBuddy(m_Filter);
    layout->addWidget(heading);
    m_Filter->setPlaceholderText(tr("Type a part of the name"));
    m_Filter->setAccessibleName(tr("Part of the name"));
    m_Filter->setClearButtonEnabled(true);
    m_Filter->installEventFilter(this);
    layout->addWidget(m_Filter);
    makeList();
    layout->addWidget(m_List, 1);
    makeButtons(*layout);

    connect(m_Filter, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_Shown.setFilter(text, currentRow()); });
    connect(&m_Shown, &ShownCandidates::changed, this, [this] { follow(); });
    connect(&m_Model, &QAbstractItemModel::dataChanged, this, [this] {
        m_AreTicksOfTree = false;
        m_List->viewport()->update();
        refresh();
    });
    connect(m_List->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { refresh(); });
    connect(m_List, &QTreeView::doubleClicked, this, [this] {
        if (isSeveral())
            toggleCurrent();
        else
            m_Dialog.accept();
    });
    if (m_Shown.rowCount() > 0)
        m_List->setCurrentIndex(m_Shown.index(0, CandidateModel::NameColumn));
    chooseWanted();
    if (m_IsBegun)
        begin();
    refresh();
    m_Filter->setFocus();
}

void SelectObject::Picker::chooseWanted()
{
    const int row = m_Wanted == nullptr ? -1 : m_Model.rowOf(m_Wanted);
    if (row >= 0)
        m_List->setCurrentIndex(m_Shown.indexOf(row));
}

void SelectObject::Picker::begin()
{
    m_IsBegun = true;
    if (m_List == nullptr)
        return;
    showPresent();
    startWithPicked();
    refresh();
}

// By the window that asks: which of the candidates it has already.
void SelectObject::Picker::showPresent()
{
    const QWidget *const window =
        m_Dialog.parentWidget() == nullptr ? nullptr : m_Dialog.parentWidget()->window();
    const auto *const shown =
        window == nullptr ? nullptr : dynamic_cast<const Alignment *>(ShownObjects::Of(window));
    const bool isOfAlignments =
        m_Model.rowCount() > 0 && m_Model.object(0)->Kind() == CompoundKind::Alignment;
    const bool isAsked = m_Dialog.windowTitle().endsWith(kAdding) || isOfAlignments;
    m_Model.setShown(isAsked ? shown : nullptr);
    bool isAnyPresent = false;
    for (int row = 0; row < m_Model.rowCount() && !isAnyPresent; ++row)
        isAnyPresent = m_Model.present(row) != CandidateModel::kAbsent;
    m_List->setColumnHidden(CandidateModel::PresentColumn, !isAnyPresent);
}

// With what lies below them. What is there already is not meant.
std::vector<int> SelectObject::Picker::pickedRows() const
{
    const std::vector<Compound *> objects = ObjectOrigins::picked();
    PointerSet<Compound> picked(objects.begin(), objects.end());
    for (const Compound *const object : objects) {
        if (const Compound *const lone = loneSequence(*object))
            picked.insert(lone);
    }
    std::vector<int> rows;
    for (int row = 0; row < m_Model.rowCount() && !objects.empty(); ++row) {
        if (isBelowOneOf(m_Model.object(row), picked) &&
            m_Model.present(row) == CandidateModel::kAbsent)
            rows.push_back(row);
    }
    return rows;
}

void SelectObject::Picker::startWithPicked()
{
    if (m_CameWithChoice || m_Wanted != nullptr || m_Model.tickedCount() > 0)
        return;
    const std::vector<int> rows = pickedRows();
    if (rows.empty())
        return;
    if (isSeveral())
        m_Model.setTicked(rows, true);
    m_AreTicksOfTree = true;
    m_List->setCurrentIndex(m_Shown.indexOf(rows.front()));
}

void SelectObject::Picker::makeList()
{
    m_List->setModel(&m_Shown);
    m_List->setAccessibleName(tr("Objects"));
    m_List->setRootIsDecorated(false);
    m_List->setUniformRowHeights(true);
    m_List->setAlternatingRowColors(true);
    m_List->setAllColumnsShowFocus(true);
    m_List->setTextElideMode(Qt::ElideMiddle);
    // In the order of the candidates until the user asks for another.
    m_List->header()->setSortIndicator(-1, Qt::AscendingOrder);
    m_List->setSortingEnabled(true);
    m_List->setColumnWidth(CandidateModel::NameColumn, kNameWidth);
    m_List->installEventFilter(this);
}

void SelectObject::Picker::makeButtons(QVBoxLayout &layout)
{
    auto *row = new QHBoxLayout;
    row->addWidget(m_Counts, 1);
    if (isSeveral()) {
        const auto add = [&](const QString &text, bool ticked) {
            auto *button = new QPushButton(text, &m_Dialog);
            button->setAutoDefault(false);
            connect(button, &QPushButton::clicked, this, [this, ticked] { tickAllShown(ticked); });
            row->addWidget(button);
        };
        add(tr("Select &all"), true);
        add(tr("Select &none"), false);
    }
    layout.addLayout(row);
    auto *box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &m_Dialog);
    m_Ok = box->button(QDialogButtonBox::Ok);
    m_Ok->setDefault(true);
    if (isSeveral())
        m_Ok->setToolTip(tr("Takes what is ticked, or the only row that is shown"));
    connect(box, &QDialogButtonBox::accepted, &m_Dialog, &SelectObject::accept);
    connect(box, &QDialogButtonBox::rejected, &m_Dialog, &SelectObject::reject);
    layout.addWidget(box);
}

bool SelectObject::Picker::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() == Qt::Key_Space && isSeveral() && key->modifiers() == Qt::NoModifier) {
        toggleCurrent();
        return true;
    }
    const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (isEnter && isSeveral() && !m_Ok->isEnabled()) {
        m_Counts->setText(tr("Nothing is ticked yet. Space ticks the highlighted row."));
        return true;
    }
    if (watched != m_Filter)
        return false;
    switch (key->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QCoreApplication::sendEvent(m_List, event);
        return true;
    default:
        return false;
    }
}

void SelectObject::Picker::follow()
{
    if (currentRow() < 0 && m_Shown.wanted() >= 0)
        m_List->setCurrentIndex(m_Shown.indexOf(m_Shown.wanted()));
    refresh();
}

int SelectObject::Picker::currentRow() const
{
    return m_List == nullptr ? -1 : m_Shown.candidateAt(m_List->currentIndex());
}

void SelectObject::Picker::toggleCurrent()
{
    const int row = currentRow();
    if (row < 0)
        return;
    preferTyped();
    m_Model.setTicked(row, !m_Model.isTicked(row));
}

// What is typed says more than what was picked in the tree before.
void SelectObject::Picker::preferTyped()
{
    if (!m_AreTicksOfTree || m_Filter->text().isEmpty())
        return;
    std::vector<int> all(std::size_t(m_Model.rowCount()));
    std::iota(all.begin(), all.end(), 0);
    m_Model.setTicked(all, false);
}

void SelectObject::Picker::tickAllShown(bool ticked)
{
    m_Shown.finish();
    if (ticked)
        preferTyped();
    m_Model.setTicked(m_Shown.rows(), ticked);
}

QString SelectObject::Picker::counts() const
{
    const int all = m_Model.rowCount();
    const int shown = m_Shown.rowCount();
    if (m_Shown.isSorting())
        return tr("sorting %L1").arg(all);
    if (m_Shown.isWorking())
        return tr("%L1 of %L2 shown so far").arg(shown).arg(all);
    return shown == all ? tr("%L1 offered").arg(all) : tr("%L1 of %L2 shown").arg(shown).arg(all);
}

int SelectObject::Picker::onlyMatch() const
{
    const bool isUntouched = m_Model.tickedCount() == 0 || m_AreTicksOfTree;
    const bool isOne = isSeveral() && !m_CameWithChoice && isUntouched && !m_Shown.isWorking() &&
                       m_Shown.rowCount() == 1;
    return isOne ? m_Shown.rows().front() : -1;
}

void SelectObject::Picker::refresh()
{
    QString text = counts();
    if (onlyMatch() >= 0)
        text += tr(": OK takes it");
    else if (isSeveral())
        text += tr(", %L1 chosen").arg(m_Model.tickedCount());
    m_Counts->setText(text);
    const bool hasChoice = isSeveral()
                               ? m_Model.tickedCount() > 0 || m_CameWithChoice || onlyMatch() >= 0
                               : currentRow() >= 0;
    m_Ok->setEnabled(hasChoice);
    m_List->setEmptyText(
        m_Shown.isWorking() || m_Filter->text().isEmpty()
            ? QString()
            : tr("No name holds \u201c%1\u201d.\nType less of it, or clear the line "
                 "above.")
                  .arg(m_Filter->text()));
}

SelectObjectQuestion SelectObject::Picker::question() const
{
    return {m_Dialog.windowTitle(), m_Candidates, isSeveral(), m_Dialog.parentWidget()};
}

void SelectObject::Picker::preselect(const std::vector<Compound *> &objects)
{
    if (!isSeveral()) {
        m_Wanted = objects.front();
        if (m_List != nullptr)
            chooseWanted();
        return;
    }
    m_CameWithChoice = !objects.empty();
    if (!m_CameWithChoice)
        return;
    // Of a candidate that is offered twice the first one.
    const PointerSet<Compound> wanted(objects.begin(), objects.end());
    PointerSet<Compound> found(wanted.size());
    std::vector<int> rows;
    for (int row = 0; row < m_Model.rowCount() && found.size() < wanted.size(); ++row) {
        const Compound *const object = m_Model.object(row);
        if (wanted.contains(object) && found.insert(object))
            rows.push_back(row);
    }
    m_Model.setTicked(rows, true);
}

bool SelectObject::Picker::writeChoice()
{
    m_Shown.finish();
    if (isSeveral()) {
        const int match = onlyMatch();
        m_Write(match < 0 ? m_Model.ticked() : std::vector<Compound *>{m_Model.object(match)});
        return true;
    }
    const int row = currentRow();
    if (row < 0)
        return false;
    m_Write({m_Model.object(row)});
    return true;
}

int SelectObject::Picker::answer(const std::optional<std::vector<Compound *>> &given)
{
    if (!given)
        return QDialog::Rejected;
    const PointerSet<Compound> wanted(given->begin(), given->end());
    std::vector<Compound *> choice;
    for (int row = 0; row < m_Model.rowCount(); ++row)
        if (wanted.contains(m_Model.object(row)))
            choice.push_back(m_Model.object(row));
    if (!isSeveral() && choice.empty()) {
        Logger::Write(QStringLiteral("The object chosen in advance is not offered: %1")
                          .arg(m_Dialog.windowTitle()),
                      Logger::Severity::Warning);
        return QDialog::Rejected;
    }
    m_Write(choice);
    return QDialog::Accepted;
}

SelectObject::SelectObject(const std::vector<Compound *> &candidates, Compound *&chosen,
                           QWidget *parent, QString caption)
    : QDialog(parent),
      m_Picker(std::make_unique<Picker>(
          *this, candidates, CandidateModel::Ticks::Without,
          [&chosen](const std::vector<Compound *> &choice) { chosen = choice.front(); }))
{
    setWindowTitle(caption);
    m_Picker->preselect({chosen});
    m_Picker->begin();
}

SelectObject::SelectObject(const std::vector<Compound *> &candidates,
                           std::vector<Compound *> &chosen, QWidget *parent, QString caption)
    : QDialog(parent),
      m_Picker(std::make_unique<Picker>(
          *this, candidates, CandidateModel::Ticks::With,
          [&chosen](const std::vector<Compound *> &choice) { chosen = choice; }))
{
    setWindowTitle(caption);
    m_Picker->preselect(chosen);
    m_Picker->begin();
}

SelectObject::~SelectObject() = default;

int SelectObject::exec()
{
    if (!SelectObjectAnswers::isEmpty()) {
        const int result = m_Picker->answer(SelectObjectAnswers::take(m_Picker->question()));
        setResult(result);
        return result;
    }
    m_Picker->make();
    if (!WindowPlaces::restore(*this, kPlaceKey))
        resize(kFirstSize);
    const int result = QDialog::exec();
    WindowPlaces::remember(*this, kPlaceKey);
    return result;
}

void SelectObject::accept()
{
    m_Picker->make();
    if (m_Picker->writeChoice())
        QDialog::accept();
}

} // namespace TAMBO
