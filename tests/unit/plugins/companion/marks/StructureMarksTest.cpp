// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureMarks.h"

#include "Companion.h"
#include "DataMaker.h"
#include "PlaceText.h"
#include "TieText.h"
#include "window/AlignmentWindowFixture.h"

#include "WorkbenchValues.h"

#include <memory>

namespace StructureMarksTest {

using companion::Companion;
using companion::StructureMarks;
using TAMBO::CellIndex;
using TAMBO::CellTie;
using TAMBO::WindowArea;

class MarksOfStructures : public AlignmentWindowFixture
{
protected:
    MarksOfStructures() { forget(); }
    ~MarksOfStructures() override
    {
        m_Companion.reset();
        forget();
    }
    static void forget()
    {
        WorkbenchValues::Remove("companion", "structure-marks");
        WorkbenchValues::Remove("companion", "cell-width");
    }
    // The row "mACX-EF" is tied from its second letter on to the chain "ACDE", the row below to
    // none.
    TAMBO::Alignment &tied()
    {
        TAMBO::StructureValues values;
        values.chains = {{"A", {}}};
        for (const char *name : {"ALA", "CYS", "ASP", "GLU"})
            values.chains[0].residues.push_back(
                {name,
                 TAMBO::SequenceNumber(std::to_string(values.chains[0].residues.size() + 1)),
                 {{"CA", "C", TAMBO::Vertex(1, 2, 3)}}});
        TAMBO::Compound *const structure = TAMBO::DataMaker::makeStructure("1abc", values);
        auto made = std::make_unique<TAMBO::Peptide>("tied", "mACXEF");
        made->tie(1, *TAMBO::Peptide::from(structure->Child(0)), 0, 4);
        TAMBO::Compound &row = TAMBO::ObjectSpace::get().add(std::move(made));
        TAMBO::Alignment &shown = *TAMBO::DataMaker::makeAlignment(
            "tied", {&row, TAMBO::DataMaker::makeSequence("free", "MACDEFG")});
        shown.insertGap(0, 4);
        history.clear();
        return shown;
    }
    void look(TAMBO::Alignment &shown)
    {
        m_Window = &show(shown, {700, 400});
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<Companion>(*m_Served);
        QCoreApplication::processEvents();
    }
    QWidget *cells() { return m_Served->areaWidget(WindowArea::Cells); }
    QImage cellPicture(const CellIndex &cell)
    {
        return pictureOf(cells()).copy(m_Served->cellRect(cell));
    }
    // Each cell with marks, and without them.
    std::string marked(unsigned long row)
    {
        std::string found;
        std::vector<QImage> with;
        for (unsigned long col = 0; col < m_Served->columns(); ++col)
            with.push_back(cellPicture({row, col}));
        m_Companion->marks().toggle();
        for (unsigned long col = 0; col < m_Served->columns(); ++col) {
            const QImage without = cellPicture({row, col});
            bool isAbove = false;
            bool isBelow = false;
            for (int y = 0; y < without.height(); ++y)
                for (int x = 0; x < without.width(); ++x) {
                    const bool differs = without.pixel(x, y) != with[col].pixel(x, y);
                    (2 * y < without.height() ? isAbove : isBelow) |= differs;
                }
            found += isAbove && isBelow ? '?' : isAbove ? '^' : isBelow ? '_' : '.';
        }
        m_Companion->marks().toggle();
        return found;
    }
    QString toolTip(const CellIndex &cell)
    {
        return toolTipAt(cells(), m_Served->cellRect(cell).center());
    }

