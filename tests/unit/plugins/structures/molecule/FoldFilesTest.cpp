// SPDX-License-Identifier: GPL-3.0-or-later
// The fold that is found from the CA atoms of real structures, beside the one that their files
// name.
#include "FoldFromTrace.h"

#include "ReadStructures.h"
#include "unit/model/ModelFixture.h"

namespace FoldFilesTest {

using namespace structures;

struct File
{
    friend std::ostream &operator<<(std::ostream &out, const File &file)
    {
        return out << file.name;
    }

    const char *name;
    // Of a hundred residues, those of which both say the same.
    int alike;
};

class FoldFiles : public ModelFixture, public testing::WithParamInterface<File>
{
};

TEST_P(FoldFiles, AreMostlyWhatTheFilesSay)
{
    const Molecule said = ReadStructures::moleculeOf(ReadStructures::sample(GetParam().name));
    Molecule found = said;
    for (MoleculeResidue &residue : found.residues)
        residue.fold = Fold::Coil;
    assignFold(found);
    int alike = 0;
    int all = 0;
    int opposite = 0;
    for (std::size_t i = 0; i < said.residues.size(); ++i) {
        if (said.residues[i].tracePoint == kNone || said.residues[i].role != Role::AminoAcid)
            continue;
        const Fold a = said.residues[i].fold;
        const Fold b = found.residues[i].fold;
        ++all;
        alike += int(a == b);
        opposite += int(a != b && a != Fold::Coil && b != Fold::Coil);
    }
    ASSERT_GT(all, 0);
    EXPECT_GE(100 * alike / all, GetParam().alike) << alike << " of " << all;
    // A helix is no strand.
    EXPECT_LE(100 * opposite, 3 * all) << opposite << " of " << all;
}

INSTANTIATE_TEST_SUITE_P(Of, FoldFiles,
                         testing::Values(File{"ubiquitin_1ubi.pdb", 77},
                                         File{"lysozyme_1aki.pdb", 77},
                                         File{"four_chains_haemoglobin_2hhb.pdb.gz", 81},
                                         File{"trypsin_altlocs_insertions_1dpo.pdb", 75},
                                         File{"insertion_codes_1dix.pdb", 72},
                                         File{"negative_residue_numbers_1o1z.pdb", 73},
                                         File{"missing_residues_2vqc.pdb", 81},
                                         File{"altlocs_4cup.cif", 80}),
                         ReadStructures::CaseName());

} // namespace FoldFilesTest
