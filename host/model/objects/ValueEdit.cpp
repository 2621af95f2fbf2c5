// SPDX-License-Identifier: GPL-3.0-or-later
#include "ValueEdit.h"

#include "Compound.h"
#include "PluginValues.h"
#include "StoredObject.h"
#include "TextBytes.h"
#include "ValueName.h"
#include "ValueStore.h"

namespace TAMBO {

std::unique_ptr<Edit> ValueEdit::apply()
{
    std::optional<std::string> before =
        ValueStore::get().exchange(m_Object, m_Plugin, m_Key, std::move(m_Value));
    return std::make_unique<ValueEdit>(m_Object, std::move(m_Plugin), std::move(m_Key),
                                       std::move(before));
}

bool ValueEdit::absorb(const Edit &next)
{
    const auto *const same = dynamic_cast<const ValueEdit *>(&next);
    return same != nullptr && &same->m_Object == &m_Object && same->m_Plugin == m_Plugin &&
           same->m_Key == m_Key;
}

std::size_t ValueEdit::bytes() const
{
    return sizeof(*this) + textBytes(m_Plugin) + textBytes(m_Key) +
           (m_Value ? textBytes(*m_Value) : 0);
}

void ValueEdit::store(const std::string *value, EditWriter &out) const
{
    out.tag(EditTag::Value);
    out.reference(m_Object);
    out.text(m_Plugin);
    out.text(m_Key);
    out.flag(value != nullptr);
    if (value != nullptr)
        out.text(*value);
}

void ValueEdit::store(EditWriter &out) const
{
    store(m_Value ? &*m_Value : nullptr, out);
}

void ValueEdit::storeInverse(EditWriter &out) const
{
    store(ValueStore::get().find(m_Object, m_Plugin, m_Key), out);
}

bool ValueEdit::fits() const
{
    return stateOf(m_Object) != nullptr && m_Object.Kind() != CompoundKind::Space &&
           (!m_Value || m_Value->size() <= PluginValues::kLongestValue) &&
           valueNameProblem(m_Plugin, PluginValues::kLongestName, m_Key, PluginValues::kLongestKey)
               .empty();
}

LoadedEdit ValueEdit::load(EditReader &in)
{
    Compound *const object = in.reference();
    const std::string_view plugin = in.text();
    const std::string_view key = in.text();
    std::optional<std::string> value;
    if (in.flag())
        value = in.text();
    if (in.failed())
        return in.failure();
    return LoadedEdit(std::make_unique<ValueEdit>(*object, std::string(plugin), std::string(key),
                                                  std::move(value)));
}

} // namespace TAMBO
