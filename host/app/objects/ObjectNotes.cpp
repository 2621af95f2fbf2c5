// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectNotes.h"

#include "Compound.h"
#include "StoredObject.h"

namespace TAMBO::app {

void ObjectNotes::set(const Compound &object, ObjectNote note)
{
    m_Notes[identityOf(object)] = std::move(note);
    ++m_Revision;
}

const ObjectNote *ObjectNotes::of(const Compound &object) const
{
    const auto found = m_Notes.find(identityOf(object));
    return found == m_Notes.end() ? nullptr : &found->second;
}

void ObjectNotes::setAll(Notes notes)
{
    m_Notes = std::move(notes);
    ++m_Revision;
}

} // namespace TAMBO::app
