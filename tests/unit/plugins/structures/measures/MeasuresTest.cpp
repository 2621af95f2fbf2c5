// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeasuresText.h"

#include "MadeExtras.h"
#include "MadeStructure.h"
#include "PositionEdit.h"
#include "Structure.h"
#include "unit/model/AlignmentFixture.h"

#include "DataDelete.h"
#include "DataPoint.h"
#include "Space.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace MeasuresTest {

using namespace structures;

class MeasuresOfModel : public ModelFixture
{
protected:
    TAMBO::Compound *m_Structure = MadeStructure::make("1abc");
    StepStack m_History;
    StructureScene m_Scene{[] {}};

    ViewedStructure &shown() { return *m_Scene.structures().front(); }
    // The CA atoms of residues of chain A.
    Measure measureOf(const std::vector<std::uint32_t> &residues)
    {
        Measure measure;
        for (const std::uint32_t residue : residues)
            measure.atoms.push_back(
                addressOf(shown(), shown().molecule().residues[residue].tracePoint));
        return measure;
    }
    QString textOf(const Measures &measures, std::size_t index = 0)
    {
        return measures.placesOf(index).empty() ? "gone" : measureText(measures.placesOf(index));
    }
    template <typename Change> void inAStep(const Change &change)
    {
        DataDelete<TAMBO::Space> step(nullptr, TAMBO::Space::instance());
        ASSERT_TRUE(step.m_good);
        change();
    }
};

TEST_F(MeasuresOfModel, TextsHaveTheUnitAndTheDigitsThatMatter)
{
    EXPECT_EQ(measureText({{0, 0, 0}, {3.4161F, 0, 0}}), QString::fromUtf8("3.42 Å"));
    EXPECT_EQ(measureText({{1, 1, 1}, {0, 0, 0}, {1, -1, -1}}), QString::fromUtf8("109.5°"));
    EXPECT_EQ(measureText({{-1, 1, 0}, {0, 0, 0}, {1, 0, 0}, {2, 0, -1}}),
              QString::fromUtf8("−90.0°"));
    EXPECT_EQ(measureText({{-1, 1, 0}, {0, 0, 0}, {1, 0, 0}, {2, -1, -1e-5F}}),
              QString::fromUtf8("180.0°"));
    EXPECT_EQ(measureText({{-1, 1, 0}, {0, 0, 0}, {1, 0, 0}, {2, 1, -1e-5F}}),
              QString::fromUtf8("0.0°"));
    EXPECT_EQ(measureText({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}), "undefined");
}

TEST_F(MeasuresOfModel, MeasuresTheAtomsThatTheyName)
{
    Measures measures;
    ASSERT_TRUE(measures.add(measureOf({0, 1})));
    ASSERT_TRUE(measures.add(measureOf({0, 1, 2, 3})));
    measures.follow(m_Scene);
    // Of an ideal helix of CA atoms.
    EXPECT_EQ(textOf(measures, 0), QString::fromUtf8("3.83 Å"));
    EXPECT_EQ(textOf(measures, 1), QString::fromUtf8("50.0°"));
}

TEST_F(MeasuresOfModel, TheSameIsNotTakenTwiceFromEitherEnd)
{
    Measures measures;
    EXPECT_TRUE(measures.add(measureOf({1, 5, 9})));
    EXPECT_FALSE(measures.add(measureOf({1, 5, 9})));
    EXPECT_FALSE(measures.add(measureOf({9, 5, 1})));
    EXPECT_TRUE(measures.add(measureOf({5, 1, 9})));
    EXPECT_FALSE(measures.add(measureOf({1})));
    EXPECT_FALSE(measures.add(measureOf({1, 2, 3, 4, 5})));
    EXPECT_EQ(measures.all().size(), 2U);
}

