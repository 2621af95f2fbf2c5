// SPDX-License-Identifier: GPL-3.0-or-later
// Makes objects of what file readers give and adds them to Space. Called inside a guard of type
// Add.
#pragma once

#include "Records.h"

namespace TAMBO {

class Alignment;
class Structure;

class ObjectFactory
{
public:
    static Structure *adopt(StructureRecord &&record);
    // Rows that name a structure are tied to its loaded chain; the others get a sequence of their
    // own. Null when the record is not aligned: then only the sequences are made.
    static Alignment *adopt(AlignmentRecord &&record);
};

} // namespace TAMBO
