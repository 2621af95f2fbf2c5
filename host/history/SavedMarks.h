// SPDX-License-Identifier: GPL-3.0-or-later
// At which position of the history each object was last saved.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

namespace TAMBO {

class Compound;
class HistoryStep;

// An object that was never saved counts as saved at the beginning.
class SavedMarks
{
public:
    using Steps = std::vector<HistoryStep>;

    void mark(const Compound &object, std::size_t position) { m_Positions[&object] = position; }
    // None: the state that was saved cannot be reached any more.
    [[nodiscard]] std::optional<std::size_t> position(const Compound &object) const;
    // Appends the objects whose saved state the steps do not lead to any more.
    void appendUnreachable(std::vector<const Compound *> &out) const;
    void clear() { m_Positions.clear(); }

    // Before the first step is dropped.
    void dropFirst(const Steps &steps);
    // Before the steps from size on are dropped.
    void dropFrom(std::size_t size, const Steps &steps);

private:
    std::map<const Compound *, std::optional<std::size_t>> m_Positions;
};

} // namespace TAMBO
