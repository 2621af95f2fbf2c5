// SPDX-License-Identifier: GPL-3.0-or-later
// How what is kept as bytes refers to objects: a stored object by its number, residues and atoms by
// their place in the object that they are parts of. Neither comes or goes without it.
#pragma once

namespace TAMBO {

class Compound;
class ObjectIndex;
class ValueReader;
class ValueWriter;

void storeReference(const Compound &object, ValueWriter &out);
// Null, with a failure of the reader, when there is no such object in the index.
[[nodiscard]] Compound *loadReference(ValueReader &in, const ObjectIndex &index);

} // namespace TAMBO
