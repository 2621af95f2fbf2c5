// SPDX-License-Identifier: GPL-3.0-or-later
// All objects of a space as plain files that have a folder to themselves: one for each alignment
// and each structure, and one for the sequences that no alignment shows.
#pragma once

#include "WriteOptions.h"

#include <string>
#include <vector>

namespace TAMBO {
class Compound;
class ObjectSpace;
} // namespace TAMBO

namespace TAMBO::app {

class WritableObject;

struct ObjectFile
{
    // In the folder. No two differ by the case of letters alone.
    std::string name;
    // One, or the sequences.
    std::vector<const Compound *> objects;
    WriteOptions options;

    // As the objects are now.
    [[nodiscard]] WritableObject content() const;
};

struct ObjectFileOptions
{
    WriteOptions alignments{FileFormat::Pir};
    WriteOptions structures{FileFormat::Mmcif};
};

// In the order of the space, the sequences at the end. Sequences that the format of alignments
// cannot hold, since they are not aligned, go into a PIR file.
[[nodiscard]] std::vector<ObjectFile> objectFilesOf(const ObjectSpace &space,
                                                    const ObjectFileOptions &options = {});

} // namespace TAMBO::app
