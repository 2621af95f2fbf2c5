// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of Color, Colormap and ResidueTypes.
#include "Color.h"
#include "Colormap.h"
#include "ResidueTypes.h"

#include "Directories.h"
#include "ResidueScales.h"
#include "support/LogLines.h"

#include <QColor>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using namespace TAMBO::services;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace ColorContractTest {

constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
const Color kBlue(0x0000ff);
const Color kWhite(0xffffff);
const Color kRed(0xff0000);

// A map file of its own.
class MapFile
{
public:
    explicit MapFile(const QByteArray &text)
    {
        QFile file(m_Directory.filePath("test.cm"));
        if (file.open(QIODevice::WriteOnly))
            file.write(text);
    }
    [[nodiscard]] std::string path() const { return m_Directory.filePath("test.cm").toStdString(); }

private:
    QTemporaryDir m_Directory;
};

void expectGrey(Color color)
{
    const QColor value = color.toQColor();
    EXPECT_EQ(value.red(), value.green());
    EXPECT_EQ(value.green(), value.blue());
}

// In place of the installed scales while it lives.
class ScopedScales
{
public:
    explicit ScopedScales(std::vector<ResidueScale> scales)
    {
        ResidueScales::setInstance(std::make_unique<ResidueScales>(std::move(scales)));
    }
    ~ScopedScales() { ResidueScales::setInstance(nullptr); }
    ScopedScales(const ScopedScales &) = delete;
    ScopedScales &operator=(const ScopedScales &) = delete;
};

TEST(ColorContract, GoesToTheToolkitAndBack)
{
    EXPECT_EQ(Color(QColor(1, 2, 3)).toQColor(), QColor(1, 2, 3));
    EXPECT_EQ(Color(0x102030).toQColor(), QColor(0x10, 0x20, 0x30));
    EXPECT_EQ(Color(QColor(1, 2, 3)), Color(0x010203));
}

TEST(ColorContract, KeepsTheAlphaItIsMadeOf)
{
    EXPECT_EQ(Color(0x80102030U).toQColor(), QColor(0x10, 0x20, 0x30, 0x80));
    EXPECT_EQ(Color(0x80102030U).argb(), 0x80102030U);
    EXPECT_EQ(Color(0x80102030U).rgb(), 0x102030U);
    EXPECT_EQ(Color(QColor(1, 2, 3, 4)).toQColor(), QColor(1, 2, 3, 4));
    EXPECT_NE(Color(0x80102030U), Color(0x102030));
    EXPECT_FALSE(Color(0x80102030U).isOpaque());
}

TEST(ColorContract, AWhollyTransparentColourOfTheToolkitStaysTransparent)
{
    for (const QColor &picked : {QColor(1, 2, 3, 0), QColor(0, 0, 0, 0)}) {
        const Color color(picked);
        EXPECT_EQ(color.toQColor(), picked);
        EXPECT_EQ(color.argb(), picked.rgba());
        EXPECT_FALSE(color.isOpaque());
        EXPECT_EQ(color, Color::fromArgb(picked.rgba()));
        EXPECT_NE(color, Color(picked.rgb()));
    }
}

TEST(ColorContract, EveryNumberThatAColourGivesMakesTheSameColour)
{
    for (const unsigned argb : {0U, 1U, 0x00ffffffU, 0x01000000U, 0x80102030U, 0xff000000U, ~0U})
        EXPECT_EQ(Color::fromArgb(argb).argb(), argb);
}

TEST(ColorContract, WithoutAlphaItIsOpaque)
{
    EXPECT_EQ(Color(0x102030), Color(0xff102030U));
    EXPECT_EQ(Color(0x102030).argb(), 0xff102030U);
    EXPECT_EQ(Color(0x102030).toQColor().alpha(), 255);
    EXPECT_EQ(Color(), Color(0xff000000U));
    EXPECT_TRUE(Color(0).isOpaque());
}

TEST(ColorContract, ReadsColoursOfOtherModels)
{
    EXPECT_EQ(Color(QColor::fromHsv(0, 255, 255)), kRed);
    EXPECT_EQ(Color(QColor()), Color(0x000000));
}

TEST(ColormapContract, TheShippedMapRunsFromBlueThroughWhiteToRed)
{
    Colormap map("BlueRed.cm", 100, "No name");
    map.setMinMax(0, 6);
    EXPECT_EQ(map.lookupValue(0), kBlue);
    EXPECT_EQ(map.lookupValue(3), kWhite);
    EXPECT_EQ(map.lookupValue(6), kRed);
    EXPECT_EQ(map.lookupValue(1.5F), Color(0x8080ff));
}

TEST(ColormapContract, ValuesOutsideTheBoundsTakeTheColourOfTheNearerBound)
{
    Colormap map("BlueRed.cm", 100, "No name");
    map.setMinMax(0, 6);
    EXPECT_EQ(map.lookupValue(-1), kBlue);
    EXPECT_EQ(map.lookupValue(99), kRed);
    EXPECT_EQ(map.lookupValue(-kInfinity), kBlue);
    EXPECT_EQ(map.lookupValue(kInfinity), kRed);
}

