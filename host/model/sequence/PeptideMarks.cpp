// SPDX-License-Identifier: GPL-3.0-or-later
// What of a peptide is selected, as it is kept beside the steps of undo.
#include "Atom.h"
#include "ObjectMarks.h"
#include "Peptide.h"
#include "ResidueSelection.h"
#include "StructureContents.h"

#include <algorithm>
#include <memory>
#include <span>

namespace TAMBO {

void Peptide::collectMarks(ObjectMarks &out) const
{
    StoredObject::collectMarks(out);
    if (selection() != nullptr)
        selection()->forEachRun(0, residueCount(), [&](std::size_t begin, std::size_t end) {
            ObjectMarks::append(out.residues, begin, end);
        });
    // Those of tied residues are the chains'.
    if (contents() != nullptr && !contents()->atomStarts.empty())
        Atom::collectSelected({contents()->atoms.get(), contents()->atomStarts.back()}, out.atoms);
}

void Peptide::restoreMarks(const ObjectMarks &marks)
{
    StoredObject::restoreMarks(marks);
    std::unique_ptr<ResidueSelection> residues;
    for (const auto &[begin, end] : marks.residues) {
        if (begin >= residueCount())
            break;
        if (residues == nullptr)
            residues = std::make_unique<ResidueSelection>(residueCount());
        residues->set(begin, std::min<std::size_t>(end, residueCount()), true);
    }
    if (residues != nullptr || selection() != nullptr)
        extras().selection = std::move(residues);
    if (contents() != nullptr && !contents()->atomStarts.empty())
        Atom::restoreSelected({ownContents().atoms.get(), contents()->atomStarts.back()},
                              marks.atoms);
}

} // namespace TAMBO
