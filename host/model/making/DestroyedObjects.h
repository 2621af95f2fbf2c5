// SPDX-License-Identifier: GPL-3.0-or-later
// Taking objects out of the tree, with what refers to them.
#pragma once

#include <vector>

namespace TAMBO {

class Compound;

// Destroys the objects, none of which is a part of another one, as DataMaker does it with each; the
// sequences among them last and all at once, so that a family costs one pass over what shows it.
void destroyObjects(const std::vector<Compound *> &objects);

// Nothing may refer to a sequence that goes: its rows leave the alignments and ties to it are cut.
// The same for the chains of a structure. False when a locked object would have to change for it.
[[nodiscard]] bool detachSequencesOf(Compound &object);

} // namespace TAMBO
