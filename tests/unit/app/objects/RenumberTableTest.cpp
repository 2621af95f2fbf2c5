// SPDX-License-Identifier: GPL-3.0-or-later
// New residue numbers of many sequences in one table.
#include "RenumberTable.h"

#include "AppFixture.h"
#include "DataMaker.h"
#include "ObjectCommands.h"
#include "ObjectOperations.h"
#include "ObjectSources.h"
#include "RenumberDialog.h"
#include "SequenceNumber.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QTreeView>

namespace RenumberTableTest {

using namespace TAMBO;
using app::RenumberDialog;
using app::RenumberTable;

class RenumberTableTest : public RecordedFixture
{
protected:
    static QString cell(const RenumberTable &table, int row, int column)
    {
        return table.index(row, column).data().toString();
    }
    static bool type(RenumberTable &table, int row, const QString &text)
    {
        return table.setData(table.index(row, RenumberTable::FromColumn), text, Qt::EditRole);
    }
    static QStringList numbers(const Peptide &peptide)
    {
        QStringList texts;
        for (std::size_t i = 0; i < peptide.residueCount(); ++i)
            texts << QString::fromStdString(peptide.number(i).getValue());
        return texts;
    }
    template <typename Widget> static Widget &child(const QWidget &dialog, const char *name)
    {
        auto *found = dialog.findChild<Widget *>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
};

TEST_F(RenumberTableTest, SequencesChainsAndRowsAreFoundOnce)
{
    Structure &one = structure("1abc", "A", "ACD");
    Alignment &family = alignment("family", {"AC-D", "----"});
    Compound *const row = family.GetSeq(0);
    EXPECT_EQ(RenumberTable::sequencesOf({&family, row, &one, one.chain(0)->residue(0)}),
              (Compounds{row, one.chain(0)}));
}

TEST_F(RenumberTableTest, ARowWithANumberSaysWhereItEnds)
{
    RenumberTable table({&sequence("a", "ACD"), &sequence("b", "A")});
    EXPECT_EQ(cell(table, 0, RenumberTable::NowColumn), "1 to 3");
    EXPECT_EQ(cell(table, 1, RenumberTable::NowColumn), "1");
    EXPECT_EQ(cell(table, 0, RenumberTable::ToColumn), "");
    EXPECT_TRUE(type(table, 0, " 10 "));
    EXPECT_EQ(cell(table, 0, RenumberTable::FromColumn), "10");
    EXPECT_EQ(cell(table, 0, RenumberTable::ToColumn), "12");
    EXPECT_EQ(table.changedCount(), 1);
    EXPECT_EQ(table.clashCount(), 0);
    table.setAll(-1);
    EXPECT_EQ(cell(table, 1, RenumberTable::FromColumn), "-1");
    EXPECT_EQ(table.changedCount(), 2);
    table.setAll({});
    EXPECT_EQ(table.changedCount(), 0);
}

TEST_F(RenumberTableTest, AllAreRenumberedInOneStepOfUndo)
{
    Peptide &a = sequence("a", "ACD");
    Peptide &b = sequence("b", "AC");
    Peptide &c = sequence("c", "AC");
    m_History.clear();
    RenumberTable table({&a, &b, &c});
    type(table, 0, "10");
    type(table, 2, "-3");
    EXPECT_EQ(table.apply({&a, &b, &c}), 2U);
    EXPECT_EQ(numbers(a), QStringList({"10", "11", "12"}));
    EXPECT_EQ(numbers(b), QStringList({"1", "2"})) << "it has no new number";
    EXPECT_EQ(numbers(c), QStringList({"-3", "-2"}));
    m_History.undo();
    EXPECT_EQ(numbers(a), QStringList({"1", "2", "3"}));
    EXPECT_EQ(numbers(c), QStringList({"1", "2"}));
    EXPECT_FALSE(m_History.canUndo());
}

TEST_F(RenumberTableTest, NumbersThatAreLeftOutStayLeftOutUnlessTheUserWantsThemFilled)
{
    Peptide &a = sequence("a", "ACD");
    {
        const DataPointBase guard(nullptr, Publisher::Update);
        a.setNumber(2, SequenceNumber("7B"));
    }
    RenumberTable table({&a});
    EXPECT_TRUE(table.hasJumps());
    type(table, 0, "100");
    EXPECT_EQ(cell(table, 0, RenumberTable::ToColumn), "106B");
    table.setKeepsJumps(false);
    EXPECT_EQ(cell(table, 0, RenumberTable::ToColumn), "102");
    table.setKeepsJumps(true);
    table.apply({&a});
    EXPECT_EQ(numbers(a), QStringList({"100", "101", "106B"}));
}

TEST_F(RenumberTableTest, ASequenceOfMoreResiduesThanAPdbFileHasDigitsForIsRenumbered)
{
    RenumberTable table({&sequence("titin", std::string(12000, 'A'))});
    type(table, 0, "5");
    EXPECT_EQ(cell(table, 0, RenumberTable::ClashColumn), "");
    EXPECT_EQ(cell(table, 0, RenumberTable::ToColumn), "12004");
}

TEST_F(RenumberTableTest, WhatTheChainOfARowHasBesideTheRowIsInTheWay)
{
    StructureRecord record;
    record.name = "1abc";
    record.chains.push_back({"A", {}});
    for (int i = 1; i <= 6; ++i)
        record.chains.back().residues.push_back({"ALA", 'A', SequenceNumber(i), {}});
    record.chains.back().residues.push_back({"HEM", 'X', SequenceNumber("50"), {}, false});
    Structure *made = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        made = ObjectFactory::adopt(std::move(record));
    }
    Peptide &row = sequence("row", "AAA");
    row.tie(0, *made->chain(0), 0, 3);
    RenumberTable table({&row});
    type(table, 0, "3");
    EXPECT_EQ(cell(table, 0, RenumberTable::ClashColumn),
              "4 is the number of another residue or group of the chain");
    type(table, 0, "49");
    EXPECT_EQ(cell(table, 0, RenumberTable::ClashColumn),
              "50 is the number of another residue or group of the chain");
    type(table, 0, "-1");
    EXPECT_EQ(cell(table, 0, RenumberTable::ClashColumn), "");
    setObjectLocked(*made, true);
    RenumberTable locked({&row});
    type(locked, 0, "-1");
    EXPECT_EQ(cell(locked, 0, RenumberTable::ClashColumn), "locked");
}

TEST_F(RenumberTableTest, WhatIsInTheWayIsSaid)
{
    StructureRecord record;
    record.name = "1abc";
    record.chains.push_back({"A", {{"ALA", 'A', SequenceNumber("1"), {}}}});
    record.chains.back().residues.push_back({"HEM", 'X', SequenceNumber("50"), {}, false});
    Structure *made = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        made = ObjectFactory::adopt(std::move(record));
    }
    Peptide &locked = sequence("locked", "AC");
    setObjectLocked(locked, true);
    RenumberTable table({made->chain(0), &locked, &sequence("c", "ACD")});
    type(table, 0, "50");
    EXPECT_EQ(cell(table, 0, RenumberTable::ClashColumn),
              "50 is the number of another residue or group of the chain");
    type(table, 1, "5");
    EXPECT_EQ(cell(table, 1, RenumberTable::ClashColumn), "locked");
    for (const char *number : {"-1000", "999999", "2147483647", "-2147483648"}) {
        type(table, 2, number);
        EXPECT_EQ(cell(table, 2, RenumberTable::ClashColumn), "numbers go from -999 to 1000000")
            << number;
    }
    type(table, 2, "ten");
    EXPECT_EQ(cell(table, 2, RenumberTable::ClashColumn), "\"ten\" is no whole number");
    EXPECT_EQ(table.clashCount(), 3);
    table.setAll({});
    EXPECT_EQ(table.clashCount(), 0);
}

