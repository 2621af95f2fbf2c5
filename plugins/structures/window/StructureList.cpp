// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureList.h"

#include <algorithm>

namespace structures {

namespace {

bool isChainHidden(const ViewedStructure &structure, const MoleculeChain &chain)
{
    const std::vector<bool> &hidden = structure.hidden();
    if (hidden.empty() || chain.residueCount == 0)
        return false;
    const auto begin = hidden.begin() + std::ptrdiff_t(chain.firstResidue);
    return std::all_of(begin, begin + std::ptrdiff_t(chain.residueCount), [](bool h) { return h; });
}

} // namespace

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
    for (std::size_t i = 0; i < structures.size(); ++i) {
        QTreeWidgetItem *const item = topLevelItem(int(i));
        const ViewedStructure &structure = *structures[i];
        item->setText(0, QString::fromStdString(structure.object()->Name()));
        item->setCheckState(0, structure.isVisible() ? Qt::Checked : Qt::Unchecked);
        for (std::size_t c = 0; c < structure.molecule().chains.size(); ++c) {
            QTreeWidgetItem *const child = item->child(int(c));
            const TAMBO::Compound *const chain = structure.chain(std::uint32_t(c));
            child->setText(0, tr("Chain %1").arg(QString::fromStdString(chain->Name())));
            child->setCheckState(0, isChainHidden(structure, structure.molecule().chains[c])
                                        ? Qt::Unchecked
                                        : Qt::Checked);
        }
    }
    m_IsFilling = false;
}

void StructureList::take(QTreeWidgetItem *item)
{
    if (m_IsFilling)
        return;
    QTreeWidgetItem *const parent = item->parent();
    const auto index = std::size_t(indexOfTopLevelItem(parent ? parent : item));
    if (index >= m_Scene.structures().size())
        return;
    ViewedStructure &structure = *m_Scene.structures()[index];
    const bool isShown = item->checkState(0) == Qt::Checked;
    if (!parent) {
        structure.setVisible(isShown);
    } else {
        const auto chainIndex = std::size_t(parent->indexOfChild(item));
        if (chainIndex >= structure.molecule().chains.size())
            return;
        const MoleculeChain &chain = structure.molecule().chains[chainIndex];
        std::vector<bool> hidden = structure.hidden();
        hidden.resize(structure.molecule().residues.size());
        std::fill_n(hidden.begin() + std::ptrdiff_t(chain.firstResidue), chain.residueCount,
                    !isShown);
        structure.setHidden(std::move(hidden));
    }
    emit changed();
}

} // namespace structures

#include "moc_StructureList.cpp"
