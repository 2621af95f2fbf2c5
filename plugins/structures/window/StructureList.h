// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ListedPart.h"
#include "StructureScene.h"

#include <QTreeWidget>

#include <optional>

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
    void checked(const structures::ListedPart &part, bool isShown);
    void menuWanted(const structures::ListedPart &part, const QPoint &position);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    // Nothing of no item.
    [[nodiscard]] std::optional<ListedPart> partOf(QTreeWidgetItem *item) const;
    void take(QTreeWidgetItem *item);

    StructureScene &m_Scene;
    bool m_IsFilling = false;
};

} // namespace structures
