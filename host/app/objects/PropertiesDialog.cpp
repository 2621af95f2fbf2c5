// SPDX-License-Identifier: GPL-3.0-or-later
#include "PropertiesDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace TAMBO::app {

namespace {

// In characters; what a program says may be longer.
constexpr qsizetype kLongestFact = 100;

} // namespace

PropertiesDialog::PropertiesDialog(const QString &name, const std::vector<Fact> &facts,
                                   QWidget *parent)
    : QDialog(parent), m_Facts(new QVBoxLayout)
{
    setWindowTitle(tr("Properties of %1").arg(name));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(m_Facts);
    layout->addStretch();
    layout->addWidget(buttons);
    addForm(facts);
    setMinimumWidth(360);
}

PropertiesDialog::~PropertiesDialog() = default;

void PropertiesDialog::add(const QString &heading, const std::vector<Fact> &facts)
{
    auto *label = new QLabel(heading);
    label->setTextFormat(Qt::PlainText);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    m_Facts->addSpacing(8);
    m_Facts->addWidget(label);
    addForm(facts);
}

void PropertiesDialog::addForm(const std::vector<Fact> &facts)
{
    auto *form = new QFormLayout;
    form->setHorizontalSpacing(16);
    for (const Fact &fact : facts) {
        auto *value = new QLabel(fact.second);
        value->setTextFormat(Qt::PlainText);
        value->setWordWrap(fact.second.size() > kLongestFact);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        form->addRow(fact.first + u':', value);
    }
    m_Facts->addLayout(form);
}

} // namespace TAMBO::app

#include "moc_PropertiesDialog.cpp"
