// SPDX-License-Identifier: GPL-3.0-or-later
// The marks of the objects that were marked otherwise since the work began: those of all others are
// in what is kept of the objects themselves.
#pragma once

#include "KeptValue.h"
#include "MarkList.h"
#include "ObjectIndex.h"

#include <string>
#include <utility>
#include <vector>

namespace TAMBO {
class Compound;
class ObjectSpace;
class StoredObject;
} // namespace TAMBO

namespace TAMBO::sessions {

class MarkedObjects final : public KeptValue
{
public:
    // When so many have changed since the last look, all that stand in Space are looked at, which
    // takes less time than to note each of them; so many at once.
    static constexpr std::size_t kMany = 4096;

    // Of those objects whose marks steps of undo change as well, or of the others.
    MarkedObjects(std::string name, bool followsSteps, ObjectSpace &space)
        : m_Name(std::move(name)), m_FollowsSteps(followsSteps), m_Space(space)
    { }

    // The marks of one of them may be others now.
    void note(StoredObject &object);

    [[nodiscard]] std::string name() const override { return m_Name; }
    [[nodiscard]] std::string store() const override;
    [[nodiscard]] Result<void> load(std::string_view content, const ObjectIndex &objects) override;
    [[nodiscard]] bool followsSteps() const override { return m_FollowsSteps; }
    [[nodiscard]] std::optional<std::uint64_t> revision() const override { return m_Revision; }
    [[nodiscard]] bool prepare() override;
    void clear() override;

private:
    // At some more of all. False when nothing of that is left.
    bool lookOn() const;
    void collect(StoredObject &object, std::vector<const StoredObject *> &out) const;

    const std::string m_Name;
    const bool m_FollowsSteps;
    ObjectSpace &m_Space;
    std::uint64_t m_Revision = 0;
    // Up to the last look.
    mutable MarkList m_List;
    // Since then.
    mutable ObjectIndex m_Noted;
    mutable bool m_AreMany = false;
    // Of the objects in Space, when all are looked at: the next one, and the one before it, which
    // others may have taken the place of.
    mutable std::size_t m_Next = 0;
    mutable const Compound *m_Last = nullptr;
};

} // namespace TAMBO::sessions
