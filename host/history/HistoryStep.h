// SPDX-License-Identifier: GPL-3.0-or-later
// One step of undo: the edits that take it back, or, once it is taken back, those that repeat it.
#pragma once

#include "EditBytes.h"
#include "LongWork.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace TAMBO {

class HistoryStep
{
public:
    // In the order of the changes.
    explicit HistoryStep(std::vector<std::unique_ptr<Edit>> inverses);

    // name: what stands for the kind of edit; empty for none. own: how many of the changes, from
    // the first on, are those that the step was made for, and so what it is called after.
    void describe(const std::string &name, std::size_t own);

    enum class Toggled {
        Done,
        // It was made of bytes which are damaged.
        Damaged,
        // The user has given it up.
        GivenUp
    };

    // Done becomes undone and the other way round, or nothing has changed.
    [[nodiscard]] Toggled toggle(LongWork::Kind kind = LongWork::Kind::Fixed);
    [[nodiscard]] bool isDone() const noexcept { return m_IsDone; }

    // The object whose lock forbids toggling, or null.
    [[nodiscard]] const Compound *lock() const;
    // "move gap in SeqAli", or with the name for the kind, whether done or undone.
    [[nodiscard]] std::string label() const;
    // Calls visit(holder, part) for what the step changes of objects that files hold. An object may
    // come several times.
    using ChangeVisitor = std::function<void(const Compound &holder, EditPart part)>;
    void forEachChange(const ChangeVisitor &visit) const;
    // Appends the objects that go with the step when it is dropped.
    void appendOwned(std::vector<const Compound *> &out) const;
    [[nodiscard]] std::size_t bytes() const noexcept;
    [[nodiscard]] std::size_t editCount() const noexcept { return m_Edits.size(); }

    // Of all steps of this run of the program, no other one has it.
    void setNumber(std::uint64_t number) noexcept { m_Number = number; }
    [[nodiscard]] std::uint64_t number() const noexcept { return m_Number; }

    [[nodiscard]] bool consistsOf(const std::function<bool(const Edit &edit)> &test) const
    {
        return std::ranges::all_of(m_Edits, [&](const auto &edit) { return test(*edit); });
    }

    // Calls visit(edit) for each in the order in which toggling applies them, until one call gives
    // false; whether none did.
    template <typename Visit> bool forEachEditWhile(const Visit &visit) const
    {
        return std::all_of(m_Edits.rbegin(), m_Edits.rend(),
                           [&](const std::unique_ptr<Edit> &edit) { return visit(*edit); });
    }

    // Whether they need not be asked whether they fit.
    [[nodiscard]] bool isTrusted() const noexcept { return m_IsTrusted; }
    // Applied from the last to the first when it is toggled.
    [[nodiscard]] std::span<const std::unique_ptr<Edit>> edits() const noexcept { return m_Edits; }

    void store(EditWriter &out) const;
    // Whether its edits fit is found out when it is toggled.
    [[nodiscard]] static Result<HistoryStep> load(EditReader &in);

    // Gives the edits away, for whoever frees them.
    [[nodiscard]] std::vector<std::unique_ptr<Edit>> takeEdits() { return std::move(m_Edits); }

private:
    using Edits = std::span<const std::unique_ptr<Edit>>;

    // Those that the step was made for.
    [[nodiscard]] Edits ownEdits() const noexcept;
    [[nodiscard]] std::size_t primary() const;
    void findLabel() const;
    void measure();

    // Applied from the last to the first.
    std::vector<std::unique_ptr<Edit>> m_Edits;
    // Most steps have none.
    std::unique_ptr<const std::string> m_Name;
    // Of the edits.
    std::size_t m_Bytes = 0;
    std::uint64_t m_Number = 0;
    // Edits that were added to the step, behind its own.
    std::uint32_t m_Added : 30 = 0;
    bool m_IsDone : 1 = true;
    bool m_IsTrusted : 1 = true;
    // For the label, which lists ask for again and again: the place of the edit that it names, and
    // how many objects it counts; 0 until it is asked for.
    mutable std::uint32_t m_Named = 0;
    mutable std::uint32_t m_Subjects = 0;
};

} // namespace TAMBO
