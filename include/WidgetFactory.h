// SPDX-License-Identifier: GPL-3.0-or-later
// Controls in the style of the workbench.
#pragma once

#include "Export.h"

class QComboBox;
class QListWidget;
class QWidget;

class TAMBO_API WidgetFactory
{
public:
    static QListWidget *CreateListbox(QWidget *parent);
    static QComboBox *CreateComboBox(QWidget *parent, bool editable);
};
