// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompanionFixture.h"

#include "AcidColor.h"
#include "AminoAcids.h"
#include "ColumnColoring.h"
#include "DataMaker.h"
#include "DialogDriver.h"
#include "ObjectFactory.h"
#include "ResidueTypes.h"
#include "Structure.h"
#include "Toolbar.h"
#include "TypeColors.h"
#include "support/WaitUntil.h"

#include <QColorDialog>
#include <QInputDialog>
#include <QMenu>
#include <QToolButton>

namespace ColoringTest {

class ColoredByColumn : public AlignmentCompanion
{
protected:
    unsigned int colorAt(const TAMBO::Alignment &shown, unsigned long row, unsigned long col)
    {
        std::vector<TAMBO::AlignmentCell> cells;
        shown.readRow(row, col, col + 1, cells);
        return cells.front().color.rgb();
    }
};

TEST_F(ColoredByColumn, EachResidueHasTheColorOfTheRule)
{
    for (const auto rule : {companion::ColumnRule::Identity, companion::ColumnRule::Blosum62,
                            companion::ColumnRule::ClustalX, companion::ColumnRule::Conservation}) {
        TAMBO::Alignment &shown = alignment({"ACDWa-", "ACEWL-", "AGKwlG", "LC-WVG"}, "rows");
        ASSERT_TRUE(companion::colorByColumn(shown, rule));
        for (unsigned long col = 0; col < shown.width(); ++col) {
            std::vector<char> letters;
            shown.readColumn(col, letters);
            const companion::ColumnColors colors =
                companion::columnColors(rule, companion::ColumnCounts(letters));
            for (unsigned long row = 0; row < shown.height(); ++row) {
                if (letters[row] == '\0')
                    continue;
                EXPECT_EQ(colorAt(shown, row, col),
                          colors.of(letters[row]).value_or(Color(0xffffffU)).rgb())
                    << letters[row] << " in column " << col;
            }
        }
    }
}

TEST_F(ColoredByColumn, IsOneStepOfUndo)
{
    TAMBO::Alignment &shown = alignment({"ACD", "ACE"}, "rows");
    const unsigned int before = colorAt(shown, 0, 0);
    const std::size_t position = history.position();
    ASSERT_TRUE(companion::colorByColumn(shown, companion::ColumnRule::Identity));
    EXPECT_NE(colorAt(shown, 0, 0), before);
    EXPECT_EQ(history.position(), position + 1);
    EXPECT_TRUE(history.goTo(position));
    EXPECT_EQ(colorAt(shown, 0, 0), before);
}

TEST_F(ColoredByColumn, CountingCanBeCancelledAndThenNothingIsColored)
{
    TAMBO::Alignment &many = large(600, 300);
    const unsigned int before = colorAt(many, 0, 0);
    const std::size_t position = history.position();
    const WithoutMoment withoutMoment;
    const CancelledProgress cancel(*m_Window);
    EXPECT_FALSE(companion::colorByColumn(many, companion::ColumnRule::Identity, m_Window));
    EXPECT_EQ(cancel.count(), 1);
    EXPECT_EQ(colorAt(many, 0, 0), before);
    EXPECT_EQ(history.position(), position);
}

TEST_F(ColoredByColumn, TheLegendSaysWhatTheColorsMean)
{
    auto *const legend = m_Window->findChild<QToolBar *>("Legend");
    ASSERT_NE(legend, nullptr);
    EXPECT_TRUE(legend->isHidden());
    m_Companion->colorBy(companion::ColumnRule::Identity);
    EXPECT_FALSE(legend->isHidden());
    const companion::Legend meant = companion::legendOf(companion::ColumnRule::Identity);
    QStringList texts;
    for (const QLabel *const label : legend->findChildren<QLabel *>())
        texts << label->text();
    for (const companion::LegendEntry &entry : meant.entries)
        EXPECT_TRUE(texts.contains(QString::fromStdString(entry.label)));
    m_Companion->colorBy(companion::ColumnRule::ClustalX);
    EXPECT_FALSE(legend->isHidden());
}

class LegendOfColumns : public ColoredByColumn
{
protected:
    LegendOfColumns() { m_Window->Populate(&m_Rows); }

