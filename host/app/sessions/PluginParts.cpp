// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginParts.h"

#include "KeptValues.h"
#include "PartValue.h"
#include "SessionPart.h"

#include <QMetaObject>

#include <optional>
#include <utility>
#include <vector>

namespace TAMBO::app {

using services::SessionParts;

PluginParts::PluginParts(sessions::KeptValues &values) : m_Values(values)
{
    SessionParts::instance().setKeeper(this);
    for (SessionPart *const part : SessionParts::instance().all())
        partCame(*part);
}

PluginParts::~PluginParts()
{
    SessionParts::instance().setKeeper(nullptr);
    for (const auto &[name, value] : m_Parts)
        m_Values.remove(*value);
}

void PluginParts::partCame(SessionPart &part)
{
    std::unique_ptr<PartValue> &value = m_Parts[part.name()];
    if (value == nullptr) {
        value = std::make_unique<PartValue>(part.name());
        std::optional<std::string> kept = m_Values.takeUnknown(value->name());
        if (kept)
            value->keep(*std::move(kept));
        m_Values.add(*value);
    }
    value->setPart(&part);
    if (value->isWaiting())
        QMetaObject::invokeMethod(this, &PluginParts::restoreWaiting, Qt::QueuedConnection);
}

void PluginParts::partGoes(SessionPart &part)
{
    m_Parts.at(part.name())->setPart(nullptr);
}

void PluginParts::partChanged(SessionPart &part)
{
    m_Parts.at(part.name())->changed();
}

// One that is restored may make others, which wait for a call of their own.
void PluginParts::restoreWaiting()
{
    std::vector<PartValue *> waiting;
    for (const auto &[name, value] : m_Parts) {
        if (value->isWaiting())
            waiting.push_back(value.get());
    }
    for (PartValue *const value : waiting)
        value->restoreLate();
}

} // namespace TAMBO::app

#include "moc_PluginParts.cpp"
