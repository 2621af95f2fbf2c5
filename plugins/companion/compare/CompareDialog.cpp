// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompareDialog.h"

#include "LayoutChanges.h"
#include "ObjectNames.h"
#include "PlainText.h"
#include "SlicedWork.h"
#include "Texts.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace companion {

namespace {

constexpr QSize kCompareSize(640, 400);
constexpr int kListGap = 6;

QString titleOfAlignment(const TAMBO::Alignment &alignment)
{
    return QString::fromStdString(alignment.Name());
}

QString sizeOfAlignment(const TAMBO::Alignment &alignment)
{
    using companion::tr;
    const QString rows =
        alignment.height() == 1 ? tr("1 row") : tr("%L1 rows").arg(alignment.height());
    return rows + QStringLiteral(" × ") +
           (alignment.width() == 1 ? tr("1 column") : tr("%L1 columns").arg(alignment.width()));
}

} // namespace

CompareDialog::CompareDialog(const TAMBO::Alignment &here, QWidget *parent,
                             std::function<void(const CompareChoice &)> chosen)
    : QDialog(parent),
      m_Here(&here),
      m_Chosen(std::move(chosen)),
      m_List(new QListWidget),
      m_State(new QLabel),
      m_Buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    using companion::tr;
    setWindowTitle(tr("Compare %1").arg(titleOfAlignment(here)));
    setObjectName(QStringLiteral("Compare"));
    auto *const label = new QLabel(tr("Compare %1 &with:").arg(titleOfAlignment(here)));
    label->setBuddy(m_List);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    m_List->setAccessibleName(tr("What to compare with"));
    // Names of steps and alignments are as long as their users make them.
    m_List->setWordWrap(true);
    m_List->setTextElideMode(Qt::ElideNone);
    m_List->setResizeMode(QListView::Adjust);
    m_List->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_State->setWordWrap(true);
    m_State->setTextFormat(Qt::PlainText);
    m_Buttons->button(QDialogButtonBox::Ok)->setText(tr("C&ompare"));
    auto *const layout = new QVBoxLayout(this);
    layout->setSpacing(kListGap);
    layout->addWidget(label);
    layout->addWidget(m_List, 1);
    layout->addWidget(m_State);
    layout->addWidget(m_Buttons);
    connect(m_Buttons, &QDialogButtonBox::accepted, this, &CompareDialog::accept);
    connect(m_Buttons, &QDialogButtonBox::rejected, this, &CompareDialog::reject);
    connect(m_List, &QListWidget::itemActivated, this, &CompareDialog::accept);
    connect(&m_Slices, &QTimer::timeout, this, &CompareDialog::goOn);
    resize(kCompareSize);
    begin();
}

CompareDialog::~CompareDialog() = default;

void CompareDialog::begin()
{
    using companion::tr;
    m_Revision = TAMBO::LayoutChanges::revision(*m_Here);
    m_List->clear();
    m_Choices.clear();
    m_Alignments = 0;
    add(tr("What the aligner makes of a copy"),
        tr("The copy comes into the workbench; the aligner is that of the settings"),
        {CompareChoice::Kind::Aligner}, 0);
    add(tr("A file…"), tr("The alignment of the file comes into the workbench"),
        {CompareChoice::Kind::File}, 1);
    addSteps();
    m_List->setCurrentRow(0);
    m_Candidates.emplace(*m_Here);
    m_Slices.start(0);
    showState();
}

void CompareDialog::addSteps()
{
    using companion::tr;
    const std::vector<TAMBO::FormerStep> steps = TAMBO::RowLayouts::steps(*m_Here, kMostSteps + 1);
    for (std::size_t i = 0; i < steps.size() && i < kMostSteps; ++i) {
        const QString name = QString::fromStdString(steps[i].name);
        QString text = i == 0 ? tr("Before the last step: %1").arg(name)
                              : tr("Before the last %1 steps: %2").arg(i + 1).arg(name);
        if (steps[i].isFirstUnsaved)
            text += tr(" (as it was opened, made or saved last)");
        add(text, tr("Steps that have not moved its cells do not count"),
            {CompareChoice::Kind::Former, nullptr, i + 1}, m_List->count());
    }
    if (steps.size() > kMostSteps)
        m_State->setToolTip(tr("Steps before the last %1 are left out.").arg(kMostSteps));
}

void CompareDialog::add(const QString &text, const QString &toolTip, const CompareChoice &choice,
                        int place)
{
    auto *const item = new QListWidgetItem(text);
    item->setToolTip(TAMBO::plainToolTip(toolTip));
    m_List->insertItem(place, item);
    m_Choices.insert(m_Choices.begin() + place, choice);
}

void CompareDialog::goOn()
{
    using companion::tr;
    const bool isDone = !m_Candidates->goOn(kSlice);
    const std::vector<TAMBO::Alignment *> &found = m_Candidates->found();
    const bool isMore = m_Alignments < found.size();
    for (; m_Alignments < found.size(); ++m_Alignments) {
        TAMBO::Alignment *const alignment = found[m_Alignments];
        add(titleOfAlignment(*alignment), sizeOfAlignment(*alignment),
            {CompareChoice::Kind::Alignment, alignment}, int(m_Alignments));
        // Most want the first one.
        if (m_Alignments == 0)
            m_List->setCurrentRow(0);
    }
    if (isMore) {
        // The next one may have the name of one that stands there already,
        // or of the one that is compared.
        std::vector<const TAMBO::Compound *> objects(found.begin(), found.end());
        objects.push_back(m_Here);
        const std::vector<std::string> names = TAMBO::ObjectNames::toldApart(objects);
        for (std::size_t i = 0; i < found.size(); ++i)
            m_List->item(int(i))->setText(QString::fromStdString(names[i]));
    }
    if (isDone) {
        m_Slices.stop();
        m_Candidates.reset();
    }
    showState();
}

void CompareDialog::showState()
{
    using companion::tr;
    QString text = isLooking()         ? tr("Looking for alignments of the same sequences…")
                   : m_Alignments == 0 ? tr("No other alignment has two of its sequences.")
                                       : QString();
    if (!m_State->toolTip().isEmpty())
        text += (text.isEmpty() ? QString() : QStringLiteral(" ")) + m_State->toolTip();
    m_State->setText(text);
}

void CompareDialog::accept()
{
    const int row = m_List->currentRow();
    if (row < 0)
        return;
    const CompareChoice choice = m_Choices[std::size_t(row)];
    const auto chosen = m_Chosen;
    QDialog::accept();
    chosen(choice);
}

void CompareDialog::leave()
{
    m_Slices.stop();
    m_Candidates.reset();
    close();
}

// Its steps are others then; undo may take it away.
void CompareDialog::commUpdate()
{
    if (!isInWorkbench(m_Here))
        leave();
    else if (TAMBO::LayoutChanges::revision(*m_Here) != m_Revision)
        begin();
}

void CompareDialog::commAdd()
{
    begin();
}

void CompareDialog::commDelete()
{
    if (isInWorkbench(m_Here))
        begin();
    else
        leave();
}

} // namespace companion
