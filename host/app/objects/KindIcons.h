// SPDX-License-Identifier: GPL-3.0-or-later
// The small pictures that tell kinds of objects apart, with a lock on those that are locked.
#pragma once

#include "ObjectFacts.h"

#include <QIcon>

#include <map>
#include <utility>

namespace TAMBO::app {

class KindIcons
{
public:
    [[nodiscard]] const QIcon &icon(ObjectKind kind, bool locked);

private:
    std::map<std::pair<ObjectKind, bool>, QIcon> m_Icons;
};

} // namespace TAMBO::app