    [[nodiscard]] QString title() const
    {
        const auto *const legend = m_Window->findChild<QToolBar *>("Legend");
        if (legend->isHidden())
            return "none";
        // Those of legends before are deleted later.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (const QLabel *const label : legend->findChildren<QLabel *>())
            if (label->text().endsWith(u':'))
                return label->text().section(u' ', 0, 0).remove(u':');
        return "no title";
    }
    void close() const
    {
        for (auto *const button :
             m_Window->findChild<QToolBar *>("Legend")->findChildren<QToolButton *>())
            if (button->objectName() == "CloseLegend")
                return button->click();
        FAIL() << "nothing to press";
    }
    void expectTitle(const QString &expected) const
    {
        waitUntil([&] { return title() == expected; });
        EXPECT_EQ(title().toStdString(), expected.toStdString());
    }

    TAMBO::Alignment &m_Rows = alignment({"ACDWA-", "ACEWL-", "AGDWLG", "ACDWVG"}, "family");
};

TEST_F(LegendOfColumns, GoesAndComesBackWithItsColors)
{
    const std::size_t before = history.position();
    m_Companion->colorBy(companion::ColumnRule::Conservation);
    expectTitle("Conservation");
    const std::size_t conserved = history.position();
    m_Companion->colorBy(companion::ColumnRule::ClustalX);
    const QString clustal = title();
    EXPECT_NE(clustal, "Conservation");
    const std::size_t both = history.position();
    EXPECT_TRUE(history.goTo(conserved));
    expectTitle("Conservation");
    EXPECT_TRUE(history.goTo(before));
    expectTitle("none");
    EXPECT_TRUE(history.goTo(both));
    expectTitle(clustal);
}

TEST_F(LegendOfColumns, StaysWhileCellsMoveAndGoesWhenTheyHaveTheirColorsOfBefore)
{
    const std::size_t before = history.position();
    m_Companion->colorBy(companion::ColumnRule::Conservation);
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &m_Rows);
        m_Rows.insertGapCol(0, 1);
    }
    EXPECT_TRUE(m_Companion->legends().isLooking());
    waitUntil([this] { return !m_Companion->legends().isLooking(); });
    EXPECT_EQ(title(), "Conservation");
    EXPECT_TRUE(history.goTo(before));
    expectTitle("none");
}

TEST_F(LegendOfColumns, ThatTheUserHasClosedStaysAway)
{
    const std::size_t before = history.position();
    m_Companion->colorBy(companion::ColumnRule::Conservation);
    const std::size_t colored = history.position();
    close();
    EXPECT_EQ(title(), "none");
    EXPECT_TRUE(history.goTo(before));
    EXPECT_TRUE(history.goTo(colored));
    waitUntil([this] { return !m_Companion->legends().isLooking(); });
    EXPECT_EQ(title(), "none");
}

TEST_F(LegendOfColumns, GoesWhenAnotherAlignmentIsShown)
{
    m_Companion->colorBy(companion::ColumnRule::Conservation);
    expectTitle("Conservation");
    m_Window->Populate(&alignment({"ACD", "ACE"}, "other"));
    expectTitle("none");
}

TEST_F(LegendOfColumns, ThatIsClosedComesBackByItsCommandWhileItFits)
{
    m_Companion->colorBy(companion::ColumnRule::Conservation);
    close();
    m_Companion->toggleLegend();
    EXPECT_EQ(title(), "Conservation");
    m_Companion->toggleLegend();
    EXPECT_EQ(title(), "none");
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &m_Rows);
        m_Rows.insertGapCol(0, 1);
    }
    waitUntil([this] { return !m_Companion->legends().isLooking(); });
    EXPECT_EQ(title(), "none");
    m_Companion->toggleLegend();
    EXPECT_EQ(title(), "Conservation");
}

