// SPDX-License-Identifier: GPL-3.0-or-later
#include "NamedObjects.h"

#include "Changes.h"
#include "DataMaker.h"
#include "ObjectOperations.h"
#include "Space.h"

namespace TAMBO::script {

std::string nameOf(const Compound &object)
{
    return object.Name();
}

void rename(Compound &object, const std::string &name)
{
    if (name.empty())
        throw py::value_error("a name is empty");
    changed(object, [&](Compound &changing) { renameObject(changing, name); });
}

bool isLocked(const Compound &object)
{
    return object.IsLocked();
}

void lock(Compound &object, bool locked)
{
    setObjectLocked(object, locked);
    ProcessModel::get().settle();
}

void remove(Compound &object)
{
    if (object.Parent() != Space::instance())
        throw RefusedError(object.Name() + " is a part of another object");
    changed(
        object, [](Compound &going) { DataMaker::Destroy(&going); }, Publisher::Delete);
}

} // namespace TAMBO::script
