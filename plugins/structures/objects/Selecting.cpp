// SPDX-License-Identifier: GPL-3.0-or-later
#include "Selecting.h"

#include "DataPoint.h"
#include "Space.h"

namespace structures {

bool select(const std::vector<TAMBO::Compound *> &objects, Selecting how)
{
    TAMBO::Space *const space = TAMBO::Space::instance();
    DataPoint<TAMBO::Space> change(nullptr, space);
    if (!change.m_good)
        return false;
    if (how == Selecting::Only)
        for (auto object = space->begin(); object != space->end(); ++object)
            if ((*object)->Kind() != TAMBO::CompoundKind::Alignment)
                (*object)->SetSelected(false);
    for (TAMBO::Compound *const object : objects) {
        if (how == Selecting::Toggle)
            object->ToggleSelected();
        else
            object->SetSelected(true);
    }
    return true;
}

} // namespace structures
