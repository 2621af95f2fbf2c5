// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionSummary.h"

#include "Compound.h"
#include "ObjectSpace.h"

#include <QStringList>

namespace TAMBO::app {

namespace {

constexpr qsizetype kMostNames = 5;

} // namespace

std::string SessionSummary::store() const
{
    QStringList names;
    for (std::size_t i = m_Space.objectCount(); i > 0 && names.size() < kMostNames; --i)
        names << QString::fromStdString(m_Space.object(i - 1)->Name());
    const std::size_t others = m_Space.objectCount() - std::size_t(names.size());
    QString text = names.join(QStringLiteral(", "));
    if (others > 0)
        text += others == 1 ? tr(" and 1 other") : tr(" and %1 others").arg(others);
    return text.toStdString();
}

} // namespace TAMBO::app
