// SPDX-License-Identifier: GPL-3.0-or-later
#include "GroupBar.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "Reordering.h"
#include "Texts.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include <utility>

namespace companion {

namespace {

constexpr int kGroupMargin = 6;
constexpr int kPatternLetters = 26;

} // namespace

GroupBar::GroupBar(TAMBO::AlignmentWindow &window, Tell tell)
    : CountingBar(window, companion::tr("Group Rows"), QStringLiteral("GroupRows")),
      m_Tell(std::move(tell)),
      m_Pattern({}, NameLanguage::Plain),
      m_Looking(
          window,
          [this](const TAMBO::Alignment &) {
              m_Groups.clear();
              m_Known.clear();
              m_Found = 0;
          },
          [this](const TAMBO::Alignment &alignment, unsigned long row) {
              look(QString::fromStdString(alignment.GetSeqName(row)));
              return true;
          }),
      m_Name(new QLineEdit),
      m_Language(new QComboBox)
{
    using companion::tr;
    auto *const label = new QLabel(tr("&Group rows by name:"));
    label->setContentsMargins(kGroupMargin, 0, kGroupMargin, 0);
    label->setBuddy(m_Name);
    m_Name->setAccessibleName(tr("What the names of a group have in common"));
    m_Name->setToolTip(tr("Rows with such a name come together at the place of the first one. With "
                          "a part in parentheses, as in ^(\\w+)_, a regular expression makes a "
                          "group of each text that the part stands for"));
    m_Name->setPlaceholderText(tr("name"));
    m_Name->setMaximumWidth(kPatternLetters * m_Name->fontMetrics().averageCharWidth());
    m_Language->addItems({tr("plain text"), tr("* and ?"), tr("regular expression")});
    m_Language->setAccessibleName(tr("How the name is written"));
    m_Language->setToolTip(m_Language->accessibleName());
    addControls({label, m_Name, m_Language}, tr("Group"), tr("Bring the rows together (Enter)"));
    connect(m_Name, &QLineEdit::textChanged, this, &GroupBar::countAnew);
    connect(m_Language, &QComboBox::currentIndexChanged, this, &GroupBar::countAnew);
}

GroupBar::~GroupBar() = default;

bool GroupBar::beginCount()
{
    m_Pattern = NamePattern(m_Name->text(), static_cast<NameLanguage>(m_Language->currentIndex()));
    m_Looking.reset();
    return m_Pattern.mistake().isEmpty() && !m_Name->text().isEmpty();
}

void GroupBar::look(const QString &name)
{
    const std::optional<QString> part = m_Pattern.partOf(name);
    if (!part) {
        m_Groups.push_back(kNoGroup);
        return;
    }
    ++m_Found;
    const auto known = m_Known.constFind(*part);
    if (known != m_Known.cend()) {
        m_Groups.push_back(*known);
        return;
    }
    const auto group = static_cast<std::uint32_t>(m_Known.size());
    m_Known.insert(*part, group);
    m_Groups.push_back(group);
}

QString GroupBar::countText(const TAMBO::Alignment &alignment) const
{
    if (!m_Pattern.mistake().isEmpty())
        return m_Pattern.mistake();
    if (m_Name->text().isEmpty())
        return {};
    const QString rows = companion::tr("%L1 of %L2 rows").arg(m_Found).arg(alignment.height());
    return m_Pattern.hasPart() ? companion::tr("%1 in %L2 groups").arg(rows).arg(m_Known.size())
                               : rows;
}

bool GroupBar::carryOut(TAMBO::Alignment &alignment)
{
    using companion::tr;
    if (m_Found == 0) {
        m_Tell(tr("The rows stay as they are: no name is like “%1”.").arg(m_Name->text()));
        return false;
    }
    const QString what = countText(alignment);
    switch (reorder(alignment, grouped(m_Groups), "Group rows by name")) {
    case Reordered::Not:
        m_Tell(tr("The rows stay as they are: they stand together already."));
        return false;
    case Reordered::Refused:
        m_Tell(tr("The rows stay as they are: the alignment cannot be changed now."));
        return false;
    case Reordered::Done:
        break;
    }
    m_Tell(tr("Grouped by name: %1.").arg(what));
    return true;
}

} // namespace companion
