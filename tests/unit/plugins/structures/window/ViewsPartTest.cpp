// SPDX-License-Identifier: GPL-3.0-or-later
// What is kept of the windows.
#include "ViewsPart.h"

#include "MadeExtras.h"
#include "MadeStructure.h"
#include "StructureWindow.h"
#include "support/ScopedSettings.h"
#include "support/WaitUntil.h"
#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "DataDelete.h"
#include "SessionParts.h"
#include "Space.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>
#include <stdexcept>

namespace ViewsPartTest {

using namespace structures;
using TAMBO::services::SessionParts;

class KeptViews : public ModelFixture
{
protected:
    KeptViews()
    {
        SessionParts::instance().setFinder([](std::uint32_t number) -> TAMBO::Compound * {
            for (TAMBO::Compound *const object : space())
                if (SessionPart::NumberOf(object) == number)
                    return object;
            return nullptr;
        });
    }
    ~KeptViews() override
    {
        closeAll();
        SessionParts::instance().setFinder({});
    }

    // That of the library.
    static SessionPart &part() { return *SessionParts::instance().find("structure-view"); }
    static void closeAll()
    {
        while (!StructureWindow::opened().isEmpty())
            StructureWindow::opened().front()->close(false);
    }
    static QJsonObject stored()
    {
        return QJsonDocument::fromJson(QByteArray::fromStdString(part().store())).object();
    }
    static QJsonObject firstView() { return stored()["views"].toArray().first().toObject(); }
    static std::string text(const QJsonObject &json)
    {
        return QJsonDocument(json).toJson().toStdString();
    }
    static std::string withView(const QJsonObject &view)
    {
        return text({{"version", 1}, {"views", QJsonArray{view}}});
    }

