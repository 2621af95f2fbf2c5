// SPDX-License-Identifier: GPL-3.0-or-later
#include "PropertiesDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace TAMBO::app {

PropertiesDialog::PropertiesDialog(const QString &name, const std::vector<Fact> &facts,
                                   QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Properties of %1").arg(name));
    auto *form = new QFormLayout;
    form->setHorizontalSpacing(16);
    for (const Fact &fact : facts) {
        auto *value = new QLabel(fact.second);
        value->setTextFormat(Qt::PlainText);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        form->addRow(fact.first + u':', value);
    }
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addStretch();
    layout->addWidget(buttons);
    setMinimumWidth(360);
}

PropertiesDialog::~PropertiesDialog() = default;

} // namespace TAMBO::app

#include "moc_PropertiesDialog.cpp"