TEST(ColormapContract, NoNumberIsWhite)
{
    Colormap map(MapFile("0 0 0 0\n1 0 0 255\n").path(), 100, "No name");
    map.setMinMax(0, 6);
    EXPECT_EQ(map.lookupValue(kNoNumber), kWhite);
    map.setMinMax(kNoNumber, 6);
    EXPECT_EQ(map.lookupValue(3), kWhite);
}

TEST(ColormapContract, BoundsMayBeEqualOrTurnedRound)
{
    Colormap map("BlueRed.cm", 100, "No name");
    map.setMinMax(2, 2);
    EXPECT_EQ(map.lookupValue(1), kBlue);
    EXPECT_EQ(map.lookupValue(2), kWhite);
    EXPECT_EQ(map.lookupValue(3), kRed);
    map.setMinMax(6, 0);
    EXPECT_EQ(map.lookupValue(0), kRed);
    EXPECT_EQ(map.lookupValue(6), kBlue);
}

TEST(ColormapContract, WithoutBoundsTheyAreZeroAndOne)
{
    const Colormap map("BlueRed.cm", 100, "No name");
    EXPECT_EQ(map.lookupValue(0), kBlue);
    EXPECT_EQ(map.lookupValue(0.5F), kWhite);
    EXPECT_EQ(map.lookupValue(1), kRed);
}

TEST(ColormapContract, TheStepsSayHowFineTheMapIs)
{
    const MapFile file("0 0 0 0\n1 200 200 200\n");
    const Colormap coarse(file.path(), 2, "coarse");
    EXPECT_EQ(coarse.lookupValue(0.2F), Color(0x000000));
    EXPECT_EQ(coarse.lookupValue(0.3F), Color(0x646464));
    EXPECT_EQ(coarse.lookupValue(0.7F), Color(0x646464));
    EXPECT_EQ(coarse.lookupValue(0.8F), Color(0xc8c8c8));
    EXPECT_EQ(coarse.name(), "coarse");
}

TEST(ColormapContract, AFileOfNonsenseGivesGreyAndOneLogLine)
{
    const MapFile file("this is\nno colour map\n");
    const LogLines log;
    Colormap map(file.path(), 100, "No name");
    map.setMinMax(0, 6);
    for (const float value : {-1.0F, 0.0F, 2.0F, 6.0F, 9.0F})
        expectGrey(map.lookupValue(value));
    EXPECT_NE(map.lookupValue(0), map.lookupValue(6)) << "values can still be told apart";
    ASSERT_EQ(log.count(), 1);
    EXPECT_TRUE(log.texts().first().contains("test.cm:1: ")) << log.texts().first().toStdString();
}

TEST(ColormapContract, AFileThatIsNotThereGivesGreyAndOneLogLine)
{
    const LogLines log;
    const Colormap map("nosuch.cm", 100, "No name");
    expectGrey(map.lookupValue(0.3F));
    EXPECT_EQ(log.texts(), QStringList("Gray is used instead of a color map: "
                                       "there is no color map \"nosuch.cm\""));
}

TEST(ColormapContract, NoFileAtAllGivesGreyWithoutAWord)
{
    const LogLines log;
    const Colormap map("", 100, "No name");
    expectGrey(map.lookupValue(0.3F));
    EXPECT_EQ(log.count(), 0);
}

TEST(ResidueTypesContract, PropertiesAreAppendedInOrder)
{
    const ScopedScales scales({{"b", "", "", {}}, {"a", "", "", {}}, {"c", "", "", {}}});
    std::vector<std::string> names = {"before"};
    ResidueTypes::Properties(names);
    EXPECT_THAT(names, ElementsAre("before", "b", "a", "c"));
}

TEST(ResidueTypesContract, AValueIsGivenForAKnownLetterOnly)
{
    const ScopedScales scales({{"b", "", "", {{'A', 1.5F}}}});
    float value = 7;
    EXPECT_TRUE(ResidueTypes::GetValue("b", 'A', value));
    EXPECT_EQ(value, 1.5F);
    value = 7;
    for (const char letter : {'R', 'X', 'a', '-', '\0', '\xff'})
        EXPECT_FALSE(ResidueTypes::GetValue("b", letter, value));
    EXPECT_FALSE(ResidueTypes::GetValue("other", 'A', value));
    EXPECT_EQ(value, 7.0F);
}

TEST(ResidueTypesContract, WithoutScalesThereAreNoProperties)
{
    const ScopedScales scales{std::vector<ResidueScale>()};
    std::vector<std::string> names;
    ResidueTypes::Properties(names);
    EXPECT_THAT(names, IsEmpty());
}

TEST(ResidueTypesContract, TheWorkbenchBringsItsScales)
{
    std::vector<std::string> names;
    ResidueTypes::Properties(names);
    for (const char *name :
         {"Hydropathy", "Hydrophobicity", "Polarity", "Volume", "Surface area", "Isoelectric point",
          "Flexibility", "Helix propensity", "Strand propensity", "Turn propensity",
          "Charge at pH 7", "Side-chain class"})
        EXPECT_THAT(names, Contains(name));
    float value = 0;
    EXPECT_TRUE(ResidueTypes::GetValue("Volume", 'W', value));
    EXPECT_FLOAT_EQ(value, 227.8F);
    EXPECT_FALSE(ResidueTypes::GetValue("Volume", 'X', value));
}

} // namespace ColorContractTest
