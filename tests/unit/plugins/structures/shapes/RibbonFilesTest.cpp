// SPDX-License-Identifier: GPL-3.0-or-later
// Ribbons of real structures.
#include "RibbonPath.h"

#include "ReadStructures.h"
#include "unit/model/ModelFixture.h"

#include <algorithm>

namespace RibbonFilesTest {

using namespace structures;

float distanceToWay(Vec3 point, Vec3 from, Vec3 to)
{
    const Vec3 way = to - from;
    const float square = dot(way, way);
    const float share = square > 0 ? std::clamp(dot(point - from, way) / square, 0.0F, 1.0F) : 0;
    return distance(point, from + way * share);
}

struct File
{
    friend std::ostream &operator<<(std::ostream &out, const File &file)
    {
        return out << file.name;
    }

    const char *name;
    std::size_t helixAndCoil;
};

class RibbonFiles : public ModelFixture, public testing::WithParamInterface<File>
{
};

TEST_P(RibbonFiles, PassWithinHalfAnAngstromOfEachCaOfHelixAndCoil)
{
    const Molecule molecule = ReadStructures::moleculeOf(ReadStructures::sample(GetParam().name));
    const std::vector<ResidueStyle> styles(molecule.residues.size(), {Style::Cartoon, false});
    std::size_t looked = 0;
    float farthest = 0;
    for (const MoleculeChain &chain : molecule.chains)
        for (const TraceRun &run : traceRuns(molecule, chain)) {
            if (run.residues.size() < 2 || run.role != Role::AminoAcid)
                continue;
            const std::vector<RibbonRing> rings = ribbonPath(molecule, run, styles, 8);
            for (const std::uint32_t index : run.residues) {
                const MoleculeResidue &residue = molecule.residues[index];
                if (residue.fold == Fold::Strand)
                    continue;
                const Vec3 ca = molecule.atoms[residue.tracePoint].position;
                float nearest = 1e9F;
                for (std::size_t i = 1; i < rings.size(); ++i)
                    nearest =
                        std::min(nearest, distanceToWay(ca, rings[i - 1].centre, rings[i].centre));
                EXPECT_LT(nearest, 0.5F) << GetParam().name << ", residue " << index;
                farthest = std::max(farthest, nearest);
                ++looked;
            }
        }
    EXPECT_EQ(looked, GetParam().helixAndCoil);
    // They do, by far.
    EXPECT_LT(farthest, 0.1F);
}

INSTANTIATE_TEST_SUITE_P(
    Of, RibbonFiles,
    testing::Values(File{"ubiquitin_1ubi.pdb", 43}, File{"lysozyme_1aki.cif", 123},
                    File{"four_chains_haemoglobin_2hhb.pdb.gz", 574},
                    File{"trypsin_altlocs_insertions_1dpo.pdb", 153},
                    File{"insertion_codes_1dix.cif", 168},
                    File{"negative_residue_numbers_1o1z.pdb", 175},
                    File{"old_style_ca_only_1gdr.ent", 70}, File{"nmr_38_models_1l2y.pdb.gz", 20},
                    File{"missing_residues_2vqc.pdb", 58}, File{"altlocs_4cup.cif", 115}),
    ReadStructures::CaseName());

} // namespace RibbonFilesTest
