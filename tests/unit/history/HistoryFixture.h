// SPDX-License-Identifier: GPL-3.0-or-later
// A history that records what is done to a small Space.
#pragma once

#include "History.h"

#include "Alignment.h"
#include "DataMaker.h"
#include "ObjectOperations.h"
#include "unit/model/ModelFixture.h"

#include <sstream>

class HistoryFixture : public ModelFixture
{
protected:
    HistoryFixture() { TAMBO::setEditRecorder(&history); }
    ~HistoryFixture() override { history.clear(); }

    // Everything that undo must bring back, as text: order, names, letters, numbers, colours,
    // elements, ties, cells.
    static std::string portrait()
    {
        std::ostringstream out;
        for (TAMBO::Compound *object : space())
            portray(*object, out, "");
        return out.str();
    }

    TAMBO::History history;

private:
    static void portray(TAMBO::Compound &object, std::ostream &out, const std::string &indent)
    {
        out << indent << &object << ' ' << object.TypeName() << ' ' << object.Name() << ' '
            << std::hex << object.OwnColor().rgb() << std::dec;
        if (const auto *const alignment = dynamic_cast<TAMBO::Alignment *>(&object)) {
            out << ' ' << alignment->width() << '\n';
            for (unsigned long row = 0; row < alignment->height(); ++row)
                out << indent << "  " << alignment->GetSeqName(row) << ' '
                    << alignment->GetSequence(row, false) << '\n';
            return;
        }
        out << '\n';
        const TAMBO::Peptide *const peptide = TAMBO::Peptide::from(&object);
        for (std::size_t i = 0; peptide != nullptr && i < peptide->residueCount(); ++i) {
            const TAMBO::ResiduePlace place = peptide->resolve(i);
            out << indent << "  " << peptide->letter(i) << ' ' << peptide->number(i).getValue()
                << ' ' << std::hex << peptide->ownColor(i).rgb() << std::dec << ' ' << place.peptide
                << ' ' << place.index << ' ' << peptide->elementAt(i) << '\n';
        }
        const std::size_t first = peptide == nullptr ? 0 : peptide->residueCount();
        for (std::size_t i = first; i < object.ChildCount(); ++i)
            portray(*object.Child(i), out, indent + "  ");
    }
};
