// SPDX-License-Identifier: GPL-3.0-or-later
// A step that is done again from a record, as one step of undo and without anybody who would add to
// it. Not inside a guard.
#pragma once

#include "ChangeScope.h"

#include <memory>
#include <string>

namespace TAMBO {

class Edit;

class [[nodiscard]] StepReplay
{
public:
    explicit StepReplay(const std::string &name);
    ~StepReplay() = default;
    StepReplay(const StepReplay &) = delete;
    StepReplay &operator=(const StepReplay &) = delete;

    void apply(Edit &edit);
    // What comes next was added by followers.
    void endOwn() noexcept;
    // What has been applied is taken back, and no step is recorded.
    void takeBack();

private:
    ChangeScope m_Scope;
};

} // namespace TAMBO
