// SPDX-License-Identifier: GPL-3.0-or-later
// Which parts of plug-ins are registered, for whoever keeps the user's work.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class SessionPart;

namespace TAMBO {
class Compound;
}

namespace TAMBO::services {

class SessionParts
{
public:
    // Keeps their states; all calls may come from the constructor and the destructor of a part.
    class Keeper
    {
    public:
        virtual ~Keeper();
        Keeper(const Keeper &) = delete;
        Keeper &operator=(const Keeper &) = delete;

        virtual void partCame(SessionPart &part) = 0;
        virtual void partGoes(SessionPart &part) = 0;
        virtual void partChanged(SessionPart &part) = 0;

    protected:
        Keeper() = default;
    };

    static SessionParts &instance();

    // Of that name there is none yet.
    void add(SessionPart &part);
    // Ignores one that is not registered, here and below.
    void remove(SessionPart &part);
    void change(SessionPart &part);
    [[nodiscard]] SessionPart *find(const std::string &name) const;
    [[nodiscard]] const std::vector<SessionPart *> &all() const noexcept { return m_Parts; }

    // Null for none.
    void setKeeper(Keeper *keeper) noexcept { m_Keeper = keeper; }

    // The objects by their numbers, while a state is restored; empty otherwise.
    using Finder = std::function<Compound *(std::uint32_t number)>;
    void setFinder(Finder finder) { m_Finder = std::move(finder); }
    [[nodiscard]] const Finder &finder() const noexcept { return m_Finder; }

private:
    [[nodiscard]] bool has(const SessionPart &part) const;

    std::vector<SessionPart *> m_Parts;
    Keeper *m_Keeper = nullptr;
    Finder m_Finder;
};

} // namespace TAMBO::services
