// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureList.h"

#include "ObjectNames.h"
#include "PlainText.h"

#include <QContextMenuEvent>

#include <string>
#include <vector>

namespace structures {

StructureList::StructureList(StructureScene &scene, QWidget *parent)
    : QTreeWidget(parent), m_Scene(scene)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::itemChanged, this, &StructureList::take);
}

void StructureList::refresh()
{
    m_IsFilling = true;
    const auto &structures = m_Scene.structures();
    bool isSame = topLevelItemCount() == int(structures.size());
    for (int i = 0; isSame && i < topLevelItemCount(); ++i)
        isSame = topLevelItem(i)->childCount() ==
                 int(structures[std::size_t(i)]->molecule().chains.size());
    if (!isSame) {
        clear();
        for (const auto &structure : structures) {
            auto *const item = new QTreeWidgetItem(this);
            for (std::size_t c = 0; c < structure->molecule().chains.size(); ++c)
                new QTreeWidgetItem(item);
        }
    }
    std::vector<const TAMBO::Compound *> objects;
    objects.reserve(structures.size());
    for (const auto &structure : structures)
        objects.push_back(structure->object());
    const std::vector<std::string> names = TAMBO::ObjectNames::toldApart(objects);
    for (std::size_t i = 0; i < structures.size(); ++i) {
        QTreeWidgetItem *const item = topLevelItem(int(i));
        const ViewedStructure &structure = *structures[i];
        const QString name = QString::fromStdString(names[i]);
        item->setText(0, name);
        // The list is narrow, and what tells names apart is their end.
        item->setToolTip(0, TAMBO::plainToolTip(name));
        item->setCheckState(0, structure.isVisible() ? Qt::Checked : Qt::Unchecked);
        for (std::size_t c = 0; c < structure.molecule().chains.size(); ++c) {
            QTreeWidgetItem *const child = item->child(int(c));
            const TAMBO::Compound *const chain = structure.chain(std::uint32_t(c));
            child->setDisabled(structure.isLeftOut(std::uint32_t(c)));
            child->setText(0, tr("Chain %1").arg(QString::fromStdString(chain->Name())));
            child->setCheckState(0, structure.isChainHidden(std::uint32_t(c)) ? Qt::Unchecked
                                                                              : Qt::Checked);
        }
    }
    m_IsFilling = false;
}

std::optional<ListedPart> StructureList::partOf(QTreeWidgetItem *item) const
{
    if (!item)
        return std::nullopt;
    QTreeWidgetItem *const parent = item->parent();
    ListedPart part;
    part.structure = std::size_t(indexOfTopLevelItem(parent ? parent : item));
    if (part.structure >= m_Scene.structures().size())
        return std::nullopt;
    if (!parent)
        return part;
    part.chain = std::uint32_t(parent->indexOfChild(item));
    if (part.chain >= m_Scene.structures()[part.structure]->molecule().chains.size())
        return std::nullopt;
    return part;
}

void StructureList::take(QTreeWidgetItem *item)
{
    const auto part = m_IsFilling ? std::nullopt : partOf(item);
    if (part)
        emit checked(*part, item->checkState(0) == Qt::Checked);
}

void StructureList::contextMenuEvent(QContextMenuEvent *event)
{
    const bool isKey = event->reason() == QContextMenuEvent::Keyboard;
    QTreeWidgetItem *const item =
        isKey ? currentItem() : itemAt(viewport()->mapFromGlobal(event->globalPos()));
    if (const auto part = partOf(item))
        emit menuWanted(*part, isKey ? viewport()->mapToGlobal(visualItemRect(item).center())
                                     : event->globalPos());
}

} // namespace structures

#include "moc_StructureList.cpp"
