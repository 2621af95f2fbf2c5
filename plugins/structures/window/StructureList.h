// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "StructureScene.h"

#include <QTreeWidget>

namespace structures {

// Structures and their chains, with boxes for those that are to be seen.
class StructureList final : public QTreeWidget
{
    Q_OBJECT

public:
    StructureList(StructureScene &scene, QWidget *parent);

    // What the scene has now.
    void refresh();

signals:
    // Others are to be seen than before.
    void changed();

private:
    void take(QTreeWidgetItem *item);

    StructureScene &m_Scene;
    bool m_IsFilling = false;
};

} // namespace structures
