// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectOperations.h"

#include "ChangeScope.h"
#include "Compound.h"
#include "CompoundState.h"
#include "Revisions.h"
#include "StoredObject.h"

#include <utility>

namespace TAMBO {

namespace {

class RenameEdit final : public Edit
{
public:
    RenameEdit(Compound &object, std::string name) : m_Object(object), m_Name(std::move(name)) { }

    std::unique_ptr<Edit> apply() override
    {
        auto inverse = std::make_unique<RenameEdit>(m_Object, m_Object.Name());
        StoredObject::from(&m_Object)->storeName(m_Name);
        return inverse;
    }
    std::size_t bytes() const override { return sizeof(*this) + m_Name.capacity(); }
    const char *kind() const override { return "rename"; }
    EditPart part() const override { return EditPart::Name; }
    Compound *subject() const override { return &m_Object; }
    bool actsOnWhole() const override { return true; }

private:
    Compound &m_Object;
    std::string m_Name;
};

class ObjectColorEdit final : public Edit
{
public:
    ObjectColorEdit(Compound &object, std::optional<Color> &slot)
        : m_Object(object), m_Slot(slot), m_Color(slot)
    { }

    std::unique_ptr<Edit> apply() override
    {
        auto inverse = std::make_unique<ObjectColorEdit>(m_Object, m_Slot);
        m_Slot = m_Color;
        growColorRevision();
        return inverse;
    }
    std::size_t bytes() const override { return sizeof(*this); }
    const char *kind() const override { return "color"; }
    EditPart part() const override { return EditPart::Display; }
    Compound *subject() const override { return &m_Object; }
    bool actsOnWhole() const override { return true; }

private:
    Compound &m_Object;
    std::optional<Color> &m_Slot;
    std::optional<Color> m_Color;
};

} // namespace

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
    std::string before = object.Name();
    if (before == name)
        return true;
    const ChangeScope scope;
    recordInverse(std::make_unique<RenameEdit>(object, std::move(before)));
    stored.storeName(name);
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
    }
    return true;
}

void assignColor(Compound &object, std::optional<Color> &slot, std::optional<Color> color)
{
    if (slot == color)
        return;
    const ChangeScope scope;
    recordInverse(std::make_unique<ObjectColorEdit>(object, slot));
    slot = color;
    growColorRevision();
}

void assignSelected(bool &flag, bool selected)
{
    if (flag == selected)
        return;
    const ChangeScope scope;
    flag = selected;
    growSelectionRevision();
}

} // namespace TAMBO
