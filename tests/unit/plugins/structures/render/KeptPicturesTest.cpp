// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of real structures beside those that are kept in "pictures". They are made anew by
// TAMBO_MAKE_SAMPLE=tests/unit/plugins/structures/pictures structure_files_test
// --gtest_filter=KeptPicturesCanBeMade.*
#include "Elements.h"
#include "MoleculeShapes.h"
#include "Renderer.h"

#include "ReadStructures.h"
#include "unit/model/ModelFixture.h"

#include <QDir>
#include <QImage>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace KeptPicturesTest {

using namespace structures;

struct Subject
{
    friend std::ostream &operator<<(std::ostream &out, const Subject &subject)
    {
        return out << subject.name;
    }

    const char *name;
    const char *file;
    Style style;
    bool isPerspective;
    int perAxis;
};

constexpr Subject kSubjects[] = {
    {"Haemoglobin", "four_chains_haemoglobin_2hhb.pdb.gz", Style::Cartoon, false, 2},
    {"DnaAndProtein", "dna_and_protein_1lcd.pdb", Style::Cartoon, true, 2},
    {"Trypsin", "trypsin_altlocs_insertions_1dpo.pdb", Style::Trace, false, 1},
    {"UbiquitinOfCa", "ubiquitin_1ubi_ca_only.pdb", Style::Cartoon, true, 1},
    {"Crambin", "altlocs_crambin_1ejg.pdb", Style::BallsAndSticks, false, 2},
    {"Peptide", "nmr_38_models_1l2y.pdb.gz", Style::Spheres, true, 2}};

constexpr std::uint32_t kHelix = 0xd0507a;
constexpr std::uint32_t kStrand = 0xe0b040;
constexpr std::uint32_t kCoil = 0x7fa4c4;

struct Difference
{
    // Of all channels, of 255.
    double mean = 0;
    // Of the pixels, of which a channel is more than 24 off.
    double share = 0;

    [[nodiscard]] bool isSmall() const { return mean < 0.03 && share < 0.001; }
};

std::ostream &operator<<(std::ostream &out, const Difference &difference)
{
    return out << "mean " << difference.mean << ", share " << difference.share;
}

Difference differenceOf(const QImage &a, const QImage &b)
{
    if (a.size() != b.size() || a.isNull())
        return {255, 1};
    double sum = 0;
    int off = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb one = a.pixel(x, y);
            const QRgb other = b.pixel(x, y);
            const std::array<int, 3> steps{std::abs(qRed(one) - qRed(other)),
                                           std::abs(qGreen(one) - qGreen(other)),
                                           std::abs(qBlue(one) - qBlue(other))};
            for (const int step : steps)
                sum += step;
            off += int(*std::max_element(steps.begin(), steps.end()) > 24);
        }
    const double pixels = double(a.width()) * a.height();
    return {sum / pixels / 3, off / pixels};
}

class Picture
{
public:
    explicit Picture(const Subject &subject)
        : m_Molecule(ReadStructures::moleculeOf(ReadStructures::sample(subject.file)))
    {
        std::vector<ResidueStyle> styles = firstStyles(m_Molecule);
        for (std::size_t i = 0; i < styles.size(); ++i)
            if (m_Molecule.residues[i].tracePoint != kNone || subject.style == Style::Spheres)
                styles[i].style = subject.style;
        m_Shapes = shapesOf(m_Molecule, styles);
        m_Part = {&m_Shapes, 0, {}};
        for (const MoleculeAtom &atom : m_Molecule.atoms)
            m_Request.bounds.radius = std::max(m_Request.bounds.radius, length(atom.position));
        m_Request.parts = {&m_Part, 1};
        m_Request.size = {320, 240};
        m_Request.perAxis = subject.perAxis;
        m_Request.camera.isPerspective = subject.isPerspective;
        m_Request.camera.rotation = Rotation::about({1, 0.4F, 0.2F}, 0.7F);
        m_Request.camera = cameraOnAll(m_Request.camera, m_Request.bounds, m_Request.size);
        paint(kHelix);
    }
    Picture(const Picture &) = delete;
    Picture &operator=(const Picture &) = delete;

    // Carbon has the color of the fold.
    void paint(std::uint32_t helix)
    {
        m_Palette.colors.assign(m_Molecule.atoms.size() + m_Molecule.residues.size() + 1, 0);
        m_Palette.marks.assign(m_Palette.colors.size(), 0);
        for (std::uint32_t i = 0; i < m_Molecule.residues.size(); ++i) {
            const MoleculeResidue &residue = m_Molecule.residues[i];
            const std::uint32_t color = residue.fold == Fold::Helix    ? helix
                                        : residue.fold == Fold::Strand ? kStrand
                                                                       : kCoil;
            m_Palette.colors[pickOfResidue(m_Molecule, i)] = color;
            for (std::uint32_t a = 0; a < residue.atomCount; ++a) {
                const MoleculeAtom &atom = m_Molecule.atoms[residue.firstAtom + a];
                m_Palette.colors[pickOfAtom(residue.firstAtom + a)] =
                    atom.isElement('C') ? color : factsOf(atom.element).color;
            }
        }
    }
    void turn(float degrees)
    {
        m_Request.camera.rotation =
            Rotation::about({0, 1, 0}, degrees * 0.0174533F) * m_Request.camera.rotation;
    }
    QImage draw()
    {
        EXPECT_TRUE(m_Renderer.draw(m_Request, m_Palette));
        return m_Renderer.image();
    }

private:
    Molecule m_Molecule;
    Shapes m_Shapes;
    ScenePart m_Part;
    PictureRequest m_Request;
    Palette m_Palette;
    Renderer m_Renderer;
};

class KeptPictures : public ModelFixture, public testing::WithParamInterface<Subject>
{
protected:
    static QImage kept()
    {
        return QImage(QString(SOURCE_DIR "/tests/unit/plugins/structures/pictures/%1.png")
                          .arg(GetParam().name));
    }
};

TEST_P(KeptPictures, AreWhatIsDrawn)
{
    const Difference difference = differenceOf(Picture(GetParam()).draw(), kept());
    EXPECT_TRUE(difference.isSmall()) << difference;
}

// What is allowed is less than anybody could do on purpose.
TEST_P(KeptPictures, AreNotThoseOfACameraThatHasTurnedByOneDegree)
{
    Picture picture(GetParam());
    picture.turn(1);
    const Difference difference = differenceOf(picture.draw(), kept());
    EXPECT_FALSE(difference.isSmall()) << difference;
}

TEST_P(KeptPictures, AreNotThoseOfAnotherColor)
{
    Picture picture(GetParam());
    picture.paint(kHelix + 0x001800);
    const Difference difference = differenceOf(picture.draw(), kept());
    EXPECT_FALSE(difference.isSmall()) << difference;
}

std::string nameOf(const testing::TestParamInfo<Subject> &info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Of, KeptPictures, testing::ValuesIn(kSubjects), nameOf);

class KeptPicturesCanBeMade : public ModelFixture
{
};

TEST_F(KeptPicturesCanBeMade, WhereSomebodyAsksForThem)
{
    const QString folder = qEnvironmentVariable("TAMBO_MAKE_SAMPLE");
    if (folder.isEmpty())
        GTEST_SKIP();
    for (const Subject &subject : kSubjects)
        EXPECT_TRUE(Picture(subject)
                        .draw()
                        .convertToFormat(QImage::Format_RGB32)
                        .save(QDir(folder).filePath(QString(subject.name) + ".png")));
}

} // namespace KeptPicturesTest