    ScopedSettings m_Settings{""};
    TAMBO::Compound *m_Structure = MadeStructure::make("1abc");
    TAMBO::Compound *m_Extras = MadeExtras::make("2new");
};

TEST_F(KeptViews, WithoutAWindowAreNothing)
{
    EXPECT_EQ(part().store(), "");
}

TEST_F(KeptViews, ComeBackAsTheyWere)
{
    StructureWindow &window = StructureWindow::open();
    window.setColoring(Coloring::BFactor);
    Camera camera = window.view().camera();
    camera.rotation = Rotation::about({1, 2, 3}, 0.7F);
    camera.target = {1, 2, 3};
    camera.height = 33;
    camera.isPerspective = true;
    camera.slabFront = camera.slabBack = 9;
    window.view().setCamera(camera);
    Look look;
    look.hasShadows = false;
    look.background = kDarkGround;
    window.view().setLook(look);
    StructureScene &scene = window.scene();
    scene.structures()[0]->setVisible(false);
    std::vector<bool> hidden(25);
    hidden[3] = hidden[4] = true;
    scene.structures()[0]->setHidden(hidden);
    std::vector<bool> chosen(13);
    chosen[5] = true;
    scene.structures()[1]->setStyle(Style::Spheres, chosen);
    scene.setWatersShown(true);
    scene.setModels({false, 1});
    scene.setRowsOf(TAMBO::DataMaker::makeAlignment("rows", {m_Structure->Child(0)}));
    scene.refresh();
    const std::vector<ResidueStyle> styles = scene.structures()[1]->styles();
    window.setGeometry(60, 50, 500, 400);
    const Vec3 target = camera.target + scene.origin();
    const std::string kept = part().store();
    const QJsonObject before = firstView();
    closeAll();

    part().clear();
    part().restore(kept);
    ASSERT_EQ(StructureWindow::opened().size(), 1);
    StructureWindow &again = *StructureWindow::opened().front();
    EXPECT_EQ(again.coloring(), Coloring::BFactor);
    EXPECT_EQ(again.view().look(), look);
    const Camera &now = again.view().camera();
    EXPECT_NEAR(distance(now.target + again.scene().origin(), target), 0, 1e-3);
    EXPECT_EQ(now.height, camera.height);
    EXPECT_TRUE(now.isPerspective);
    EXPECT_EQ(now.slabFront, 9);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(now.rotation.numbers()[i], camera.rotation.numbers()[i], 1e-6);
    EXPECT_FALSE(again.scene().structures()[0]->isVisible());
    EXPECT_EQ(again.scene().structures()[0]->hidden(), hidden);
    EXPECT_EQ(again.scene().structures()[1]->styles(), styles);
    EXPECT_TRUE(again.scene().areWatersShown());
    EXPECT_EQ(again.scene().models(), (ModelChoice{false, 1}));
    ASSERT_NE(again.scene().rows().alignment(), nullptr);
    EXPECT_EQ(again.scene().rows().alignment()->Name(), "rows");
    EXPECT_EQ(again.size(), QSize(500, 400));
    for (const char *const key : {"place", "look", "color", "models", "rows", "structures"})
        EXPECT_EQ(firstView()[key], before[key]) << key;
}

TEST_F(KeptViews, MeasuresComeBackWithTheirView)
{
    StructureWindow &window = StructureWindow::open();
    ViewedStructure &shown = *window.scene().structures()[0];
    const auto ca = [&shown](std::uint32_t residue) {
        return addressOf(shown, shown.molecule().residues[residue].tracePoint);
    };
    Measures measures;
    ASSERT_TRUE(measures.add({{ca(2), ca(7)}}));
    ASSERT_TRUE(measures.add({{ca(2), ca(3), ca(4)}}));
    window.measuring().setMeasures(measures);
    const std::string kept = part().store();
    closeAll();

    part().clear();
    part().restore(kept);
    ASSERT_EQ(StructureWindow::opened().size(), 1);
    StructureWindow &again = *StructureWindow::opened().front();
    ASSERT_EQ(again.measuring().measures().all().size(), 2U);
    EXPECT_EQ(again.measuring().measures().placesOf(0).size(), 2U);
    EXPECT_EQ(again.measuring().measures().placesOf(1).size(), 3U);
    EXPECT_EQ(part().store(), kept);
}

TEST_F(KeptViews, AWindowThatIsThereShowsTheFirstOfThem)
{
    StructureWindow::open();
    StructureWindow::open().setColoring(Coloring::Chain);
    const std::string kept = part().store();
    closeAll();
    const StructureWindow &open = StructureWindow::open();
    part().restore(kept);
    ASSERT_EQ(StructureWindow::opened().size(), 2);
    EXPECT_EQ(StructureWindow::opened().front(), &open);
    EXPECT_EQ(StructureWindow::opened().back()->coloring(), Coloring::Chain);
}

TEST_F(KeptViews, WhatAnotherVersionSaysStaysAsItIs)
{
    StructureWindow::open();
    QJsonObject json = stored();
    json["later"] = "x";
    QJsonObject view = firstView();
    view["labels"] = QJsonArray{1, 2};
    json["views"] = QJsonArray{view};
    part().restore(text(json));
    EXPECT_EQ(stored()["later"], QJsonValue("x"));
    EXPECT_EQ(firstView()["labels"], QJsonValue(QJsonArray{1, 2}));
    part().clear();
    EXPECT_FALSE(stored().contains("later"));
}

TEST_F(KeptViews, OfAStructureThatIsGoneAreLeftOut)
{
    StructureWindow &window = StructureWindow::open();
    window.scene().structures()[0]->setVisible(false);
    window.scene().structures()[1]->setVisible(false);
    const std::string kept = part().store();
    closeAll();
    {
        DataDelete<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(m_Structure);
    }
    part().restore(kept);
    const StructureScene &scene = StructureWindow::opened().front()->scene();
    ASSERT_EQ(scene.structures().size(), 1U);
    EXPECT_EQ(scene.structures()[0]->object(), m_Extras);
    EXPECT_FALSE(scene.structures()[0]->isVisible());
}

TEST_F(KeptViews, RunsOfOtherResiduesLeaveTheStructureAsItIs)
{
    const auto number = double(SessionPart::NumberOf(m_Structure));
    for (const QJsonArray &hidden : {QJsonArray{24, true}, QJsonArray{26, true},
                                     QJsonArray{1e300, true}, QJsonArray{-1, true, 26, true},
                                     QJsonArray{25}, QJsonArray{25, "x"}, QJsonArray{"x", true}}) {
        part().restore(withView(
            {{"structures", QJsonArray{QJsonObject{{"object", number}, {"hidden", hidden}}}}}));
        EXPECT_TRUE(StructureWindow::opened().front()->scene().structures()[0]->hidden().empty());
    }
    part().restore(withView(
        {{"structures",
          QJsonArray{QJsonObject{{"object", number}, {"hidden", QJsonArray{25, true}}}}}}));
    EXPECT_EQ(StructureWindow::opened().front()->scene().structures()[0]->hidden(),
              std::vector<bool>(25, true));
}

struct Hostile
{
    const char *title;
    std::string state;
};

class HostileViews : public KeptViews, public testing::WithParamInterface<Hostile>
{
};

TEST_P(HostileViews, AreRefusedAndNothingOpens)
{
    EXPECT_THROW(part().restore(GetParam().state), std::runtime_error);
    EXPECT_TRUE(StructureWindow::opened().isEmpty());
}

std::string oneView(const char *view)
{
    return std::string(R"({"version":1,"views":[)") + view + "]}";
}

std::string manyViews()
{
    std::string views = "{}";
    for (int i = 0; i < 60; ++i)
        views += ",{}";
    return oneView(views.c_str());
}

INSTANTIATE_TEST_SUITE_P(
    KeptViews, HostileViews,
    testing::Values(
        Hostile{"NoText", std::string("\0\xff", 2)}, Hostile{"NoObject", "[1]"},
        Hostile{"NoVersion", R"({"views":[]})"}, Hostile{"NoViews", R"({"version":1})"},
        Hostile{"ViewsThatAreNone", R"({"version":1,"views":7})"},
        Hostile{"AViewThatIsNone", oneView("7")}, Hostile{"TooManyViews", manyViews()},
        Hostile{"AHeightOfNothing", oneView(R"({"camera":{"height":0}})")},
        Hostile{"AHeightThatIsHuge", oneView(R"({"camera":{"height":1e300}})")},
        Hostile{"ATargetThatIsNoNumber", oneView(R"({"camera":{"target":[0,"nan",0]}})")},
        Hostile{"ATargetOfTwoNumbers", oneView(R"({"camera":{"target":[0,0]}})")},
        Hostile{"ATargetThatIsTooFar", oneView(R"({"camera":{"target":[0,1e12,0]}})")},
        Hostile{"ASlabBehindItself", oneView(R"({"camera":{"slab":[-1,3]}})")},
        Hostile{"ACameraThatIsNone", oneView(R"({"camera":[]})")},
        Hostile{"AGroundOfNoColor", oneView(R"({"look":{"ground":1e9}})")},
        Hostile{"APlaceThatIsHuge", oneView(R"({"place":[0,0,1e9,1e9]})")},
        Hostile{"AModelBeforeTheFirst", oneView(R"({"models":{"index":-1}})")},
        Hostile{"WatersThatAreANumber", oneView(R"({"waters":1})")},
        Hostile{"StructuresThatAreNone", oneView(R"({"structures":{}})")},
        Hostile{"AStructureWithoutAnObject", oneView(R"({"structures":[{"object":0}]})")}),
    [](const auto &info) { return std::string(info.param.title); });

TEST_F(KeptViews, ATurnOfNothingIsNone)
{
    part().restore(withView({{"camera", QJsonObject{{"turn", QJsonArray{0, 0, 0, 0}}}}}));
    EXPECT_TRUE(StructureWindow::opened().front()->view().camera().rotation == Rotation());
}

} // namespace ViewsPartTest
