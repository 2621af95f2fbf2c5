// SPDX-License-Identifier: GPL-3.0-or-later
// What models meet when they come into the workbench: the rows of the loaded alignments that they
// are of, and names that are taken. Looked up once for as many models as come together.
#pragma once

#include "Vertex.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace TAMBO {

class Alignment;
class Peptide;

class RowsForModels
{
public:
    // rows: the names of those that will be asked for.
    explicit RowsForModels(const std::set<std::string> &rows);

    // The wanted one, or one made of it, that no object has; it is taken from now on.
    [[nodiscard]] std::string takeName(const std::string &wanted);
    // The sequences of the rows of that name, each once, that may get a model: measured coordinates
    // are worth more, while an older model gives way to a newer one.
    [[nodiscard]] std::vector<Peptide *> sequencesOf(const std::string &name) const;
    // The sequences of its rows in alignments that show the target, too.
    [[nodiscard]] std::vector<const Peptide *> templatesFor(const std::string &target,
                                                            const std::string &name) const;

private:
    struct FoundRow
    {
        const Alignment *alignment;
        Peptide *sequence;
    };

    std::map<std::string, std::vector<FoundRow>> m_Rows;
    std::set<std::string> m_Names;
};

} // namespace TAMBO
