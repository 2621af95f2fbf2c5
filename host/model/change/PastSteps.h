// SPDX-License-Identifier: GPL-3.0-or-later
// The steps that a recorder can take back, for whoever wants to know what they have changed.
#pragma once

#include "Edit.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace TAMBO {

class Compound;

struct PastStep
{
    // Of its changes, in their order; taking it back applies them from the last to the first.
    std::span<const std::unique_ptr<Edit>> inverses;
    // As the user reads it.
    std::function<std::string()> name;
    // How many steps were done before it, those included that are not known any more.
    std::size_t index = 0;
    // False of edits that were made of bytes and have not been applied yet: whether they fit is to
    // be asked.
    bool isTrusted = true;
};

// A base of recorders that keep their steps.
class PastSteps
{
public:
    PastSteps(const PastSteps &) = delete;
    PastSteps &operator=(const PastSteps &) = delete;

    // Calls visit for each, the latest first, until one call gives false.
    using Visitor = std::function<bool(const PastStep &step)>;
    virtual void forEachPastStep(const Visitor &visit) const = 0;
    // After how many steps the object was opened, or saved last.
    [[nodiscard]] virtual std::size_t stepsToSaved(const Compound &object) const = 0;

protected:
    PastSteps() = default;
    ~PastSteps() = default;
};

} // namespace TAMBO
