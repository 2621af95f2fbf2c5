// SPDX-License-Identifier: GPL-3.0-or-later
// All kinds of files, and what no file should have: pictures of them come, and show what is there.
#include "Renderer.h"
#include "StructureScene.h"

#include "Alignment.h"
#include "DataPoint.h"
#include "MadeMolecules.h"
#include "ReadStructures.h"
#include "Space.h"
#include "unit/model/ModelFixture.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <set>

namespace StructureFilesTest {

using namespace structures;

constexpr Style kStyles[] = {Style::Cartoon, Style::Trace, Style::Sticks, Style::BallsAndSticks,
                             Style::Spheres};
constexpr QSize kSize(160, 120);

class StructureFiles : public ModelFixture
{
protected:
    // How many things are to be seen of what is loaded.
    static std::size_t seen(StructureScene &scene, const Palette &palette, bool isPerspective)
    {
        const std::shared_ptr<const PictureScene> shown = scene.picture();
        if (shown->parts.empty())
            return 0;
        EXPECT_TRUE(isFinite(shown->bounds.centre));
        EXPECT_TRUE(std::isfinite(shown->bounds.radius));
        PictureRequest request;
        request.parts = shown->parts;
        request.bounds = shown->bounds;
        request.size = kSize;
        request.camera.isPerspective = isPerspective;
        request.camera = cameraOnAll(request.camera, shown->bounds, kSize);
        Renderer renderer;
        EXPECT_TRUE(renderer.draw(request, palette));
        std::set<Pick> picks(renderer.picks().begin(), renderer.picks().end());
        picks.erase(0);
        for (const Pick pick : picks)
            EXPECT_TRUE(scene.placeOf(pick)) << pick;
        return picks.size();
    }
    static std::size_t leastSeen(StructureScene &scene)
    {
        std::size_t least = std::numeric_limits<std::size_t>::max();
        const Palette palette = scene.palette(Coloring::Workbench);
        for (const Style style : kStyles) {
            for (const auto &structure : scene.structures())
                structure->setStyle(style);
            for (const bool isPerspective : {false, true})
                least = std::min(least, seen(scene, palette, isPerspective));
        }
        return least;
    }
    static TAMBO::Compound *made(const std::vector<TAMBO::Vertex> &places)
    {
        TAMBO::StructureRecord record;
        record.name = "made";
        TAMBO::ChainRecord &chain = record.chains.emplace_back();
        chain.name = "A";
        for (std::size_t i = 0; i < places.size(); ++i) {
            TAMBO::ResidueRecord &residue = chain.residues.emplace_back();
            residue.typeName = "ALA";
            residue.letter = 'A';
            residue.number = TAMBO::SequenceNumber(std::to_string(i + 1));
            residue.atoms.push_back({"CA", "C", places[i]});
        }
        return TAMBO::ObjectFactory::adopt(std::move(record));
    }
};

TEST_F(StructureFiles, ShowSomethingOfWhateverHasAtoms)
{
    namespace fs = std::filesystem;
    int files = 0;
    for (const char *folder : {"structures", "malformed/structures"})
        for (const fs::directory_entry &entry :
             fs::directory_iterator(fs::path(TEST_DATA_DIR) / folder)) {
            if (ReadStructures::open(entry.path()).empty())
                continue;
            StructureScene scene([] {});
            std::size_t atoms = 0;
            for (const auto &structure : scene.structures())
                atoms += structure->molecule().atoms.size();
            if (atoms > 0)
                EXPECT_GT(leastSeen(scene), 0U) << entry.path();
            else
                EXPECT_TRUE(scene.picture()->parts.empty()) << entry.path();
            ++files;
            space().reset();
        }
    EXPECT_GT(files, 35);
}

TEST_F(StructureFiles, WithOneAtomShowIt)
{
    made({TAMBO::Vertex(1, 2, 3)});
    StructureScene scene([] {});
    EXPECT_EQ(leastSeen(scene), 1U);
}

TEST_F(StructureFiles, WithoutAtomsShowNothing)
{
    StructureScene scene([] {});
    EXPECT_EQ(scene.remark(), "No structure is loaded");
    const float none = std::numeric_limits<float>::quiet_NaN();
    made({TAMBO::Vertex(none, 0, 0)});
    scene.refresh();
    ASSERT_EQ(scene.structures().size(), 1U);
    EXPECT_TRUE(scene.picture()->parts.empty());
    EXPECT_EQ(scene.remark(), "made: no atom has a place");
    made({TAMBO::Vertex(1, 2, 3)});
    scene.refresh();
    EXPECT_EQ(scene.remark(), "");
    scene.structures().back()->setVisible(false);
    EXPECT_EQ(scene.remark(), "made: no atom has a place");
}

TEST_F(StructureFiles, WithPlacesThatAreNoNumbersShowTheOthers)
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    made({TAMBO::Vertex(0, 0, 0), TAMBO::Vertex(none, 0, 0), TAMBO::Vertex(3, 2, 0),
          TAMBO::Vertex(0, endless, 0), TAMBO::Vertex(6, 0, 0), TAMBO::Vertex(9, 2, 1),
          TAMBO::Vertex()});
    StructureScene scene([] {});
    EXPECT_EQ(scene.structures().front()->molecule().atoms.size(), 4U);
    EXPECT_EQ(leastSeen(scene), 4U);
}

