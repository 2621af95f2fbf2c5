// SPDX-License-Identifier: GPL-3.0-or-later
// Tracks of what files and structures say, in real windows and of real families.
#include "Companion.h"
#include "DataMaker.h"
#include "FileReader.h"
#include "LinePainting.h"
#include "Structure.h"
#include "TableChanges.h"
#include "Tracks.h"
#include "window/AlignmentWindowFixture.h"

#include "WorkbenchValues.h"

#include <QAction>
#include <QMenu>

#include <filesystem>
#include <memory>

namespace LineTracksTest {

namespace fs = std::filesystem;

using companion::Companion;
using companion::LineTrack;
using companion::Track;
using companion::TrackCanvas;

class LinesOfAWindow : public AlignmentWindowFixture
{
protected:
    LinesOfAWindow() { forget(); }
    ~LinesOfAWindow() override
    {
        m_Companion.reset();
        forget();
    }
    static void forget()
    {
        WorkbenchValues::Remove("companion", "tracks-off");
        WorkbenchValues::Remove("companion", "tracks-on");
        WorkbenchValues::Remove("companion", "dock-Tracks");
        WorkbenchValues::Remove("companion", "dock-Overview");
        WorkbenchValues::Remove("companion", "cell-width");
    }
    // The first alignment of a file.
    static TAMBO::Alignment *load(const char *file)
    {
        auto read = TAMBO::readFile(fs::path(TEST_DATA_DIR) / "alignments/stockholm" / file);
        if (!read)
            return nullptr;
        const DataPointBase guard(nullptr, Publisher::Add);
        return TAMBO::ObjectFactory::adopt(std::move(read->alignments.front()));
    }
    void look(TAMBO::Alignment &shown)
    {
        m_Window = &show(shown, {1000, 700});
        m_Companion = std::make_unique<Companion>(served(*m_Window));
        m_Companion->tracks().toggle();
        settle();
    }
    void settle()
    {
        QCoreApplication::processEvents();
        while (canvas().isComputing())
            QCoreApplication::processEvents();
    }
    TrackCanvas &canvas() { return m_Companion->tracks().canvas(); }
    const LineTrack &line(const QString &name)
    {
        static const LineTrack none;
        for (const LineTrack &each : canvas().lines())
            if (each.name == name)
                return each;
        ADD_FAILURE() << "no " << name.toStdString();
        return none;
    }
    QStringList names()
    {
        QStringList names;
        for (const LineTrack &each : canvas().lines())
            names << each.name;
        return names;
    }
    QString toolTip(const QString &name, unsigned long col)
    {
        return toolTipAt(&canvas(), canvas().columnRect(line(name), col).center());
    }
    void select(TAMBO::Alignment &shown, unsigned long row)
    {
        shown.selectInRow(row, {0, shown.width()});
    }
    static int inked(const QImage &image, const QRect &place)
    {
        int count = 0;
        for (int y = place.top(); y <= place.bottom(); ++y)
            for (int x = place.left(); x <= place.right(); ++x)
                count += image.valid(x, y) && image.pixelColor(x, y) != QColor(Qt::white) ? 1 : 0;
        return count;
    }

