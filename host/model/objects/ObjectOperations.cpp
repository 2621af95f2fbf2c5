// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectOperations.h"

#include "ChangeScope.h"
#include "Compound.h"
#include "CompoundState.h"
#include "MarkFollower.h"
#include "ObjectColorEdit.h"
#include "RenameEdit.h"
#include "Revisions.h"
#include "Space.h"
#include "StoredObject.h"

#include <utility>

namespace TAMBO {

bool renameObject(Compound &object, const std::string &wanted)
{
    if (stateOf(object) == nullptr || !mayChange(object))
        return false;
    StoredObject &stored = *StoredObject::from(&object);
    const std::string name = stored.allowedName(wanted);
    if (name != wanted)
        writeLog("\"" + wanted + "\" cannot be the name of a file, which an " + object.TypeName() +
                     "'s name is offered as; it is called \"" + name + "\".",
                 LogSeverity::Warning);
    if (object.Name() == name)
        return true;
    const ChangeScope scope;
    recordInverse(RenameEdit(object, name).apply());
    return true;
}

bool setObjectLocked(Compound &object, bool locked)
{
    CompoundState *const state = stateOf(object);
    if (state == nullptr)
        return false;
    if (state->isLocked != locked) {
        const ChangeScope scope;
        state->isLocked = locked;
        noteMarks(object);
    }
    return true;
}

bool isInTree(const Compound &object)
{
    const Compound *top = &object;
    while (top->Parent() != nullptr)
        top = top->Parent();
    return top == Space::instance();
}

void assignColor(Compound &object, std::optional<Color> &slot, std::optional<Color> color)
{
    if (slot == color)
        return;
    const ChangeScope scope;
    recordInverse(ObjectColorEdit(object, slot, color).apply());
}

void assignSelected(Compound &object, bool &flag, bool selected)
{
    if (flag == selected)
        return;
    const ChangeScope scope;
    flag = selected;
    growSelectionRevision();
    noteMarks(object);
}

} // namespace TAMBO
