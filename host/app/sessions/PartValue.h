// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins keep with the work under one name, whether the part is there or not.
#pragma once

#include "KeptValue.h"
#include "SessionParts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

class SessionPart;

namespace TAMBO::app {

class PartValue final : public sessions::KeptValue
{
public:
    explicit PartValue(std::string part) : m_Part(std::move(part)) { }
    ~PartValue() override;

    [[nodiscard]] std::string name() const override { return "plugin:" + m_Part; }
    // The part's, or what was kept last when nobody can be asked.
    [[nodiscard]] std::string store() const override;
    [[nodiscard]] Result<void> load(std::string_view content, const ObjectIndex &objects) override;
    void clear() override;
    [[nodiscard]] std::optional<std::uint64_t> revision() const override { return m_Revision; }

    // Null when it goes.
    void setPart(SessionPart *part);
    void changed() noexcept { ++m_Revision; }
    // For a part that comes later than the work.
    void keep(std::string state);
    [[nodiscard]] bool isWaiting() const noexcept { return m_IsWaiting; }
    // Gives the part what waits for it.
    void restoreLate();

private:
    // The part does not hold the state: it has not been given it, or has failed.
    [[nodiscard]] bool isPartAsked() const noexcept;
    void restore(const services::SessionParts::Finder &finder);
    template <typename Task> void call(const char *what, Task task) const;

    std::string m_Part;
    SessionPart *m_There = nullptr;
    mutable std::string m_State;
    // The part is to get it.
    bool m_IsWaiting = false;
    mutable bool m_HasFailed = false;
    mutable bool m_IsTooLong = false;
    std::uint64_t m_Revision = 0;
};

} // namespace TAMBO::app