    ZEP::KALMO2 *m_Window = nullptr;
    std::unique_ptr<Companion> m_Companion;
};

TEST_F(LinesOfAWindow, LinesOverTheColumnsOfAStockholmFileAreTracks)
{
    TAMBO::Alignment *const shown = load("fibronectin3_seed.sto");
    ASSERT_NE(shown, nullptr);
    look(*shown);
    ASSERT_EQ(names(), QStringList({"SS_cons", "seq_cons"}));
    EXPECT_TRUE(canvas().isOn(line("SS_cons")));
    EXPECT_FALSE(canvas().isOn(line("seq_cons"))) << "no structure, no measure of each column";
    const QRect first = canvas().columnRect(line("SS_cons"), 0);
    EXPECT_EQ(first.left(), canvas().columnRect(Track::Occupancy, 0).left());
    EXPECT_GT(inked(pictureOf(&canvas()),
                    {first.left(), first.top(), 20 * first.width(), first.height()}),
              20);
    EXPECT_TRUE(canvas().columnRect(line("seq_cons"), 0).isEmpty());
    canvas().setOn(line("seq_cons"), true);
    settle();
    EXPECT_FALSE(canvas().columnRect(line("seq_cons"), 0).isEmpty());
    EXPECT_EQ(WorkbenchValues::Get("companion", "tracks-on"), "gc:seq_cons");
}

TEST_F(LinesOfAWindow, AToolTipTellsTheCharacterAndItsMeaning)
{
    TAMBO::AlignmentRecord record;
    record.name = "lines";
    record.rows.resize(1);
    record.rows[0].name = "row";
    record.rows[0].sequence.append("ACDEFG");
    record.columnAnnotations = {
        {"SS_cons", "HGET.-"}, {"SA_cons", "09X..."}, {"PP_cons", "09*..."}, {"RF", "x.x..."}};
    TAMBO::Alignment *shown = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        shown = TAMBO::ObjectFactory::adopt(std::move(record));
    }
    look(*shown);
    const std::string column = "Column 1 of 6\n";
    EXPECT_EQ(toolTip("SS_cons", 0), "Column 1 of 6\nSS_cons: H, helix");
    EXPECT_EQ(toolTip("SS_cons", 1), "Column 2 of 6\nSS_cons: G, helix");
    EXPECT_EQ(toolTip("SS_cons", 2), "Column 3 of 6\nSS_cons: E, strand");
    EXPECT_EQ(toolTip("SS_cons", 3), "Column 4 of 6\nSS_cons: T, turn");
    EXPECT_EQ(toolTip("SS_cons", 4), "Column 5 of 6\nSS_cons: nothing");
    EXPECT_EQ(toolTip("SS_cons", 5), "Column 6 of 6\nSS_cons: -, neither helix nor strand");
    EXPECT_EQ(toolTip("SA_cons", 0), "Column 1 of 6\nSA_cons: 0, 0 to 10 %");
    EXPECT_EQ(toolTip("SA_cons", 1), "Column 2 of 6\nSA_cons: 9, 90 to 100 %");
    EXPECT_EQ(toolTip("SA_cons", 2), "Column 3 of 6\nSA_cons: X");
    EXPECT_EQ(toolTip("PP_cons", 0), "Column 1 of 6\nPP_cons: 0, 0 to 5 %");
    EXPECT_EQ(toolTip("PP_cons", 1), "Column 2 of 6\nPP_cons: 9, 85 to 95 %");
    EXPECT_EQ(toolTip("PP_cons", 2), "Column 3 of 6\nPP_cons: *, 95 to 100 %");
    EXPECT_EQ(toolTip("RF", 2), "Column 3 of 6\nRF: x");
    const int y = canvas().columnRect(line("PP_cons"), 0).center().y();
    EXPECT_EQ(toolTipAt(&canvas(), {4, y}), line("PP_cons").meaning);
    // 1 of 11 and all of the height.
    const QImage picture = pictureOf(&canvas());
    const QRect least = canvas().columnRect(line("PP_cons"), 0);
    const QRect most = canvas().columnRect(line("PP_cons"), 2);
    EXPECT_EQ(inked(picture, most), (most.width() - 1) * most.height());
    EXPECT_NEAR(inked(picture, least), inked(picture, most) / 11.0, least.width());
}

