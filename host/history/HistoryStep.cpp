// SPDX-License-Identifier: GPL-3.0-or-later
#include "HistoryStep.h"

#include "ChangeScope.h"
#include "Compound.h"
#include "Revisions.h"
#include "TextBytes.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace TAMBO {

HistoryStep::HistoryStep(std::vector<std::unique_ptr<Edit>> inverses) : m_Edits(std::move(inverses))
{
    m_Edits.shrink_to_fit();
    measure();
}

void HistoryStep::describe(const std::string &name, std::size_t own)
{
    if (!name.empty())
        m_Name = std::make_unique<const std::string>(name);
    const std::size_t added = m_Edits.size() - std::clamp<std::size_t>(own, 1, m_Edits.size());
    m_Added = static_cast<std::uint32_t>(added) & 0x3fffffff;
    m_Subjects = 0;
}

std::size_t HistoryStep::bytes() const noexcept
{
    const std::size_t name = m_Name == nullptr ? 0 : sizeof(*m_Name) + textBytes(*m_Name);
    return sizeof(*this) + name + m_Edits.capacity() * sizeof(m_Edits[0]) + m_Bytes;
}

HistoryStep::Toggled HistoryStep::toggle(LongWork::Kind kind)
{
    // Edits of the widest rows take as long as many others.
    constexpr std::size_t kStride = 64;
    std::vector<std::unique_ptr<Edit>> inverses;
    inverses.reserve(m_Edits.size());
    LongWork work(m_IsDone ? "Undoing" : "Redoing", m_Edits.size(), kind);
    for (auto edit = m_Edits.rbegin(); edit != m_Edits.rend(); ++edit) {
        const bool goesOn = inverses.size() % kStride != 0 || work.goesOnAt(inverses.size());
        if (!goesOn || (!m_IsTrusted && !(*edit)->fits())) {
            // Half a step is no state that anybody knows.
            for (; edit != m_Edits.rbegin(); inverses.pop_back())
                *--edit = inverses.back()->apply();
            growStructureRevision();
            return goesOn ? Toggled::Damaged : Toggled::GivenUp;
        }
        inverses.push_back((*edit)->apply());
        if (isOfStructures(inverses.back()->part()))
            growStructureRevision();
    }
    // The old edits have given away what they owned.
    m_Edits = std::move(inverses);
    m_IsDone = !m_IsDone;
    m_IsTrusted = true;
    measure();
    return Toggled::Done;
}

const Compound *HistoryStep::lock() const
{
    for (const std::unique_ptr<Edit> &edit : m_Edits) {
        const Compound *const guarded = edit->guarded();
        if (const Compound *const locked = guarded ? lockOn(*guarded) : nullptr)
            return locked;
    }
    return nullptr;
}

HistoryStep::Edits HistoryStep::ownEdits() const noexcept
{
    const Edits all = m_Edits;
    const std::size_t own = all.size() - m_Added;
    return m_IsDone ? all.first(own) : all.last(own);
}

// What the user did: the last object that came, went or was renamed as a whole, else the first
// change; the others came with it.
std::size_t HistoryStep::primary() const
{
    const auto isWhole = [](const auto &edit) { return edit->actsOnWhole(); };
    const Edits edits = ownEdits();
    const auto placeOf = [&](const std::unique_ptr<Edit> &edit) {
        return std::size_t(&edit - m_Edits.data());
    };
    if (m_IsDone) {
        const auto found = std::find_if(edits.rbegin(), edits.rend(), isWhole);
        return placeOf(found != edits.rend() ? *found : edits.front());
    }
    const auto found = std::find_if(edits.begin(), edits.end(), isWhole);
    return placeOf(found != edits.end() ? *found : edits.back());
}

void HistoryStep::findLabel() const
{
    m_Named = static_cast<std::uint32_t>(primary());
    const Edit &named = *m_Edits[m_Named];
    std::vector<const Compound *> subjects;
    for (const std::unique_ptr<Edit> &edit : ownEdits()) {
        const bool isSameKind = std::string_view(edit->kind()) == named.kind();
        if (edit.get() == &named || (isSameKind && !named.actsOnWhole()))
            edit->appendSubjects(subjects);
    }
    if (!std::ranges::is_sorted(subjects))
        std::ranges::sort(subjects);
    m_Subjects = static_cast<std::uint32_t>(std::unique(subjects.begin(), subjects.end()) -
                                            subjects.begin());
}

std::string HistoryStep::label() const
{
    if (m_Subjects == 0)
        findLabel();
    const Edit &named = *m_Edits[m_Named];
    std::string label = m_Name != nullptr ? *m_Name : named.kind();
    label += named.actsOnWhole() ? " " : " in ";
    label += named.subject()->GetFQName();
    if (m_Subjects == 2)
        label += " and another";
    else if (m_Subjects > 2)
        label += " and " + std::to_string(m_Subjects - 1) + " others";
    return label;
}

void HistoryStep::forEachChange(const ChangeVisitor &visit) const
{
    std::vector<const Compound *> holders;
    for (const std::unique_ptr<Edit> &edit : m_Edits) {
        const EditPart part = edit->part();
        // A family comes with a million sequences.
        if (!isWork(part))
            continue;
        holders.clear();
        edit->appendHolders(holders);
        for (const Compound *const holder : holders)
            visit(*holder, part);
    }
}

void HistoryStep::appendOwned(std::vector<const Compound *> &out) const
{
    for (const std::unique_ptr<Edit> &edit : m_Edits)
        edit->appendOwned(out);
}

void HistoryStep::measure()
{
    m_Subjects = 0;
    m_Bytes = 0;
    for (const std::unique_ptr<Edit> &edit : m_Edits)
        m_Bytes += edit->bytes();
}

} // namespace TAMBO