// A million Angstrom from the origin a float tells sixteenths apart.
TEST_F(StructureFiles, FarFromTheOriginLookAsTheyDoAtIt)
{
    std::vector<TAMBO::Vertex> near;
    std::vector<TAMBO::Vertex> far;
    for (const Vec3 &point : MadeMolecules::helix(30)) {
        const auto rounded = [](float value) { return std::round(value * 16) / 16; };
        near.emplace_back(rounded(point.x), rounded(point.y), rounded(point.z));
        far.emplace_back(1e6F + rounded(point.x), -1e6F + rounded(point.y),
                         1e6F + rounded(point.z));
    }
    std::vector<QImage> images;
    for (const auto &places : {near, far}) {
        made(places);
        StructureScene scene([] {});
        const std::shared_ptr<const PictureScene> shown = scene.picture();
        PictureRequest request;
        request.parts = shown->parts;
        request.bounds = shown->bounds;
        request.size = kSize;
        request.camera = cameraOnAll(request.camera, shown->bounds, kSize);
        Renderer renderer;
        ASSERT_TRUE(renderer.draw(request, scene.palette(Coloring::Chain)));
        images.push_back(renderer.image());
        space().reset();
    }
    int other = 0;
    for (int y = 0; y < kSize.height(); ++y)
        for (int x = 0; x < kSize.width(); ++x)
            other += int(images[0].pixel(x, y) != images[1].pixel(x, y));
    // The middle of the atoms is rounded as well.
    EXPECT_LT(other, kSize.width() * kSize.height() / 20);
}

TEST_F(StructureFiles, OfThirtyThousandResiduesShowMostOfThem)
{
    std::vector<TAMBO::Vertex> places;
    for (int i = 0; i < 100; ++i)
        for (const Vec3 &point : MadeMolecules::helix(300))
            places.emplace_back(point.z, point.y + 12.0F * float(i % 10),
                                point.x + 12.0F * float(i / 10));
    made(places);
    StructureScene scene([] {});
    EXPECT_EQ(scene.structures().front()->molecule().residues.size(), 30000U);
    EXPECT_GT(seen(scene, scene.palette(Coloring::Workbench), false), 300U);
}

class ExampleView : public ModelFixture
{
protected:
    ExampleView()
    {
        for (const char *name :
             {"1A0J_A_superposed.pdb", "1ABI_H_superposed.pdb", "1AU8_A_superposed.pdb",
              "1BRU_P_superposed.pdb", "1PPF_E_superposed.pdb", "1XXD_A_superposed.pdb"})
            ReadStructures::open(ReadStructures::example(name));
        auto contents = TAMBO::readFile(ReadStructures::example("serine_proteases.ali"));
        if (contents && !contents->alignments.empty())
            alignment = TAMBO::ObjectFactory::adopt(std::move(contents->alignments.front()));
    }

    TAMBO::Alignment *alignment = nullptr;
};

