// SPDX-License-Identifier: GPL-3.0-or-later
// The registered followers, called at the end of a step in the order in which they came.
#pragma once

#include "Edit.h"
#include "StepFollower.h"

#include <memory>
#include <vector>

namespace TAMBO {

class StepFollowers
{
public:
    [[nodiscard]] static StepFollowers &get();

    void add(StepFollower *follower) { m_Followers.push_back(follower); }
    void remove(StepFollower *follower) noexcept;
    [[nodiscard]] bool empty() const noexcept { return m_Followers.empty(); }

    // inverses: of the step under way, which grow meanwhile. Whoever registers meanwhile is not
    // called, and whoever has gone is not either.
    void call(const std::vector<std::unique_ptr<Edit>> &inverses) noexcept;

private:
    // Null where one has gone during a call.
    std::vector<StepFollower *> m_Followers;
    // Steps in which they are being called: a subscriber may make one.
    unsigned m_Calls = 0;
};

} // namespace TAMBO
