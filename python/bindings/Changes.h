// SPDX-License-Identifier: GPL-3.0-or-later
// Changes as the windows make them: inside a guard, each a step of undo unless a step is open.
#pragma once

#include "ObjectGuard.h"
#include "ProcessModel.h"

namespace TAMBO::script {

// Arguments have been looked at before. What the model refuses is thrown afterwards.
template <typename T, typename Change>
void changed(T &object, const Change &change, Publisher::ActionType action = Publisher::Update)
{
    ProcessModel &model = ProcessModel::get();
    model.clearRefusal();
    bool isGranted = false;
    {
        const ObjectGuard guard(action, object);
        isGranted = guard.m_good;
        if (isGranted) {
            change(object);
            // Of a part that is locked. The end of the step, which may be far, tells nothing of it
            // when something else was done.
            model.hearPart();
        }
    }
    model.settle();
    if (!isGranted)
        throw RefusedError("nothing can be changed while changes are being told");
}

} // namespace TAMBO::script