TEST_F(ExampleView, EachResidueHasTheColorThatItsCellHas)
{
    ASSERT_NE(alignment, nullptr);
    std::vector<TAMBO::Compound *> residues;
    for (unsigned long row = 0; row < alignment->height(); ++row) {
        const auto sources = TAMBO::StructureDetails::sources(alignment->GetSeq(row));
        for (std::size_t i = 0; i < sources.size(); ++i)
            if (sources[i].chain != nullptr)
                residues.push_back(alignment->GetSeq(row)->Child(i));
    }
    ASSERT_GT(residues.size(), 1300U);
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        std::uint32_t color = 0;
        for (TAMBO::Compound *const residue : residues)
            residue->SetColor(Color((color += 0x3021) & 0xffffffU));
    }
    StructureScene scene([] {});
    const Palette palette = scene.palette(Coloring::Workbench);
    std::size_t looked = 0;
    std::uint32_t color = 0;
    for (unsigned long row = 0; row < alignment->height(); ++row) {
        TAMBO::Compound *const sequence = alignment->GetSeq(row);
        const auto sources = TAMBO::StructureDetails::sources(sequence);
        for (std::size_t i = 0; i < sources.size(); ++i) {
            if (sources[i].chain == nullptr)
                continue;
            color += 0x3021;
            EXPECT_EQ(sequence->Child(i)->GetColor().rgb(), color & 0xffffffU);
            for (const auto &structure : scene.structures()) {
                const Molecule &molecule = structure->molecule();
                for (std::uint32_t r = 0; r < molecule.residues.size(); ++r)
                    if (structure->chain(molecule.residues[r].chain) == sources[i].chain &&
                        structure->childOf(r) == sources[i].child) {
                        const Pick pick =
                            scene.firstPickOf(*structure) + pickOfResidue(molecule, r);
                        EXPECT_EQ(palette.colors[pick], color & 0xffffffU);
                        ++looked;
                    }
            }
        }
    }
    EXPECT_EQ(looked, residues.size());
}

// Where a CA atom is to be seen in a picture, its own residue is, or something that is before it.
TEST_F(ExampleView, TheTraceIsWhereItsAtomsAre)
{
    StructureScene scene([] {});
    for (const auto &structure : scene.structures())
        structure->setStyle(Style::Trace);
    const std::shared_ptr<const PictureScene> shown = scene.picture();
    PictureRequest request;
    request.parts = shown->parts;
    request.bounds = shown->bounds;
    request.size = {1280, 800};
    request.camera = cameraOnAll(request.camera, shown->bounds, request.size);
    request.camera.rotation = Rotation::about({0.2F, 1, 0.3F}, 1.1F);
    Renderer renderer;
    ASSERT_TRUE(renderer.draw(request, scene.palette(Coloring::Workbench)));
    const std::array<float, 4> q = request.camera.rotation.numbers();
    int own = 0;
    int all = 0;
    for (const auto &structure : scene.structures()) {
        const Molecule &molecule = structure->molecule();
        for (std::uint32_t r = 0; r < molecule.residues.size(); ++r) {
            if (molecule.residues[r].tracePoint == kNone)
                continue;
            // Turned by q p q*, with the product of quaternions written out.
            const Vec3 p = structure->positionOf(r) - scene.origin() - request.camera.target;
            const double w = double(q[0]);
            const double x = double(q[1]);
            const double y = double(q[2]);
            const double z = double(q[3]);
            const double rw = -x * double(p.x) - y * double(p.y) - z * double(p.z);
            const double rx = w * double(p.x) + y * double(p.z) - z * double(p.y);
            const double ry = w * double(p.y) + z * double(p.x) - x * double(p.z);
            const double rz = w * double(p.z) + x * double(p.y) - y * double(p.x);
            const double turnedX = -rw * x + rx * w - ry * z + rz * y;
            const double turnedY = -rw * y + ry * w - rz * x + rx * z;
            const double turnedZ = -rw * z + rz * w - rx * y + ry * x;
            const double scale = 800 / double(request.camera.height);
            const Pick pick = renderer.pickAt(int(std::floor(640 + turnedX * scale)),
                                              int(std::floor(400 - turnedY * scale)));
            ASSERT_NE(pick, 0U);
            ++all;
            const auto place = scene.placeOf(pick);
            ASSERT_TRUE(place);
            if (place->structure == structure.get() && place->place.residue == r) {
                ++own;
                continue;
            }
            const Vec3 other = place->structure->positionOf(place->place.residue) - scene.origin() -
                               request.camera.target;
            // Its neighbour along the chain, or one nearer to the viewer.
            const bool isNear = place->structure == structure.get() &&
                                (place->place.residue + 1 == r || place->place.residue == r + 1);
            const double otherZ = double((request.camera.rotation.matrix() * other).z);
            EXPECT_TRUE(isNear || otherZ > turnedZ - 3.8);
        }
    }
    EXPECT_GT(all, 1300);
    EXPECT_GT(own, all / 3);
}

} // namespace StructureFilesTest
