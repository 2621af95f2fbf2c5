// SPDX-License-Identifier: GPL-3.0-or-later
#include "TwinTips.h"

#include "ObjectTwins.h"
#include "PlainText.h"
#include "Space.h"

#include <QEvent>
#include <QHash>
#include <QListWidget>

#include <algorithm>

namespace TAMBO::services {

namespace {

// In the order of the tree. Lists are of one kind of objects, mostly of alignments.
ObjectTwins::Objects objectsCalled(const std::string &name, std::size_t count)
{
    ObjectTwins::Objects all;
    ObjectTwins::Objects alignments;
    for (const Compound *const object : *Space::instance()) {
        if (object == nullptr || object->GetFQName() != name)
            continue;
        all.push_back(object);
        if (object->Kind() == CompoundKind::Alignment)
            alignments.push_back(object);
    }
    return alignments.size() == count ? alignments : all;
}

} // namespace

TwinTips::TwinTips(QListWidget &list) : QObject(&list), m_List(list)
{
    list.installEventFilter(this);
}

bool TwinTips::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &m_List && event->type() == QEvent::Show)
        describeTwins();
    return false;
}

void TwinTips::describeTwins()
{
    QHash<QString, QList<QListWidgetItem *>> rows;
    for (int row = 0; row < m_List.count(); ++row)
        rows[m_List.item(row)->text()].append(m_List.item(row));
    for (auto twins = rows.cbegin(); twins != rows.cend(); ++twins) {
        if (twins->size() < 2)
            continue;
        const ObjectTwins::Objects objects =
            objectsCalled(twins.key().toStdString(), std::size_t(twins->size()));
        // Which is which is known by their order alone.
        if (objects.size() != std::size_t(twins->size()))
            continue;
        const std::vector<QString> differences = ObjectTwins::differences(
            objects, [](const Compound &object) { return object.GetFQName(); });
        for (std::size_t i = 0; i < objects.size(); ++i)
            twins->at(qsizetype(i))
                ->setToolTip(plainToolTip(ObjectTwins::label(twins.key(), differences[i])));
    }
}

} // namespace TAMBO::services
