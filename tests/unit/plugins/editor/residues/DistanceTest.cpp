// SPDX-License-Identifier: GPL-3.0-or-later
// Colouring by how far apart the residues of a column lie.
#include "ColoringFixture.h"

#include "Colormap.h"
#include "ColumnSpread.h"
#include "FileReader.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace DistanceTest {

namespace fs = std::filesystem;

using TAMBO::Vertex;

const Color kWhite(0xffffff);
const Color kGreen(0x00ff00);

class Distance : public ColoringFixture
{
protected:
    static Color mapped(double value, const char *file = "BlueRed.cm", float low = 0,
                        float high = 6)
    {
        Colormap map(file, 100, "No name");
        map.setMinMax(low, high);
        return map.lookupValue(static_cast<float>(value));
    }
    // The defined positions of a column, in the order of the rows.
    static std::vector<Vertex> positions(const TAMBO::Alignment &alignment, unsigned long col)
    {
        std::vector<Vertex> found;
        for (const TAMBO::Compound *residue : alignment.getCol(col)) {
            if (residue != nullptr && residue->Position().isDefined())
                found.push_back(residue->Position());
        }
        return found;
    }
    void colorAllGreen(ZEP::KALMO2 &window)
    {
        std::vector<QColor> table(21, Qt::green);
        window.setColor(table.data());
        history.clear();
    }
    Color colorAt(float apart)
    {
        TAMBO::Alignment &shown = alignmentOf({chain({{0, 0, 0}}), chain({{apart, 0, 0}})});
        run(open(shown), "colorDistance", {});
        return shown.getItem(0, 0)->OwnColor();
    }
    // Alignment and structures of a family, as the workbench opens them.
    static TAMBO::Alignment *family(const fs::path &alignment)
    {
        const fs::path folder = fs::path(TEST_DATA_DIR) / "families" / alignment.parent_path();
        auto rows = TAMBO::readFile(folder / alignment.filename());
        if (!rows)
            return nullptr;
        const DataPointBase guard(nullptr, Publisher::Add);
        for (const TAMBO::RowRecord &row : rows->alignments.front().rows) {
            auto structure = TAMBO::readFile(folder / row.link->structure);
            if (!structure)
                return nullptr;
            TAMBO::ObjectFactory::adopt(std::move(structure->structures.front()));
        }
        return TAMBO::ObjectFactory::adopt(std::move(rows->alignments.front()));
    }
    static std::string printed(double value)
    {
        return QString::number(static_cast<double>(static_cast<float>(value)), 'f', 4)
            .toStdString();
    }
    // The table was made in double precision. Coordinates in single precision move a mean by a
    // millionth of its size, which may be over the border between two last digits.
    static bool isPrintedAs(const std::string &text, double value)
    {
        constexpr double kPrecision = 2e-6;
        return printed(value) == text || printed(value - kPrecision) == text ||
               printed(value + kPrecision) == text;
    }
    // Every column's value to the last digit that the table gives, and its colour.
    void expectFamily(const fs::path &file)
    {
        TAMBO::Alignment *shown = family(file);
        ASSERT_NE(shown, nullptr);
        ZEP::KALMO2 &window = open(*shown);
        colorAllGreen(window);
        call(window, "colorDistance");
        std::ifstream table(fs::path(TEST_DATA_DIR) / "families" / file.parent_path() /
                            "ca_spread_per_column.tsv");
        std::string line;
        std::getline(table, line);
        unsigned long col = 0;
        unsigned long moved = 0;
        for (; std::getline(table, line); ++col) {
            std::vector<std::string> fields;
            std::istringstream cells(line);
            for (std::string field; std::getline(cells, field, '\t');)
                fields.push_back(field);
            const std::vector<Vertex> places = positions(*shown, col);
            ASSERT_EQ(std::to_string(places.size()), fields.at(1)) << "column " << col + 1;
            Color expected = kWhite;
            if (places.size() > 1) {
                const double mean = ZEP::meanDistance(places);
                ASSERT_TRUE(isPrintedAs(fields.at(4), mean))
                    << "column " << col + 1 << ": " << printed(mean) << " for " << fields.at(4);
                moved += printed(mean) == fields.at(4) ? 0 : 1;
                expected = mapped(mean);
            }
            for (const TAMBO::Compound *residue : shown->getCol(col)) {
                if (residue != nullptr) {
                    ASSERT_EQ(residue->OwnColor(),
                              residue->Position().isDefined() ? expected : kGreen);
                }
            }
        }
        EXPECT_EQ(col, shown->width());
        EXPECT_LE(moved, col / 100);
    }
};

TEST_F(Distance, AColumnGetsTheColourOfItsMeanDistance)
{
    // 3, 4 and 5 apart.
    TAMBO::Alignment &shown =
        alignmentOf({chain({{0, 0, 0}}), chain({{3, 0, 0}}), chain({{0, 4, 0}})});
    EXPECT_EQ(ZEP::meanDistance(positions(shown, 0)), 4.0);
    run(open(shown), "colorDistance", {});
    EXPECT_EQ(colored(shown, mapped(4)), (Texts{"#", "#", "#"}));
}

