// SPDX-License-Identifier: GPL-3.0-or-later
// Makes a value of the session of each part that plug-ins register. A part that comes later than
// the session gets what has been waiting for it from the event loop, when it is complete.
#pragma once

#include "SessionParts.h"

#include <QObject>

#include <map>
#include <memory>
#include <string>

namespace TAMBO::sessions {
class KeptValues;
}

namespace TAMBO::app {

class PartValue;

class PluginParts final : public QObject, private services::SessionParts::Keeper
{
    Q_OBJECT

public:
    // Those included that are registered already.
    explicit PluginParts(sessions::KeptValues &values);
    ~PluginParts() override;

private:
    void partCame(SessionPart &part) override;
    void partGoes(SessionPart &part) override;
    void partChanged(SessionPart &part) override;
    void restoreWaiting();

    sessions::KeptValues &m_Values;
    // What a part that has gone has kept waits for the next one of its name.
    std::map<std::string, std::unique_ptr<PartValue>> m_Parts;
};

} // namespace TAMBO::app