TEST_F(LegendOfColumns, OfTypesComesByItsCommandAloneAndFollowsUndo)
{
    EXPECT_EQ(title(), "none") << "an untouched window loses no height";
    m_Companion->toggleLegend();
    EXPECT_EQ(title(), "Residue");
    const std::size_t before = history.position();
    m_Companion->colorBy(companion::ColumnRule::Conservation);
    expectTitle("Conservation");
    EXPECT_TRUE(history.goTo(before));
    expectTitle("Residue");
}

TEST_F(LegendOfColumns, OfTypesHasTheColorsThatTheWorkbenchGives)
{
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        for (const char each : {letter, char(letter - 'A' + 'a')})
            EXPECT_EQ(companion::typeColor(each).rgb(), TAMBO::aminoAcidColor(each).rgb()) << each;
    EXPECT_EQ(companion::typeColor('*').rgb(), TAMBO::aminoAcidColor('*').rgb());
    const companion::Legend legend = companion::typeLegend();
    for (char letter = 'A'; letter <= 'W'; ++letter) {
        const auto found = std::ranges::find_if(legend.entries, [letter](const auto &entry) {
            return entry.label.find(letter) != std::string::npos;
        });
        ASSERT_NE(found, legend.entries.end()) << letter;
        EXPECT_EQ(found->color.rgb(), companion::typeColor(letter).rgb()) << letter;
    }
}

TEST_F(LegendOfColumns, OfColorsThatNobodyKnowsSaysHowManyResiduesHaveThem)
{
    {
        const DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        for (unsigned long row = 0; row < m_Rows.height(); ++row)
            m_Rows.GetSeq(row)->SetColor(Color(row == 0 ? 0x112233U : 0x445566U));
    }
    m_Companion->toggleLegend();
    EXPECT_EQ(title(), "Colors");
    QStringList texts;
    for (const QLabel *const label :
         m_Window->findChild<QToolBar *>("Legend")->findChildren<QLabel *>())
        texts << label->text();
    // 5, 5, 6 and 6 residues.
    EXPECT_TRUE(texts.contains("23 %")) << texts.join('\n').toStdString();
    EXPECT_TRUE(texts.contains("77 %"));
    EXPECT_TRUE(texts.contains("No command is known that gave them"));
}

TEST_F(LegendOfColumns, IsInEveryWindowOfTheAlignment)
{
    ZEP::KALMO2 &second = show(m_Rows, {700, 400});
    const Companion other(served(second));
    const auto titleThere = [](const QWidget &window) {
        const auto *const legend = window.findChild<QToolBar *>("Legend");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const auto labels = legend->findChildren<QLabel *>();
        return legend->isHidden() || labels.isEmpty() ? QString("none") : labels.front()->text();
    };
    EXPECT_EQ(titleThere(second), "none");
    m_Companion->colorBy(companion::ColumnRule::ClustalX);
    EXPECT_EQ(titleThere(second), "Clustal X:");
    // Also in one that is opened later.
    ZEP::KALMO2 &third = show(m_Rows, {700, 400});
    const Companion later(served(third));
    EXPECT_EQ(titleThere(third), "Clustal X:");
    EXPECT_TRUE(history.undo());
    waitUntil([&] { return titleThere(third) == "none"; });
    EXPECT_EQ(titleThere(third), "none");
}

// ---- Legends of the window's own commands