TEST_F(Distance, TheMenuColoursWithoutAQuestion)
{
    TAMBO::Alignment &shown = alignmentOf({chain({{0, 0, 0}}), chain({{3, 0, 0}})});
    const ZEP::KALMO2 &window = open(shown);
    DialogDriver dialogs;
    trigger(window, "Color", "By Distance");
    EXPECT_EQ(colored(shown, kWhite), (Texts{"#", "#"}));
    EXPECT_EQ(dialogs.titles(), QStringList());
}

TEST_F(Distance, GapsAndResiduesWithoutAPlaceTakeNoPart)
{
    TAMBO::Alignment &shown =
        alignmentOf({chain({{1, 1, 1}}), chain({{4, 5, 1}}), &peptide("gap", "A"),
                     &peptide("free", "A"), chain({Vertex()})});
    shown.insertGap(2, 0);
    ZEP::KALMO2 &window = open(shown);
    colorAllGreen(window);
    run(window, "colorDistance", {});
    EXPECT_EQ(colored(shown, mapped(5)), (Texts{"#-", "#-", "-.", ".-", ".-"}));
    EXPECT_EQ(colored(shown, kGreen), (Texts{".-", ".-", "-#", "#-", "#-"}));
}

TEST_F(Distance, TheOnlyResidueWithAPlaceBecomesWhite)
{
    TAMBO::Alignment &shown =
        alignmentOf({chain({{0, 0, 0}, {9, 9, 9}}), &peptide("free", "AA"), chain({{1, 0, 0}})});
    ZEP::KALMO2 &window = open(shown);
    colorAllGreen(window);
    run(window, "colorDistance", {});
    EXPECT_EQ(colored(shown, kWhite), (Texts{".#", "..", ".-"}));
    EXPECT_EQ(shown.getItem(1, 1)->OwnColor(), kGreen);
}

TEST_F(Distance, AColumnWithoutPlacesIsLeftAsItWas)
{
    TAMBO::Alignment &shown = alignment({"AC", "AC"});
    const std::vector<Color> before = colorsOf(shown);
    run(open(shown), "colorDistance", {});
    EXPECT_EQ(colorsOf(shown), before);
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Distance, NeitherTheRangeNorTheAlignmentsLockMatters)
{
    TAMBO::Alignment &shown =
        alignmentOf({chain({{0, 0, 0}, {0, 0, 0}}), chain({{3, 0, 0}, {3, 0, 0}})});
    shown.range({1, 2});
    TAMBO::setObjectLocked(shown, true);
    run(open(shown), "colorDistance", {});
    EXPECT_EQ(colored(shown, kWhite), (Texts{"##", "##"}));
}

TEST_F(Distance, ColumnsAreColouredBeyondTheFirstHundreds)
{
    // Many at a time are taken.
    constexpr std::size_t kColumns = 700;
    Places first;
    Places second;
    for (std::size_t i = 0; i < kColumns; ++i) {
        first.emplace_back(0, 0, 0);
        second.emplace_back(float(i) * 6 / float(kColumns), 0, 0);
    }
    TAMBO::Alignment &shown = alignmentOf({chain(first), chain(second)});
    run(open(shown), "colorDistance", {});
    for (unsigned long col = 0; col < kColumns; ++col) {
        for (const unsigned long row : {0UL, 1UL})
            ASSERT_EQ(shown.getItem(row, col)->OwnColor(), mapped(second[col].x())) << col;
    }
}

TEST_F(Distance, OneRowIsOnlyRepainted)
{
    TAMBO::Alignment &shown = alignmentOf({chain({{0, 0, 0}, {1, 0, 0}})});
    ZEP::KALMO2 &window = show(shown, {400, 300});
    const std::vector<Color> before = colorsOf(shown);
    Repaints repaints(window);
    run(window, "colorDistance", {});
    EXPECT_EQ(repaints.take(), kCells);
    EXPECT_EQ(colorsOf(shown), before);
}

TEST_F(Distance, WithoutSettingsTheMapRunsFromBlueToRedOverSixAngstrom)
{
    EXPECT_EQ(colorAt(0), Color(0x0000ff));
    EXPECT_EQ(colorAt(3), kWhite);
    EXPECT_EQ(colorAt(6), Color(0xff0000));
    EXPECT_EQ(colorAt(99), Color(0xff0000));
}

TEST_F(Distance, EachSettingHoldsByItself)
{
    const QByteArray section = QByteArray(kFont);
    setSettings(section + "DistanceCutoffMax = 10\n");
    EXPECT_EQ(colorAt(4), mapped(4, "BlueRed.cm", 0, 10));
    setSettings(section + "DistanceCutoffMin = 1.5\n");
    EXPECT_EQ(colorAt(4), mapped(4, "BlueRed.cm", 1.5F, 6));
    setSettings(section + "DistanceColorMap = RedBlue.cm\n");
    EXPECT_EQ(colorAt(4), mapped(4, "RedBlue.cm"));
    EXPECT_NE(colorAt(4), mapped(4));
}

