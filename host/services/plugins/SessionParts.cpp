// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionParts.h"

#include "Compound.h"
#include "Logger.h"
#include "ObjectOperations.h"
#include "SessionPart.h"
#include "StoredObject.h"
#include "ValueName.h"

#include <QString>

#include <algorithm>
#include <utility>

namespace TAMBO::services {

namespace {

bool mayRegister(const std::string &name)
{
    std::string cause = nameProblem(name, "its name", SessionPart::kLongestName);
    if (cause.empty() && SessionParts::instance().find(name) != nullptr)
        cause = "there is one of this name";
    if (cause.empty())
        return true;
    Logger::Write(QString::fromStdString("The part \"" + shownName(name) +
                                         "\" of a plug-in is not kept: " + cause + '.'),
                  Logger::Severity::Warning);
    return false;
}

} // namespace

SessionParts::Keeper::~Keeper() = default;

SessionParts &SessionParts::instance()
{
    // Never destroyed: a part may be a static object of a plug-in that goes later.
    static auto *const parts = new SessionParts;
    return *parts;
}

bool SessionParts::has(const SessionPart &part) const
{
    return std::ranges::find(m_Parts, &part) != m_Parts.end();
}

SessionPart *SessionParts::find(const std::string &name) const
{
    const auto found = std::ranges::find_if(
        m_Parts, [&](const SessionPart *part) { return part->name() == name; });
    return found == m_Parts.end() ? nullptr : *found;
}

void SessionParts::add(SessionPart &part)
{
    m_Parts.push_back(&part);
    if (m_Keeper != nullptr)
        m_Keeper->partCame(part);
}

void SessionParts::remove(SessionPart &part)
{
    if (std::erase(m_Parts, &part) > 0 && m_Keeper != nullptr)
        m_Keeper->partGoes(part);
}

void SessionParts::change(SessionPart &part)
{
    if (m_Keeper != nullptr && has(part))
        m_Keeper->partChanged(part);
}

} // namespace TAMBO::services

using namespace TAMBO::services;

SessionPart::SessionPart(std::string name) : m_Name(std::move(name)), m_IsGood(mayRegister(m_Name))
{
    if (m_IsGood)
        SessionParts::instance().add(*this);
}

SessionPart::~SessionPart()
{
    SessionParts::instance().remove(*this);
}

void SessionPart::clear() { }

void SessionPart::hasChanged()
{
    SessionParts::instance().change(*this);
}

std::uint32_t SessionPart::NumberOf(const TAMBO::Compound *object)
{
    return object == nullptr ? 0 : TAMBO::identityOf(*object);
}

TAMBO::Compound *SessionPart::ObjectOf(std::uint32_t number)
{
    const SessionParts::Finder &find = SessionParts::instance().finder();
    TAMBO::Compound *const object = find ? find(number) : nullptr;
    return object != nullptr && TAMBO::isInTree(*object) ? object : nullptr;
}