class ColoredByTheEditor : public ColoredByColumn
{
protected:
    ColoredByTheEditor()
    {
        m_Companion.reset();
        TAMBO::Alignment &rows = alignment({"ARC", "AIC", "ANC"}, "rows");
        {
            const DataPoint<TAMBO::Alignment> change(nullptr, &rows);
            rows.selectInRow(0, {0, 1});
        }
        m_Window = &show(rows, {700, 400});
        m_Served = &served(*m_Window);
        // As the installed settings give every window some.
        m_Tools = new Toolbar("Tools9", m_Window, "Tools", Qt::LeftToolBarArea, m_Window,
                              SLOT(ButtonPressed(int, int, bool)));
        m_Companion = std::make_unique<Companion>(*m_Served);
    }
    [[nodiscard]] QToolBar &legend() const { return *m_Window->findChild<QToolBar *>("Legend"); }
    [[nodiscard]] QStringList texts() const
    {
        QStringList texts;
        for (const QLabel *const label : legend().findChildren<QLabel *>())
            if (!label->text().isEmpty())
                texts << label->text();
        return texts;
    }
    // Of the squares, as assistive technology has them.
    [[nodiscard]] QStringList colors() const
    {
        QStringList names;
        for (const QLabel *const label : legend().findChildren<QLabel *>())
            if (label->text().isEmpty())
                names << label->accessibleName();
        return names;
    }
    static DialogDriver::Handler pick(const QColor &color)
    {
        return [color](QDialog &dialog) {
            dynamic_cast<QColorDialog &>(dialog).setCurrentColor(color);
            dialog.accept();
        };
    }
    static void cancel(QDialog &dialog) { dialog.reject(); }
    // Two chains with a residue each.
    static TAMBO::Alignment &positioned()
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        std::vector<TAMBO::Compound *> rows;
        for (const char *const name : {"1abc", "2abc"}) {
            TAMBO::StructureRecord record;
            record.name = name;
            TAMBO::ChainRecord &chain = record.chains.emplace_back();
            chain.name = "A";
            TAMBO::ResidueRecord &residue = chain.residues.emplace_back();
            residue.typeName = "ALA";
            residue.letter = 'A';
            residue.number = TAMBO::SequenceNumber(1);
            residue.atoms.push_back({"CA", "C", TAMBO::Vertex(1, 2, 3)});
            rows.push_back(TAMBO::ObjectFactory::adopt(std::move(record))->chain(0));
        }
        return *TAMBO::DataMaker::makeAlignment("chains", rows);
    }
    void choose(const QString &text) const
    {
        for (const QAction *const menu : m_Window->menuBar()->actions())
            for (QAction *const action : menu->menu()->actions())
                if (menu->text() == "Color" && action->text() == text)
                    action->trigger();
    }

    Toolbar *m_Tools = nullptr;
};

TEST_F(ColoredByTheEditor, SelectedAndConservedShowTheColorThatWasPicked)
{
    DialogDriver dialogs;
    dialogs.expect(pick(Qt::red));
    choose("Selected");
    EXPECT_EQ(texts(), QStringList({"Selected:", "selected when it was colored"}));
    EXPECT_EQ(colors(), QStringList{"Color #ff0000"});
    dialogs.expect(pick(Qt::blue));
    choose("Conserved");
    EXPECT_EQ(texts().front(), "Conserved:");
    EXPECT_EQ(colors(), QStringList{"Color #0000ff"});
    dialogs.expect(pick(Qt::green));
    dialogs.expect([](QDialog &dialog) {
        dynamic_cast<QInputDialog &>(dialog).setIntValue(2);
        dialog.accept();
    });
    choose("ConservedN");
    EXPECT_EQ(texts().back(), "most frequent in its column, in 2 rows or more");
    EXPECT_EQ(colors(), QStringList{"Color #00ff00"});
}

TEST_F(ColoredByTheEditor, AButtonOfTheToolBarHasTheLegendOfItsCommand)
{
    DialogDriver dialogs;
    dialogs.expect(pick(Qt::red));
    emit m_Tools->pressed(6, 0, false);
    EXPECT_EQ(texts().front(), "Selected:");
    EXPECT_EQ(colors(), QStringList{"Color #ff0000"});
    dialogs.expect(pick(Qt::blue));
    emit m_Tools->pressed(8, 0, false);
    EXPECT_EQ(texts().front(), "Conserved:");
    EXPECT_EQ(colors(), QStringList{"Color #0000ff"});
}

