// SPDX-License-Identifier: GPL-3.0-or-later
#include "GapColumnsBar.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "ColumnRemoval.h"
#include "Texts.h"

#include <QDoubleSpinBox>
#include <QLabel>

#include <utility>

namespace companion {

namespace {

constexpr double kUsualGapLimit = 90;
constexpr double kAllOfThem = 100;
constexpr int kWordMargin = 6;

QLabel *gapWord(const QString &text)
{
    auto *const label = new QLabel(text);
    label->setContentsMargins(kWordMargin, 0, kWordMargin, 0);
    return label;
}

} // namespace

GapColumnsBar::GapColumnsBar(TAMBO::AlignmentWindow &window, Tell tell)
    : CountingBar(window, companion::tr("Remove Columns"), QStringLiteral("GapColumns")),
      m_Tell(std::move(tell)),
      m_Counting(
          window,
          [this](const TAMBO::Alignment &alignment) { m_Residues.assign(alignment.width(), 0); },
          [this](const TAMBO::Alignment &alignment, unsigned long row) {
              countResidues(alignment.GetSequence(row, false), m_Residues);
              return true;
          }),
      m_Limit(new QDoubleSpinBox)
{
    using companion::tr;
    QLabel *const label = gapWord(tr("Remove columns with &more than"));
    label->setBuddy(m_Limit);
    m_Limit->setRange(0, kAllOfThem);
    m_Limit->setDecimals(0);
    m_Limit->setValue(kUsualGapLimit);
    m_Limit->setSuffix(QStringLiteral(" %"));
    m_Limit->setToolTip(tr("Rows with a gap in the column"));
    m_Limit->setAccessibleName(tr("Most rows with a gap in a column that stays"));
    addControls({label, m_Limit, gapWord(tr("gaps"))}, tr("Remove"),
                tr("Remove the columns from the alignment (Enter)"));
    connect(m_Limit, &QDoubleSpinBox::valueChanged, this, [this] {
        findColumns();
        showState();
    });
}

GapColumnsBar::~GapColumnsBar() = default;

bool GapColumnsBar::beginCount()
{
    m_Found = {};
    return true;
}

bool GapColumnsBar::countOn(std::chrono::microseconds most)
{
    const bool goesOn = m_Counting.goOn(most);
    if (!goesOn)
        findColumns();
    return goesOn;
}

void GapColumnsBar::findColumns()
{
    m_Found = {};
    if (m_Counting.isDone())
        m_Found = gappyColumns(m_Residues, shownWindow().alignment()->height(),
                               m_Limit->value() / kAllOfThem);
}

QString GapColumnsBar::countText(const TAMBO::Alignment &alignment) const
{
    if (!m_Counting.isDone())
        return alignment.width() == 1 ? companion::tr("1 column")
                                      : companion::tr("%L1 columns").arg(alignment.width());
    return companion::tr(m_Found.residues == 1 ? "%L1 of %L2 columns would go, with %L3 residue"
                                               : "%L1 of %L2 columns would go, with %L3 residues")
        .arg(m_Found.count)
        .arg(alignment.width())
        .arg(m_Found.residues);
}

bool GapColumnsBar::carryOut(TAMBO::Alignment &alignment)
{
    const unsigned long before = alignment.width();
    m_Tell(removeColumns(alignment, m_Found.columns, "Remove columns with gaps",
                         companion::tr("with more than %1 % gaps").arg(m_Limit->value())));
    return alignment.width() != before;
}

} // namespace companion