TEST_F(LinesOfAWindow, LinesThatAreSetAreTracksAtOnceAndThoseThatGoAreNone)
{
    TAMBO::Alignment *const shown = load("fibronectin3_seed.sto");
    ASSERT_NE(shown, nullptr);
    look(*shown);
    const auto annotate = [&](std::vector<TAMBO::Annotation> lines) {
        {
            DataPoint<TAMBO::Alignment> change(nullptr, shown);
            TAMBO::annotate(change->table(), {}, std::move(lines), "annotate columns");
        }
        settle();
    };
    const std::string text(shown->width(), '7');
    annotate({{"SA_cons", text}});
    EXPECT_EQ(names(), QStringList({"SA_cons"}));
    EXPECT_EQ(toolTip("SA_cons", 1),
              "Column 2 of " + QString::number(shown->width()) + "\nSA_cons: 7, 70 to 80 %");
    annotate({});
    EXPECT_EQ(names(), QStringList());
}

TEST_F(LinesOfAWindow, LinesFollowEditsOfTheirColumns)
{
    TAMBO::Alignment *const shown = load("fibronectin3_seed.sto");
    ASSERT_NE(shown, nullptr);
    look(*shown);
    const std::string before = companion::lineText(*shown, line("SS_cons"), 0, 10);
    {
        DataPoint<TAMBO::Alignment> change(nullptr, shown);
        change->insertGapCol(3, 2);
    }
    settle();
    EXPECT_EQ(companion::lineText(*shown, line("SS_cons"), 0, 12),
              before.substr(0, 3) + "  " + before.substr(3));
}

TEST_F(LinesOfAWindow, SelectedRowsGetTracksAndLoseThem)
{
    TAMBO::Alignment *const shown = load("cbs_domain_with_gr_lines.sto");
    ASSERT_NE(shown, nullptr);
    look(*shown);
    EXPECT_EQ(names(), QStringList({"SS_cons"}));
    const int height = canvas().sizeHint().height();
    select(*shown, 0);
    select(*shown, 1);
    m_Companion->tracks().chooseRows();
    settle();
    EXPECT_EQ(names(), QStringList({"SS_cons", "O83071/192-246", "O83071/192-246 SA",
                                    "O83071/259-312", "O83071/259-312 SS"}));
    EXPECT_GT(canvas().sizeHint().height(), height);
    EXPECT_EQ(canvas().height(), canvas().sizeHint().height());
    EXPECT_EQ(toolTip("O83071/192-246 SA", 0), "Column 1 of 43\nO83071/192-246 SA: 9, 90 to 100 %");
    EXPECT_EQ(toolTip("O83071/192-246", 0),
              "Column 1 of 43\nO83071/192-246: -, neither helix nor strand");

    // They stay with their rows.
    {
        DataPoint<TAMBO::Alignment> change(nullptr, shown);
        change->bubbleRow(0, 2);
    }
    settle();
    EXPECT_EQ(canvas().chosenRows(), (std::vector<unsigned long>{2, 0}));
    EXPECT_EQ(toolTip("O83071/192-246 SA", 0), "Column 1 of 43\nO83071/192-246 SA: 9, 90 to 100 %");

    QMenu menu;
    m_Companion->tracks().fillMenu(menu);
    const QList<QAction *> actions = menu.actions();
    const auto without =
        std::ranges::find(actions, QStringLiteral("Without O83071/192-246"), &QAction::text);
    ASSERT_NE(without, actions.end());
    (*without)->trigger();
    settle();
    EXPECT_EQ(names(), QStringList({"SS_cons", "O83071/259-312", "O83071/259-312 SS"}));
    m_Companion->tracks().giveUpRows();
    settle();
    EXPECT_EQ(names(), QStringList({"SS_cons"}));
    EXPECT_EQ(canvas().sizeHint().height(), height);
}

TEST_F(LinesOfAWindow, WithoutASelectedRowTheTracksSayHowToChooseOne)
{
    TAMBO::Alignment &shown = alignment({"ACD", "ACD", "ACD", "ACD", "ACD", "ACD"});
    look(shown);
    m_Companion->tracks().chooseRows();
    settle();
    EXPECT_EQ(canvas().rowHint(), "Select a residue of each row that is to be shown here, and "
                                  "choose Tracks of Selected Rows again.");
    EXPECT_EQ(names(), QStringList());
    for (unsigned long row = 0; row < 6; ++row)
        select(shown, row);
    m_Companion->tracks().chooseRows();
    settle();
    EXPECT_EQ(names(), QStringList({"s0", "s1", "s2", "s3"}));
    EXPECT_EQ(canvas().rowHint(), "These are the first 4 rows with selected residues.");
    m_Companion->tracks().giveUpRows();
    EXPECT_EQ(canvas().rowHint(), "");
}

