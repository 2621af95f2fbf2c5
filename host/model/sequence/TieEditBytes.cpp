// SPDX-License-Identifier: GPL-3.0-or-later
// Ties as bytes, and what is made of these again.
#include "Peptide.h"
#include "TieEdit.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace TAMBO {

void TieEdit::store(const ResidueTies *ties, EditWriter &out) const
{
    out.tag(EditTag::Ties);
    out.reference(m_Sequence.asCompound());
    out.flag(ties != nullptr);
    if (ties == nullptr)
        return;
    out.number(ties->runs().size());
    for (const ResidueTies::Run &run : ties->runs()) {
        out.number(run.first);
        out.number(run.count);
        out.number(run.chainFirst);
        out.reference(*run.chain);
    }
}

void TieEdit::store(EditWriter &out) const
{
    store(m_Ties.get(), out);
}

void TieEdit::storeInverse(EditWriter &out) const
{
    store(m_Slot.get(), out);
}

// A chain has no ties of its own, so that no way from residue to residue is endless.
bool TieEdit::fits() const
{
    if (m_Sequence.asCompound().Kind() == CompoundKind::Chain)
        return m_Ties == nullptr;
    return m_Ties == nullptr ||
           std::ranges::all_of(m_Ties->runs(), [](const ResidueTies::Run &run) {
               return run.chain->Kind() == CompoundKind::Chain &&
                      run.chain->Parent()->Parent() != nullptr;
           });
}

void TieEdit::appendNeeded(std::vector<const Compound *> &out) const
{
    out.push_back(subject());
    if (m_Ties == nullptr)
        return;
    for (const ResidueTies::Run &run : m_Ties->runs())
        out.push_back(run.chain);
}

LoadedEdit TieEdit::load(StoredObject &sequence, std::unique_ptr<ResidueTies> &slot, EditReader &in)
{
    auto *const tied = Peptide::from(&sequence.asCompound());
    auto ties = in.flag() ? std::make_unique<ResidueTies>() : nullptr;
    std::uint64_t next = 0;
    for (std::size_t count = ties == nullptr ? 0 : in.count(4); count > 0; --count) {
        constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
        const std::uint64_t first = in.number(kMost);
        const std::uint64_t length = in.number(kMost);
        const std::uint64_t chainFirst = in.number(kMost);
        auto *const chain = in.reference<Peptide>();
        if (in.failed())
            break;
        if (first < next || length == 0 || first + length > tied->residueCount() ||
            chainFirst + length > chain->residueCount())
            in.fail("ties are out of order");
        next = first + length;
        ties->append({static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(length),
                      static_cast<std::uint32_t>(chainFirst), chain});
    }
    if (in.failed())
        return in.failure();
    return LoadedEdit(std::make_unique<TieEdit>(sequence, slot, std::move(ties)));
}

} // namespace TAMBO
