// SPDX-License-Identifier: GPL-3.0-or-later
#include "ControlNames.h"

#include "Texts.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTableView>
#include <QToolBar>

namespace companion {

namespace {

void name(QWidget &widget, const QString &text)
{
    if (widget.accessibleName().isEmpty())
        widget.setAccessibleName(text);
}

} // namespace

void nameInnerControls(QWidget &all)
{
    for (QLineEdit *const field : all.findChildren<QLineEdit *>()) {
        const QWidget *const around = field->parentWidget();
        if (qobject_cast<const QComboBox *>(around) != nullptr ||
            qobject_cast<const QAbstractSpinBox *>(around) != nullptr)
            name(*field, around->accessibleName());
    }
    for (QAbstractButton *const button : all.findChildren<QAbstractButton *>()) {
        if (qobject_cast<const QTableView *>(button->parentWidget()) != nullptr)
            name(*button, tr("Select all rows"));
        else if (button->objectName() == QStringLiteral("qt_toolbar_ext_button"))
            name(*button, tr("What has no room"));
    }
}

} // namespace companion