TEST_F(LinesOfAWindow, TheSecondaryStructureOfARowIsThatOfItsChain)
{
    const fs::path folder = fs::path(TEST_DATA_DIR) / "structures";
    auto read = TAMBO::readFile(folder / "lysozyme_1aki.pdb");
    ASSERT_TRUE(read);
    TAMBO::Structure *structure = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        structure = TAMBO::ObjectFactory::adopt(std::move(read->structures.front()));
    }
    TAMBO::Alignment *const shown =
        TAMBO::DataMaker::makeAlignment("lysozyme", {structure->Child(0)});
    look(*shown);
    select(*shown, 0);
    m_Companion->tracks().chooseRows();
    settle();
    ASSERT_EQ(canvas().lines().size(), 1U);
    const std::string text = companion::lineText(*shown, canvas().lines()[0], 0, shown->width());
    std::size_t helix = 0;
    for (unsigned long col = 0; col < shown->width(); ++col) {
        const auto *const residue = dynamic_cast<const TAMBO::Residue *>(shown->getItem(0, col));
        const TAMBO::Compound *const element = residue->GetSSE();
        EXPECT_EQ(text[col], element == nullptr ? '-' : element->TypeCode()) << col;
        helix += companion::elementOf(text[col]) == 'H' ? 1 : 0;
    }
    EXPECT_GT(helix, 30U);
}

// What stands in three rows of pixels of the picture: helices reach from top to bottom, strands
// only at their heads, and lines run in the middle.
TEST_F(LinesOfAWindow, HelicesStrandsAndLinesAreToldApartWithoutColor)
{
    LineTrack track;
    track.look = LineTrack::Look::Symbols;
    QImage picture(400, 12, QImage::Format_RGB32);
    picture.fill(Qt::white);
    {
        QPainter painter(&picture);
        companion::paintLine(painter, track, "HHHHHHHHHH----------EEEEEEEEEE    ----",
                             QRect(0, 0, 10, 12));
    }
    const auto isInked = [&picture](int x, int y) {
        return picture.pixelColor(x, y) != QColor(Qt::white);
    };
    EXPECT_TRUE(isInked(50, 1));
    EXPECT_TRUE(isInked(50, 10));
    EXPECT_FALSE(isInked(150, 1));
    EXPECT_TRUE(isInked(150, 5) || isInked(150, 6));
    EXPECT_FALSE(isInked(250, 1)) << "the shaft of an arrow";
    EXPECT_TRUE(isInked(250, 6));
    EXPECT_TRUE(isInked(292, 2)) << "its head";
    EXPECT_FALSE(isInked(320, 5) || isInked(320, 6)) << "a gap";
}

TEST_F(LinesOfAWindow, AStrandAcrossAGapHasOneHeadAndALineBetween)
{
    LineTrack track;
    track.look = LineTrack::Look::Symbols;
    QImage picture(300, 12, QImage::Format_RGB32);
    picture.fill(Qt::white);
    {
        QPainter painter(&picture);
        companion::paintLine(painter, track, "EEEEE     EEEEE", QRect(0, 0, 20, 12));
    }
    const auto heads = [&picture](int from, int to) {
        int inked = 0;
        for (int x = from; x < to; ++x)
            inked += picture.pixelColor(x, 1) != QColor(Qt::white) ? 1 : 0;
        return inked;
    };
    EXPECT_EQ(heads(0, 200), 0);
    EXPECT_GT(heads(200, 300), 0);
    EXPECT_NE(picture.pixelColor(150, 6), QColor(Qt::white));
}

} // namespace LineTracksTest