TEST_F(Distance, WhatIsNoNumberCountsAsNotSet)
{
    setSettings(QByteArray(kFont) + "DistanceCutoffMin = abc\nDistanceCutoffMax = wide\n");
    EXPECT_EQ(colorAt(4), mapped(4));
}

TEST_F(Distance, SettingsAreReadEachTime)
{
    TAMBO::Alignment &shown = alignmentOf({chain({{0, 0, 0}}), chain({{4, 0, 0}})});
    ZEP::KALMO2 &window = open(shown);
    run(window, "colorDistance", {});
    EXPECT_EQ(shown.getItem(0, 0)->OwnColor(), mapped(4));
    setSettings(QByteArray(kFont) + "DistanceCutoffMax = 20\n");
    run(window, "colorDistance", {});
    EXPECT_EQ(shown.getItem(0, 0)->OwnColor(), mapped(4, "BlueRed.cm", 0, 20));
}

TEST_F(Distance, ABrokenMapIsGreyAndNamedOnce)
{
    setSettings(QByteArray(kFont) + "DistanceColorMap = nonsense.cm\n");
    TAMBO::Alignment &shown =
        alignmentOf({chain({{0, 0, 0}, {0, 0, 0}}), chain({{4, 0, 0}, {2, 0, 0}})});
    ZEP::KALMO2 &window = open(shown);
    const LogLines log;
    run(window, "colorDistance", {});
    EXPECT_EQ(log.count(), 1);
    const QColor color = shown.getItem(0, 0)->OwnColor().toQColor();
    EXPECT_EQ(color.red(), color.blue());
    EXPECT_EQ(color.red(), color.green());
}

TEST_F(Distance, UndoGivesTheColoursBack)
{
    TAMBO::Alignment &shown =
        alignmentOf({chain({{0, 0, 0}, {0, 0, 0}}), chain({{4, 0, 0}, {2, 0, 0}})});
    ZEP::KALMO2 &window = open(shown);
    colorAllGreen(window);
    run(window, "colorDistance", {});
    const std::vector<Color> after = colorsOf(shown);
    EXPECT_TRUE(history.undo());
    EXPECT_EQ(colored(shown, kGreen), (Texts{"##", "##"}));
    EXPECT_FALSE(history.canUndo());
    EXPECT_TRUE(history.redo());
    EXPECT_EQ(colorsOf(shown), after);
}

TEST_F(Distance, AResidueInTwoColumnsHasTheColourOfTheLast)
{
    TAMBO::Compound *twice = chain({{0, 0, 0}, {0, 0, 0}});
    TAMBO::Alignment &shown = alignmentOf({twice, twice, chain({{0, 0, 0}, {6, 0, 0}})});
    // The second row's first residue stands below the first row's second.
    shown.insertGap(1, 0);
    run(open(shown), "colorDistance", {});
    EXPECT_EQ(shown.getItem(0, 0)->OwnColor(), mapped(ZEP::meanDistance(positions(shown, 1))));
}

TEST_F(Distance, TheValuesOfGlucosePhosphateDehydrogenasesAreThoseOfTheirTable)
{
    expectFamily("g6pd/g6pd_templates.ali");
}

TEST_F(Distance, TheValuesOfSerineProteasesAreThoseOfTheirTable)
{
    expectFamily("serine_proteases/serine_proteases.ali");
}

// Coordinates in single precision, everything from the root on in double.
TEST_F(Distance, TheSumIsMadeInTheOrderOfThePairs)
{
    std::vector<Vertex> places;
    unsigned state = 7;
    const auto next = [&state] {
        state = state * 1103515245U + 12345U;
        return 1000 + static_cast<float>(state >> 16U) / 3000;
    };
    for (int count = 2; count < 40; ++count) {
        places.clear();
        for (int i = 0; i < count; ++i) {
            const float x = next();
            const float y = next();
            places.emplace_back(x, y, next());
        }
        double sum = 0;
        unsigned long pairs = 0;
        for (std::size_t i = 0; i < places.size(); ++i) {
            for (std::size_t k = i + 1; k < places.size(); ++k) {
                const float dx = places[i].x() - places[k].x();
                const float dy = places[i].y() - places[k].y();
                const float dz = places[i].z() - places[k].z();
                const float xx = dx * dx;
                const float yy = dy * dy;
                const float zz = dz * dz;
                const float plane = xx + yy;
                const float square = plane + zz;
                sum += std::sqrt(static_cast<double>(square));
                ++pairs;
            }
        }
        EXPECT_EQ(ZEP::meanDistance(places), sum / static_cast<double>(pairs)) << count;
    }
}

TEST_F(Distance, APairlessColumnIsReportedAndHasNoValue)
{
    const ExpectMessage failed(QtWarningMsg, "ASSERT: \"0 < Count\" in KALMO2 (993)");
    EXPECT_TRUE(std::isnan(ZEP::meanDistance({Vertex(1, 2, 3)})));
}

} // namespace DistanceTest
