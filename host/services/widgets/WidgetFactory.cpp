// SPDX-License-Identifier: GPL-3.0-or-later
#include "WidgetFactory.h"

#include "TwinTips.h"

#include <QComboBox>
#include <QListWidget>

QListWidget *WidgetFactory::CreateListbox(QWidget *parent)
{
    auto *list = new QListWidget(parent);
    // Rows of one height keep lists of thousands of names quick.
    list->setUniformItemSizes(true);
    list->setAlternatingRowColors(true);
    list->setTextElideMode(Qt::ElideMiddle);
    new TAMBO::services::TwinTips(*list);
    return list;
}

QComboBox *WidgetFactory::CreateComboBox(QWidget *parent, bool editable)
{
    auto *box = new QComboBox(parent);
    box->setEditable(editable);
    box->setMaxVisibleItems(20);
    return box;
}