TEST_F(MeasuresOfModel, FollowAStructureThatIsMoved)
{
    TAMBO::Compound *const other = MadeStructure::make("2xyz");
    m_Scene.refresh();
    Measure measure = measureOf({4});
    const ViewedStructure &second = *m_Scene.structures()[1];
    measure.atoms.push_back(addressOf(second, second.molecule().residues[4].tracePoint));
    Measures measures;
    ASSERT_TRUE(measures.add(measure));
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), QString::fromUtf8("0.00 Å"));
    const TAMBO::Superposition shift({{TAMBO::Vertex(0, 0, 0), TAMBO::Vertex(3, 4, 0)}});
    ASSERT_TRUE(TAMBO::moveStructures({{dynamic_cast<TAMBO::Structure *>(other), shift}}));
    ASSERT_TRUE(m_Scene.refresh().places);
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), QString::fromUtf8("5.00 Å"));
    m_History.undo();
    m_Scene.refresh();
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), QString::fromUtf8("0.00 Å"));
}

TEST_F(MeasuresOfModel, VanishWithTheirAtomsAndComeBackWithThem)
{
    Measures measures;
    ASSERT_TRUE(measures.add(measureOf({2, 7})));
    measures.follow(m_Scene);
    const QString before = textOf(measures);
    inAStep([this] { TAMBO::DataMaker::Destroy(m_Structure); });
    m_Scene.refresh();
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), "gone");
    // Nothing that comes meanwhile is taken for it.
    inAStep([] { MadeStructure::make("1abc"); });
    m_Scene.refresh();
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), "gone");
    m_History.undo();
    m_History.undo();
    m_Scene.refresh();
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), before);
}

TEST_F(MeasuresOfModel, ADeletedChainTakesThoseOfItsAtomsAlone)
{
    Measures measures;
    Measure toIon = measureOf({3});
    toIon.atoms.push_back(addressOf(shown(), std::uint32_t(shown().molecule().atoms.size() - 1)));
    ASSERT_TRUE(measures.add(measureOf({2, 7})));
    ASSERT_TRUE(measures.add(toIon));
    measures.follow(m_Scene);
    const QString within = textOf(measures, 0);
    const QString across = textOf(measures, 1);
    inAStep([this] { TAMBO::DataMaker::Destroy(m_Structure->Child(1)); });
    m_Scene.refresh();
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures, 0), within);
    EXPECT_EQ(textOf(measures, 1), "gone");
    m_History.undo();
    m_Scene.refresh();
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures, 1), across);
}

TEST_F(MeasuresOfModel, AreNotShownWithoutWhatTheyMeasure)
{
    Measures measures;
    ASSERT_TRUE(measures.add(measureOf({2, 7})));
    std::vector<bool> hidden(25);
    hidden[7] = true;
    shown().setHidden(hidden);
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), "gone");
    shown().setHidden({});
    shown().setVisible(false);
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), "gone");
    shown().setVisible(true);
    measures.follow(m_Scene);
    EXPECT_NE(textOf(measures), "gone");
}

TEST_F(MeasuresOfModel, ComeBackFromWhatWasKept)
{
    Measures measures;
    ASSERT_TRUE(measures.add(measureOf({2, 7})));
    ASSERT_TRUE(measures.add(measureOf({2, 7, 11, 12})));
    const QByteArray kept = QJsonDocument(measuresToJson(measures)).toJson();
    Measures again = measuresFromJson(QJsonDocument::fromJson(kept).object());
    EXPECT_EQ(again.all(), measures.all());
    again.follow(m_Scene);
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(again, 1), textOf(measures, 1));
}