TEST_F(RenumberTableTest, TheDialogShowsLongNamesInFull)
{
    const QString longest = "A0A0N5BGB3_STREA/1321-1377/A0A0N5BGB3";
    RenumberDialog dialog({&sequence("c", "ACD"), &sequence(longest.toStdString(), "ACD")},
                          nullptr);
    auto &list = child<QTreeView>(dialog, "Sequences");
    EXPECT_GT(list.columnWidth(RenumberTable::NameColumn),
              list.fontMetrics().horizontalAdvance(longest));
    RenumberDialog other({&sequence(std::string(500, 'x'), "ACD")}, nullptr);
    EXPECT_LT(child<QTreeView>(other, "Sequences").columnWidth(RenumberTable::NameColumn),
              other.width() / 2 + 1)
        << "numbers are in sight";
}

TEST_F(RenumberTableTest, RangesInNamesFillInWhereTheyAreAsLongAsTheRow)
{
    RenumberTable table({&sequence("HBA_HUMAN/23-25", "ACD"), &sequence("B/7-8", "ACD"),
                         &sequence("plain", "ACD"), &sequence("C/-1-1/x", "ACD")});
    EXPECT_TRUE(table.hasRangesInNames());
    type(table, 1, "70");
    const RenumberTable::Filled filled = table.fillFromNames();
    EXPECT_EQ(filled.rows, 2);
    EXPECT_EQ(filled.otherLengths, 1);
    EXPECT_EQ(cell(table, 0, RenumberTable::FromColumn), "23");
    EXPECT_EQ(cell(table, 1, RenumberTable::FromColumn), "70");
    EXPECT_EQ(cell(table, 2, RenumberTable::FromColumn), "");
    EXPECT_EQ(cell(table, 3, RenumberTable::FromColumn), "-1");
}