TEST_F(ColoredByTheEditor, ACancelledDialogLeavesTheLegend)
{
    DialogDriver dialogs;
    dialogs.expect(cancel);
    choose("Selected");
    EXPECT_TRUE(legend().isHidden());
    dialogs.expect(pick(Qt::green));
    dialogs.expect(cancel);
    choose("ConservedN");
    EXPECT_TRUE(legend().isHidden());
    dialogs.expect(cancel);
    choose("Conserved");
    EXPECT_TRUE(legend().isHidden()) << "the color of the command before";
}

TEST_F(ColoredByTheEditor, WhatColorsNothingHasNoLegend)
{
    choose("By Distance");
    EXPECT_TRUE(legend().isHidden()) << "no row has a structure";
    {
        TAMBO::Alignment &rows = *m_Served->alignment();
        const DataPoint<TAMBO::Alignment> change(nullptr, &rows);
        rows.select({0, rows.width()}, false);
    }
    DialogDriver dialogs;
    dialogs.expect(pick(Qt::red));
    choose("Selected");
    EXPECT_TRUE(legend().isHidden()) << "nothing is selected";
}

TEST_F(ColoredByTheEditor, ByDistanceShowsItsScale)
{
    m_Window->Populate(&positioned());
    choose("By Distance");
    EXPECT_EQ(texts(), QStringList({"Mean distance in the column:", "0 Å", "1.5 Å", "3 Å", "4.5 Å",
                                    "6 Å and more", "alone in the column"}));
    EXPECT_EQ(colors().size(), 6);
}

TEST_F(ColoredByTheEditor, AScaleShowsValuesAndLettersInTheirColors)
{
    auto *const dialog = m_Window->findChild<ZEP::AcidColor *>();
    auto *const method = dialog->findChild<QComboBox *>();
    ASSERT_GT(method->count(), 1);
    method->setCurrentIndex(1);
    dialog->MethodSelected(1);
    dialog->Apply();
    EXPECT_EQ(texts().front(), method->currentText() + ':');
    EXPECT_EQ(texts().back(), "no value, or left out");
    ASSERT_EQ(colors().size(), 6);
    // The residues that are named have the colors.
    float least = 0;
    ASSERT_TRUE(ResidueTypes::GetValue(method->currentText().toStdString(), 'R', least));
    EXPECT_EQ(texts().at(1), QStringLiteral("%1 (R)").arg(double(least), 0, 'g', 3));
    EXPECT_EQ(colors().front(),
              "Color " + QColor(QRgb(colorAt(*m_Served->alignment(), 0, 1))).name());
    method->setCurrentIndex(0);
    dialog->MethodSelected(0);
    dialog->Apply();
    EXPECT_TRUE(legend().isHidden()) << "white means nothing";
}

TEST_F(ColoredByTheEditor, OneButtonColorsByConservationOnWhite)
{
    TAMBO::Alignment &rows = *m_Served->alignment();
    auto *const tools = m_Window->findChild<QToolBar *>("ColorTools");
    ASSERT_NE(tools, nullptr);
    ASSERT_EQ(tools->actions().size(), 1);
    EXPECT_FALSE(tools->actions().front()->icon().isNull());
    EXPECT_EQ(m_Window->toolBarArea(tools), Qt::LeftToolBarArea) << "beside the others";
    tools->actions().front()->trigger();
    EXPECT_EQ(history.position(), 1U);
    EXPECT_EQ(texts().front(), "Conservation (0 to 1):");
    // All have C there, and three letters in the column before.
    EXPECT_NE(colorAt(rows, 0, 2), 0xffffffU);
    EXPECT_NE(colorAt(rows, 0, 2), colorAt(rows, 0, 1));
}

} // namespace ColoringTest