TEST_F(MeasuresOfModel, AWaterIsMeasuredAsLongAsItIsToBeSeen)
{
    TAMBO::Compound *const wet = MadeExtras::make("wet");
    m_Scene.refresh();
    ViewedStructure &structure = *m_Scene.structures()[1];
    Measure measure = {{addressOfWater(structure, 0), addressOfWater(structure, 1)}};
    Measure beyond = {{addressOfWater(structure, 0), addressOfWater(structure, 3)}};
    Measures measures;
    ASSERT_TRUE(measures.add(measure));
    ASSERT_TRUE(measures.add(beyond));
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), "gone");
    m_Scene.setWatersShown(true);
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), QString::fromUtf8("4.00 Å"));
    EXPECT_EQ(textOf(measures, 1), "gone");
    // As on the screen, they go with their chain.
    structure.setHidden(std::vector<bool>(structure.molecule().residues.size(), true));
    measures.follow(m_Scene);
    EXPECT_EQ(textOf(measures), "gone");
    structure.setHidden({});
    const TAMBO::Superposition shift({{TAMBO::Vertex(0, 0, 0), TAMBO::Vertex(3, 4, 0)}});
    measure = {{measureOf({0}).atoms[0], addressOfWater(structure, 0)}};
    Measures between;
    ASSERT_TRUE(between.add(measure));
    between.follow(m_Scene);
    const QString before = textOf(between);
    ASSERT_TRUE(TAMBO::moveStructures({{dynamic_cast<TAMBO::Structure *>(wet), shift}}));
    m_Scene.refresh();
    between.follow(m_Scene);
    EXPECT_NE(textOf(between), before) << "waters move with their structure";
}

TEST_F(MeasuresOfModel, WatersAreKeptBesideAtomsAndOlderTextsAreReadAsBefore)
{
    MadeExtras::make("wet");
    m_Scene.refresh();
    m_Scene.setWatersShown(true);
    Measure measure = measureOf({2});
    measure.atoms.push_back(addressOfWater(*m_Scene.structures()[1], 1));
    Measures measures;
    ASSERT_TRUE(measures.add(measure));
    ASSERT_TRUE(measures.add(measureOf({2, 7})));
    const QByteArray kept = QJsonDocument(measuresToJson(measures)).toJson();
    Measures again = measuresFromJson(QJsonDocument::fromJson(kept).object());
    EXPECT_EQ(again.all(), measures.all());
    again.follow(m_Scene);
    EXPECT_NE(textOf(again), "gone");
    const QByteArray older =
        R"({"version": 1, "measures": [{"atoms": [{"chain": 17, "child": 4, "atom": "CA", "nth": 0},)"
        R"( {"chain": 17, "child": 9, "atom": "O", "nth": 1}]}]})";
    const Measures old = measuresFromJson(QJsonDocument::fromJson(older).object());
    ASSERT_EQ(old.all().size(), 1U);
    EXPECT_EQ(old.all()[0].atoms[0], (AtomAddress{17, 4, "CA", 0}));
    EXPECT_EQ(old.all()[0].atoms[1], (AtomAddress{17, 9, "O", 1}));
    for (const char *const wrong :
         {R"({"structure": 12})", R"({"water": 3})", R"({"structure": 12, "water": -1})",
          R"({"structure": 12, "water": 4294967295})"}) {
        const QJsonObject atom = QJsonDocument::fromJson(wrong).object();
        const QJsonObject bad{
            {"version", 1},
            {"measures", QJsonArray{QJsonObject{{"atoms", QJsonArray{atom, atom}}}}}};
        EXPECT_TRUE(measuresFromJson(bad).all().empty()) << wrong;
    }
}

TEST_F(MeasuresOfModel, WhatIsNotUnderstoodIsLeftOut)
{
    Measures measures;
    ASSERT_TRUE(measures.add(measureOf({2, 7})));
    const QJsonObject good = measuresToJson(measures);
    QJsonArray all = good["measures"].toArray();
    all.append(QJsonObject{{"atoms", "none"}});
    all.append(QJsonObject{{"atoms", QJsonArray{QJsonObject{{"chain", -1}}, 3}}});
    all.append(7);
    QJsonObject other = good;
    other["measures"] = all;
    EXPECT_EQ(measuresFromJson(other).all(), measures.all());
    other["version"] = 2;
    EXPECT_TRUE(measuresFromJson(other).all().empty());
    EXPECT_TRUE(measuresFromJson({}).all().empty());
}

} // namespace MeasuresTest
