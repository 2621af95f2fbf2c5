// SPDX-License-Identifier: GPL-3.0-or-later
// Making and destroying objects of the workbench.
#pragma once

#include "Compound.h"
#include "StructureValues.h"

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
    // A new top-level sequence of residues by their one-letter codes, in either case. numbers: one
    // for each letter, each different; without any, residues count from 1. An empty or unreadable
    // name, a character that is no letter or a bad number gives null, with a line in the log.
    static Compound *makeSequence(const std::string &name, const std::string &letters,
                                  const std::vector<SequenceNumber> &numbers = {});
    // A new top-level structure, as if it had been read from a file. What StructureValues does not
    // allow gives null, with a line in the log that says what is wrong where.
    static Compound *makeStructure(const std::string &name, const StructureValues &values);
    // A new element of type H, E or T (either case) over at least three residues of parent.
    // Anything else is refused with a line in the log, and the result is null.
    static Compound *makeSSE(Compound *parent, const std::string &name,
                             const std::vector<Compound *> &residues, char type);
    // Takes the object out of the workbench; it is freed once nobody can still ask for it. The rows
    // of a destroyed sequence leave every alignment. Null is ignored.
    static void Destroy(Compound *object);
};

} // namespace TAMBO
