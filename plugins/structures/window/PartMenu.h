// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ListedPart.h"

#include <QMenu>

namespace structures {

class StyleCommands;

// What can be done with a structure or a chain of the list. Nothing of it selects anything.
class PartMenu final : public QMenu
{
    Q_OBJECT

public:
    PartMenu(StyleCommands &styles, const ListedPart &part, QWidget *parent);

signals:
    void centreWanted();
};

} // namespace structures