TEST_F(RenumberTableTest, TheDialogTellsWhichRangesInNamesItLeftOut)
{
    RenumberDialog dialog({&sequence("a/23-25", "ACD"), &sequence("b/7-8", "ACD")}, nullptr);
    child<QPushButton>(dialog, "FromNames").click();
    EXPECT_EQ(child<QLabel>(dialog, "Says").text(),
              "1 of 2 sequences gets new numbers, in one step of undo.\n"
              "1 row is left out: the range in its name is of another length.");
    RenumberDialog plain({&sequence("a", "ACD")}, nullptr);
    EXPECT_FALSE(child<QPushButton>(plain, "FromNames").isEnabled());
}

TEST_F(RenumberTableTest, EnterInACellGoesToTheNextRowAndInTheLastOneRenumbers)
{
    RenumberDialog dialog({&sequence("a", "ACD"), &sequence("b", "ACD")}, nullptr);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto &list = child<QTreeView>(dialog, "Sequences");
    const auto enter = [&list](const QString &text) {
        QTest::keyClicks(&list, text);
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    };
    enter("5");
    EXPECT_EQ(list.currentIndex().row(), 1);
    EXPECT_TRUE(dialog.isVisible());
    enter("x");
    EXPECT_TRUE(dialog.isVisible()) << "that is no number";
    enter("7");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.table().changedCount(), 2);
}

TEST_F(RenumberTableTest, TheDialogRenumbersByTheKeyboardFromTheMenuOfAnAlignment)
{
    Alignment &family = alignment("family", {"AC-D", "A--D"});
    m_History.clear();
    app::ObjectSources sources;
    const app::ObjectCommands commands(sources);
    bool isAsked = false;
    QTimer::singleShot(0, [&] {
        auto *dialog = qobject_cast<RenumberDialog *>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
        isAsked = true;
        EXPECT_FALSE(child<QPushButton>(*dialog, "Renumber").isEnabled());
        child<QSpinBox>(*dialog, "First").setValue(20);
        child<QPushButton>(*dialog, "FillIn").click();
        EXPECT_EQ(child<QLabel>(*dialog, "Says").text(),
                  "2 of 2 sequences get new numbers, in one step of undo.");
        auto &list = child<QTreeView>(*dialog, "Sequences");
        list.setFocus();
        list.setCurrentIndex(dialog->table().index(1, RenumberTable::FromColumn));
        QTest::keyClicks(&list, "x");
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        // The view takes it from the event loop.
        QCoreApplication::processEvents();
        EXPECT_EQ(child<QLabel>(*dialog, "Says").text(), "family2: \"x\" is no whole number");
        EXPECT_FALSE(child<QPushButton>(*dialog, "Renumber").isEnabled());
        type(dialog->table(), 1, "5");
        child<QPushButton>(*dialog, "Renumber").click();
    });
    commands.askRenumber({&family});
    EXPECT_TRUE(isAsked);
    EXPECT_EQ(numbers(*Peptide::from(family.GetSeq(0))), QStringList({"20", "21", "22"}));
    EXPECT_EQ(numbers(*Peptide::from(family.GetSeq(1))), QStringList({"5", "6"}));
    m_History.undo();
    EXPECT_EQ(numbers(*Peptide::from(family.GetSeq(0))), QStringList({"1", "2", "3"}));
    EXPECT_EQ(numbers(*Peptide::from(family.GetSeq(1))), QStringList({"1", "2"}));
}

} // namespace RenumberTableTest
