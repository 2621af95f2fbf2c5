// SPDX-License-Identifier: GPL-3.0-or-later
// The names of some objects, for people who ask themselves later what a session was.
#pragma once

#include "KeptValue.h"

#include <QCoreApplication>

namespace TAMBO {
class ObjectSpace;
}

namespace TAMBO::app {

class SessionSummary final : public sessions::KeptValue
{
    Q_DECLARE_TR_FUNCTIONS(TAMBO::app::SessionSummary)

public:
    // Of the value in a store.
    static constexpr std::string_view kName = "summary";

    explicit SessionSummary(const ObjectSpace &space) : m_Space(space) { }

    [[nodiscard]] std::string name() const override { return std::string(kName); }
    [[nodiscard]] bool isForFiles() const override { return false; }
    [[nodiscard]] std::string store() const override;
    [[nodiscard]] Result<void> load(std::string_view, const ObjectIndex &) override { return {}; }

private:
    const ObjectSpace &m_Space;
};

} // namespace TAMBO::app
