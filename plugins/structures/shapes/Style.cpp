// SPDX-License-Identifier: GPL-3.0-or-later
#include "Style.h"

#include "TraceRuns.h"

namespace structures {

std::vector<ResidueStyle> firstStyles(const Molecule &molecule)
{
    std::vector<ResidueStyle> styles(molecule.residues.size(), {Style::BallsAndSticks, false});
    for (std::size_t i = 0; i < styles.size(); ++i)
        if (molecule.residues[i].role == Role::Water)
            styles[i].style = Style::Hidden;
    for (const MoleculeChain &chain : molecule.chains)
        for (const TraceRun &run : traceRuns(molecule, chain))
            if (run.residues.size() > 1)
                for (const std::uint32_t residue : run.residues)
                    styles[residue].style = Style::Cartoon;
    return styles;
}

} // namespace structures
