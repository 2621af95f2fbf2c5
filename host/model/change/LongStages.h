// SPDX-License-Identifier: GPL-3.0-or-later
// Long works one after the other that the user sees as one: none of them may take long enough to be
// worth showing by itself.
#pragma once

#include <cstddef>

namespace TAMBO {

class [[nodiscard]] LongStages
{
public:
    // what: for the user, in place of what the works say. Inside of another long work it does
    // nothing, as that is the one that is shown.
    LongStages(const char *what, std::size_t stages);
    ~LongStages();
    LongStages(const LongStages &) = delete;
    LongStages &operator=(const LongStages &) = delete;

    // Works that begin from now on are of the next stage.
    void next() noexcept { ++m_Stage; }

    // Those to which a work that begins now belongs, unless it is inside of another one; null
    // outside of any.
    [[nodiscard]] static const LongStages *entered() noexcept;
    [[nodiscard]] const char *what() const noexcept { return m_What; }
    // Of all stages, when that share of the present one is done.
    [[nodiscard]] double shareOf(double share) const noexcept;

private:
    const char *m_What;
    std::size_t m_Stages;
    std::size_t m_Stage = 0;
    bool m_HasWork = false;
};

} // namespace TAMBO