    ZEP::KALMO2 *m_Window = nullptr;
    TAMBO::AlignmentWindow *m_Served = nullptr;
    std::unique_ptr<Companion> m_Companion;
};

TEST_F(MarksOfStructures, LettersThatDifferAreMarkedAboveAndResiduesWithoutCoordinatesBelow)
{
    look(tied());
    for (const int width : {StructureMarks::kLeastWidth, 9, 14, 30}) {
        m_Served->setCellSize({width, std::max(width * 3 / 2, StructureMarks::kLeastHeight)});
        EXPECT_EQ(marked(0), "_..^.._") << width;
        EXPECT_EQ(marked(1), ".......") << width;
    }
    m_Served->setCellSize({StructureMarks::kLeastWidth - 1, 30});
    EXPECT_EQ(marked(0), ".......");
}

TEST_F(MarksOfStructures, MarksAreSeenOnAnyColor)
{
    TAMBO::Alignment &shown = tied();
    look(shown);
    for (const unsigned color : {0xffffffU, 0x000000U, 0xff0000U, 0x0000ffU, 0x808080U}) {
        {
            DataPoint<TAMBO::Alignment> change(nullptr, &shown);
            for (unsigned long col = 0; col < shown.width(); ++col)
                if (TAMBO::Compound *const residue = shown.getItem(0, col))
                    residue->SetColor(Color(color));
        }
        EXPECT_EQ(marked(0), "_..^.._") << std::hex << color;
    }
    shown.selectInRow(0, {0, shown.width()});
    EXPECT_EQ(marked(0), "_..^.._");
}

TEST_F(MarksOfStructures, AToolTipHasTheReasonBehindWhatTheWindowSays)
{
    look(tied());
    const QString fits = toolTip({0, 1});
    EXPECT_EQ(fits, "tied\ncolumn 2\nALA (A) 1, chain A");
    const QString other = toolTip({0, 3});
    EXPECT_TRUE(other.startsWith("tied\ncolumn 4\n")) << other.toStdString();
    EXPECT_TRUE(other.endsWith("chain A\ndiffers from the structure, which has D here"))
        << other.toStdString();
    const QString missing = toolTip({0, 0});
    EXPECT_TRUE(missing.startsWith("tied\ncolumn 1\n")) << missing.toStdString();
    EXPECT_TRUE(missing.endsWith("\nnot in the coordinates of the structure"))
        << missing.toStdString();
    EXPECT_EQ(toolTip({0, 4}), "tied\ncolumn 5\ngap");
    EXPECT_EQ(toolTip({1, 0}).count(u'\n'), 2);
}

TEST_F(MarksOfStructures, AToolTipOfANameThatReadsLikeMarkupStaysAsItIsWritten)
{
    TAMBO::Alignment &shown = tied();
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &shown);
        ASSERT_TRUE(TAMBO::renameObject(*shown.GetSeq(0), "<b>x</b>"));
    }
    look(shown);
    EXPECT_TRUE(toolTip({0, 3}).endsWith("\ndiffers from the structure, which has D here</p>"))
        << toolTip({0, 3}).toStdString();
    EXPECT_TRUE(toolTip({0, 3}).contains("&lt;b&gt;x"));
}

TEST_F(MarksOfStructures, TheLineUnderThePointerHasTheReason)
{
    const TAMBO::Alignment &shown = tied();
    EXPECT_TRUE(companion::placeText(shown, {0, 3})
                    .contains("   differs from the structure, which has D here   "))
        << companion::placeText(shown, {0, 3}).toStdString();
    EXPECT_FALSE(companion::placeText(shown, {0, 1}).contains("differs"));
    EXPECT_EQ(companion::tieText({CellTie::Kind::NoPosition, 'A'}),
              "without coordinates of a CA atom");
}

TEST_F(MarksOfStructures, AreOnUntilTheyAreSwitchedOffAndStaySo)
{
    TAMBO::Alignment &shown = tied();
    look(shown);
    EXPECT_TRUE(m_Companion->marks().isOn());
    m_Companion->marks().toggle();
    const ZEP::KALMO2 &next = show(shown, {700, 400});
    {
        Companion other(served(next));
        EXPECT_FALSE(other.marks().isOn());
    }
    m_Companion->marks().toggle();
    Companion other(served(next));
    EXPECT_TRUE(other.marks().isOn());
}

TEST_F(MarksOfStructures, OnlyRowsInSightAreLookedAt)
{
    look(large(5000, 300));
    const std::size_t before = m_Companion->marks().rowsRead();
    cells()->update();
    QCoreApplication::processEvents();
    const TAMBO::CellBlock seen = m_Served->visibleCells();
    // Once for each part that is painted.
    EXPECT_LE(m_Companion->marks().rowsRead() - before, 4 * (seen.rowEnd - seen.rowBegin + 1));
}

} // namespace StructureMarksTest
