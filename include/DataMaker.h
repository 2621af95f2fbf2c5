// SPDX-License-Identifier: GPL-3.0-or-later
// Making and destroying objects of the workbench.
#pragma once

#include "Compound.h"

#include <string>
#include <vector>

namespace TAMBO {

class Alignment;

class TAMBO_API DataMaker
{
public:
    // A new top-level alignment with one ungapped row per peptide, in the given order. Names need
    // not be unique.
    static Alignment *makeAlignment(const std::string &name,
                                    const std::vector<Compound *> &sequences);
    // A new element of type H, E or T (either case) over at least three residues of parent.
    // Anything else is refused with a line in the log, and the result is null.
    static Compound *makeSSE(Compound *parent, const std::string &name,
                             const std::vector<Compound *> &residues, char type);
    // Takes the object out of the workbench; it is freed once nobody can still ask for it. The rows
    // of a destroyed sequence leave every alignment. Null is ignored.
    static void Destroy(Compound *object);
};

} // namespace TAMBO
