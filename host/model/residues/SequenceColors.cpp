// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceColors.h"

#include "LetterColors.h"
#include "ResidueOwner.h"
#include "ResidueSelection.h"
#include "Revisions.h"

#include <utility>

namespace TAMBO {

bool SequenceColors::hasAny(std::size_t begin, std::size_t end) const noexcept
{
    bool has = false;
    for (std::size_t i = begin; i < end && m_Slot.colors != nullptr && !has; ++i)
        has = m_Slot.colors->at(i).has_value();
    return has;
}

ColorEdit *SequenceColors::openEdit(ResidueOwner &owner)
{
    if (m_Slot.open == nullptr && ChangeSession::get().isRecording()) {
        auto edit = std::make_unique<ColorEdit>(owner, m_Slot);
        m_Slot.open = edit.get();
        ChangeSession::get().recordGrowing(std::move(edit));
    }
    return m_Slot.open;
}

void SequenceColors::set(ResidueOwner &owner, std::size_t index, std::optional<Color> color)
{
    if (ColorEdit *const edit = openEdit(owner))
        edit->note(index, 1, at(index));
    m_Slot.store(index, color, owner.residueCount());
    growColorRevision();
}

void SequenceColors::set(ResidueOwner &owner, const ResidueSelection &residues,
                         std::string_view letters, const LetterColors &colors)
{
    if (residues.count() == owner.residueCount()) {
        setAll(owner, letters, colors);
        return;
    }
    std::unique_ptr<ResidueColors> &kept = m_Slot.colors;
    if (kept == nullptr) {
        colorFirst(owner, residues, letters, colors);
        return;
    }
    bool isChanged = false;
    const std::size_t runs = residues.runs();
    if (ColorEdit::prefersRuns(runs, owner.residueCount())) {
        ColorEdit *edit = nullptr;
        const auto note = [&](std::size_t first, std::size_t count, std::optional<Color> before) {
            if (!isChanged && (edit = openEdit(owner)) != nullptr)
                edit->expect(runs);
            isChanged = true;
            if (edit != nullptr)
                edit->note(first, count, before);
        };
        kept->set(letters, residues, colors, note);
    } else if (kept->differs(letters, residues, colors)) {
        isChanged = true;
        if (ColorEdit *const edit = openEdit(owner))
            edit->noteAll(std::make_unique<ResidueColors>(*kept));
        kept->set(letters, residues, colors);
    }
    if (kept->colored() == 0)
        kept.reset();
    if (isChanged)
        growColorRevision();
}

// That all were coloured by type takes no memory, whichever residues change.
void SequenceColors::colorFirst(ResidueOwner &owner, const ResidueSelection &residues,
                                std::string_view letters, const LetterColors &colors)
{
    auto fresh = std::make_unique<ResidueColors>(letters, residues, colors);
    if (fresh->colored() == 0)
        return;
    if (ColorEdit *const edit = openEdit(owner))
        edit->noteAll(nullptr);
    m_Slot.colors = std::move(fresh);
    growColorRevision();
}

// Replaces what was there, which is then all that undoing needs.
void SequenceColors::setAll(ResidueOwner &owner, std::string_view letters,
                            const LetterColors &colors)
{
    auto fresh = std::make_unique<ResidueColors>(letters, colors);
    if (fresh->colored() == 0)
        fresh.reset();
    std::unique_ptr<ResidueColors> &kept = m_Slot.colors;
    const bool isSame =
        fresh == nullptr || kept == nullptr ? fresh == kept : fresh->isSameAs(*kept);
    if (isSame)
        return;
    std::swap(kept, fresh);
    if (ColorEdit *const edit = openEdit(owner))
        edit->noteAll(std::move(fresh));
    growColorRevision();
}

} // namespace TAMBO
