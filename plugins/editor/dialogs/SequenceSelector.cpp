// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceSelector.h"

#include "Check.h"
#include "Compound.h"
#include "WidgetFactory.h"

#include <QBoxLayout>
#include <QListWidget>

#include <algorithm>

namespace {

// Appends a row per candidate and ticks those that are chosen.
class Adder
{
public:
    Adder(QListWidget *box, const std::vector<TAMBO::Compound *> &chosen)
        : Box(box), m_Chosen(chosen)
    { }

    void operator()(TAMBO::Compound *candidate)
    {
        auto *row = new QListWidgetItem(QString::fromStdString(candidate->GetFQName()), Box);
        TAMBO_CHECK_PTR(row, "SequenceSelector", 154);
        row->setSelected(std::ranges::find(m_Chosen, candidate) != m_Chosen.end());
        ++Index;
        TAMBO_ASSERT(Box->count() == Index, "SequenceSelector", 157);
    }

private:
    // Named as the check below reports them.
    QListWidget *Box;
    const std::vector<TAMBO::Compound *> &m_Chosen;
    int Index = 0;
};

// Appends the ticked candidates to the chosen ones.
class Feedback
{
public:
    Feedback(const QListWidget *box, std::vector<TAMBO::Compound *> &chosen)
        : m_Box(box), m_Chosen(chosen)
    { }

    void operator()(TAMBO::Compound *candidate)
    {
        if (m_Box->item(m_Index)->isSelected())
            m_Chosen.push_back(candidate);
        ++m_Index;
    }

private:
    int m_Index = 0;
    const QListWidget *m_Box;
    std::vector<TAMBO::Compound *> &m_Chosen;
};

} // namespace

namespace ZEP {

SequenceSelector::SequenceSelector(const std::vector<TAMBO::Compound *> &candidates,
                                   std::vector<TAMBO::Compound *> &chosen, QWidget *parent,
                                   const QString &title)
    : BaseDialog("Select " + title, QSize(200, 150), 3, 3, "No help", false, true, parent, nullptr),
      m_Candidates(candidates),
      m_Chosen(chosen)
{
    QBoxLayout *layout = GetTopLevelLayout();
    TAMBO_CHECK_PTR(layout, "SequenceSelector", 83);
    m_Box = WidgetFactory::CreateListbox(this);
    m_Box->setSelectionMode(QAbstractItemView::MultiSelection);
    populate();
    layout->addWidget(m_Box, 3);
    StartWidget();
    CreateTooltips();
}

SequenceSelector::~SequenceSelector() = default;

void SequenceSelector::populate()
{
    std::for_each(m_Candidates.begin(), m_Candidates.end(), Adder(m_Box, m_Chosen));
}

void SequenceSelector::CreateTooltips()
{
    if (ShowToolTips())
        m_Box->setToolTip("Select wanted sequences.");
}

void SequenceSelector::Apply()
{
    m_Chosen.clear();
    std::for_each(m_Candidates.begin(), m_Candidates.end(), Feedback(m_Box, m_Chosen));
}

} // namespace ZEP

#include "moc_SequenceSelector.cpp"
