// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of 30,000 residues, drawn well at rest and given up when something moves.
#include "PictureMaker.h"

#include "MadeMolecules.h"
#include "MoleculeShapes.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

namespace PictureMakerTest {

using namespace structures;

constexpr QSize kSize(320, 240);
constexpr int kHelices = 100;
constexpr int kResidues = 300;

// Helices beside each other, of residues with a CB each.
Molecule manyHelices()
{
    Molecule molecule;
    molecule.name = "many";
    for (int helix = 0; helix < kHelices; ++helix) {
        const Vec3 shift{20.0F * float(helix % 10), 20.0F * float(helix / 10), 0};
        const auto first = std::uint32_t(molecule.residues.size());
        for (const Vec3 &point : MadeMolecules::helix(kResidues)) {
            MoleculeResidue residue;
            residue.firstAtom = std::uint32_t(molecule.atoms.size());
            residue.atomCount = 2;
            residue.chain = std::uint32_t(helix);
            residue.fold = Fold::Helix;
            residue.tracePoint = residue.firstAtom;
            for (const float out : {1.0F, 1.6F}) {
                MoleculeAtom atom;
                atom.position = shift + Vec3{point.x * out, point.y * out, point.z};
                atom.residue = std::uint32_t(molecule.residues.size());
                atom.isBackbone = out == 1;
                atom.source = std::uint32_t(molecule.atoms.size());
                molecule.atoms.push_back(atom);
            }
            molecule.residues.push_back(residue);
        }
        molecule.chains.push_back({first, std::uint32_t(kResidues)});
    }
    return molecule;
}

class ManyResidues : public testing::TestWithParam<Style>
{
protected:
    ManyResidues()
    {
        const Molecule molecule = manyHelices();
        auto scene = std::make_shared<PictureScene>();
        scene->shapes.push_back(std::make_shared<const Shapes>(shapesOf(
            molecule, std::vector<ResidueStyle>(molecule.residues.size(), {GetParam(), false}))));
        scene->parts.push_back({scene->shapes.back().get(), 0, {}});
        scene->bounds = {{100, 100, 225}, 300};
        m_Scene = scene;
        m_Palette.colors.assign(molecule.atoms.size() + molecule.residues.size() + 1, 0x4080c0);
        m_Palette.marks.resize(m_Palette.colors.size());
        m_Maker.setScene(m_Scene);
        m_Maker.setPalette(m_Palette);
        QObject::connect(&m_Maker, &PictureMaker::finished, &m_Maker, [this] { ++m_Finished; });
    }

    [[nodiscard]] Camera turned(float angle) const
    {
        Camera camera = cameraOnAll(Camera(), m_Scene->bounds, kSize);
        camera.rotation = Rotation::about({1, 0.3F, 0}, angle);
        return camera;
    }
    [[nodiscard]] QImage wellDrawn(const Camera &camera) const
    {
        PictureRequest request;
        request.parts = m_Scene->parts;
        request.bounds = m_Scene->bounds;
        request.camera = camera;
        request.size = kSize;
        request.perAxis = 2;
        Renderer renderer(std::size_t(40) << 20);
        EXPECT_TRUE(renderer.draw(request, m_Palette));
        return renderer.image().copy();
    }

    std::shared_ptr<const PictureScene> m_Scene;
    Palette m_Palette;
    PictureMaker m_Maker{nullptr};
    int m_Finished = 0;
};

TEST_P(ManyResidues, AreDrawnWellAtRestAndGivenUpWhenTheCameraMoves)
{
    m_Maker.drawNow(turned(0.2F), Look(), kSize);
    m_Maker.drawWell();
    EXPECT_TRUE(m_Maker.isDrawing());
    ASSERT_TRUE(waitUntil([this] { return m_Finished == 1; }));
    EXPECT_FALSE(m_Maker.isDrawing());
    EXPECT_EQ(m_Maker.image(), wellDrawn(turned(0.2F)));
    m_Maker.drawNow(turned(0.6F), Look(), kSize);
    m_Maker.drawWell();
    EXPECT_TRUE(m_Maker.isDrawing());
    m_Maker.drawNow(turned(1.1F), Look(), kSize);
    EXPECT_FALSE(m_Maker.isDrawing());
    QCoreApplication::processEvents();
    EXPECT_EQ(m_Finished, 1) << "what was given up is not shown";
    m_Maker.drawWell();
    ASSERT_TRUE(waitUntil([this] { return m_Finished == 2; }));
    EXPECT_EQ(m_Maker.image(), wellDrawn(turned(1.1F)));
}

std::string nameOf(const testing::TestParamInfo<Style> &info)
{
    switch (info.param) {
    case Style::Cartoon:
        return "Cartoon";
    case Style::Trace:
        return "Trace";
    case Style::Sticks:
        return "Sticks";
    case Style::BallsAndSticks:
        return "BallsAndSticks";
    default:
        return "Spheres";
    }
}

INSTANTIATE_TEST_SUITE_P(As, ManyResidues,
                         testing::Values(Style::Cartoon, Style::Trace, Style::Sticks,
                                         Style::BallsAndSticks, Style::Spheres),
                         nameOf);

} // namespace PictureMakerTest
