// SPDX-License-Identifier: GPL-3.0-or-later
// Tools, Superpose: the dialog, what it does, and what is said.
#include "AppFixture.h"
#include "ConfigStore.h"
#include "MainWindow.h"
#include "ObjectOperations.h"
#include "SuperposeCommand.h"
#include "SuperposeDialog.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "support/LogLines.h"

#include "DataDelete.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "Subscriber.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

namespace SuperposeTest {

using namespace TAMBO;
using app::SuperposeCommand;
using app::SuperposeDialog;
using app::Workbench;
using Rows = std::vector<unsigned long>;

// A helix of CA atoms, put somewhere by a turn about z and a shift.
StructureRecord helix(const std::string &name, int chains, double angle, float shift)
{
    StructureRecord record;
    record.name = name;
    for (int chain = 0; chain < chains; ++chain) {
        ChainRecord &made = record.chains.emplace_back();
        made.name = char('A' + chain);
        for (int i = 0; i < 8; ++i) {
            ResidueRecord &residue = made.residues.emplace_back();
            residue.typeName = "ALA";
            residue.letter = 'A';
            residue.number = SequenceNumber(i + 1);
            const double turn = i * 1.75 + angle;
            residue.atoms.push_back(
                {"CA", "C",
                 Vertex(float(2.3 * std::cos(turn)) + shift + 10 * float(chain),
                        float(2.3 * std::sin(turn)) - shift, 1.5F * float(i) + shift)});
        }
    }
    return record;
}

// What was chosen in other cases.
void forgetChoices()
{
    for (const char *key : {"LeaveOutPairs", "Cutoff", "OnlyRange"})
        services::ConfigStore::instance().reset("Superpose", key);
    services::ConfigStore::instance().saveOrLog();
}

class SuperposeTest : public RecordedFixture
{
protected:
    SuperposeTest()
    {
        forgetChoices();
        m_One = &load(helix("one", 1, 0, 0));
        m_Two = &load(helix("two", 2, 1, 20));
        m_Three = &load(helix("three", 1, 2, -30));
        m_Family = &align("family", {m_One->chain(0), m_Two->chain(0), m_Two->chain(1),
                                     m_Three->chain(0), &sequence("sequence", "AAAAAAAA")});
        m_History.clear();
    }

    static Structure &load(StructureRecord record)
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        return *ObjectFactory::adopt(std::move(record));
    }
    static Alignment &align(const std::string &name, const std::vector<Compound *> &sequences)
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        return *DataMaker::makeAlignment(name, sequences);
    }
    static Vertex place(const Structure &structure) { return structure.chain(0)->position(3); }

    template <typename Widget> static Widget &child(const QWidget &parent, const char *name)
    {
        auto *found = parent.findChild<Widget *>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    static QTreeWidget &list(const SuperposeDialog &dialog)
    {
        return child<QTreeWidget>(dialog, "Rows");
    }
    static QString plan(const SuperposeDialog &dialog)
    {
        return child<QLabel>(dialog, "Plan").text();
    }
    static bool canSuperpose(const SuperposeDialog &dialog)
    {
        return child<QPushButton>(dialog, "Superpose").isEnabled();
    }

    Structure *m_One;
    Structure *m_Two;
    Structure *m_Three;
    Alignment *m_Family;
};

// Hears of updates.
class Window : public Subscriber
{
public:
    void commUpdate() override { ++updates; }
    void commAdd() override { }
    void commDelete() override { }
    int updates = 0;
};

TEST_F(SuperposeTest, TheCommandMovesAllOntoTheFirstInOneStep)
{
    Window window;
    const LogLines log;
    const Vertex before = place(*m_Two);
    ASSERT_TRUE(SuperposeCommand::run(*m_Family, {0, 1, 3}));
    EXPECT_NEAR(place(*m_Two).x(), place(*m_One).x(), 1e-3);
    EXPECT_NEAR(place(*m_Three).z(), place(*m_One).z(), 1e-3);
    // As colouring by distance reads them.
    EXPECT_NEAR(m_Family->getItem(1, 3)->Position().y(), m_Family->getItem(0, 3)->Position().y(),
                1e-3);
    EXPECT_EQ(window.updates, 1);
    EXPECT_EQ(m_History.size(), 1U);
    EXPECT_EQ(m_History.undoLabel(), "superpose two and another");
    m_History.undo();
    EXPECT_EQ(place(*m_Two).coordinates(), before.coordinates());
    ASSERT_EQ(log.count(), 2);
    EXPECT_EQ(log.texts()[0].toStdString(),
              "Superposed two_A on one_A: RMSD 0.00 Å over 8 pairs of CA atoms, "
              "34.54 Å before");
    EXPECT_TRUE(log.texts()[1].startsWith("Superposed three_A on one_A: RMSD 0.00 Å over 8 pairs"));
}

TEST_F(SuperposeTest, EachMovesOntoItsOwnInOneStepAndOneThatCannotIsLeftOut)
{
    const LogLines log;
    EXPECT_EQ(SuperposeCommand::runEach({{m_Family, 0, 1}, {m_Family, 0, 4}, {m_Family, 0, 3}}),
              2U);
    EXPECT_NEAR(place(*m_Two).x(), place(*m_One).x(), 1e-3);
    EXPECT_NEAR(place(*m_Three).z(), place(*m_One).z(), 1e-3);
    EXPECT_EQ(m_History.size(), 1U);
    EXPECT_EQ(m_History.undoLabel(), "superpose two and another");
    ASSERT_EQ(log.count(), 3);
    EXPECT_EQ(log.texts()[0], "Nothing was superposed: sequence has no coordinates.");
    EXPECT_EQ(SuperposeCommand::runEach({{m_Family, 0, 4}}), 0U);
    EXPECT_EQ(m_History.size(), 1U);
}

TEST_F(SuperposeTest, AFailureIsLoggedOnceAndChangesNothing)
{
    Window window;
    const LogLines log;
    const Vertex before = place(*m_Three);
    setObjectLocked(*m_Two, true);
    const auto plan = SuperposeCommand::run(*m_Family, {0, 3, 1});
    ASSERT_FALSE(plan);
    EXPECT_EQ(plan.error().message(), "two is locked.");
    EXPECT_EQ(log.texts(), QStringList("Nothing was superposed: two is locked."));
    EXPECT_EQ(place(*m_Three).coordinates(), before.coordinates());
    EXPECT_EQ(m_History.size(), 0U);
    EXPECT_EQ(window.updates, 0);
}

TEST_F(SuperposeTest, NothingMovesWhileChangesArePublished)
{
    class Meddler : public Subscriber
    {
    public:
        explicit Meddler(Alignment &alignment) : m_Alignment(alignment) { }
        void commUpdate() override
        {
            isRefused = !SuperposeCommand::run(m_Alignment, {0, 1}).has_value();
        }
        void commAdd() override { }
        void commDelete() override { }
        bool isRefused = false;

    private:
        Alignment &m_Alignment;
    };
    Meddler meddler(*m_Family);
    const Vertex before = place(*m_Two);
    ASSERT_TRUE(SuperposeCommand::run(*m_Family, {0, 3}));
    EXPECT_TRUE(meddler.isRefused);
    EXPECT_EQ(place(*m_Two).coordinates(), before.coordinates());
}

TEST_F(SuperposeTest, TheSummaryTellsOneOrTheRangeOfSeveral)
{
    SuperposePlan plan{
        "1abc_A", 169, {{"2abc_A", {m_One, Superposition({})}, 12.341, 0.806, 169, 0.806, false}}};
    EXPECT_EQ(
        SuperposeCommand::summary(plan),
        "Superposed 2abc_A on 1abc_A: RMSD 0.81 Å over 169 pairs of CA atoms, 12.34 Å before");
    plan.moves.push_back({"3abc_A", {m_One, Superposition({})}, 1, 2, 169, 2, false});
    plan.moves.push_back({"4abc_A", {m_One, Superposition({})}, 1, 1, 169, 1, false});
    EXPECT_EQ(SuperposeCommand::summary(plan), "Superposed 3 structures on 1abc_A: RMSD 0.81 to "
                                               "2.00 Å over 169 pairs of CA atoms each");
}

TEST_F(SuperposeTest, TheCoreIsToldBesideTheWhole)
{
    SuperposePlan plan{
        "1abc_A", 146, {{"2abc_A", {m_One, Superposition({})}, 34.5, 13.912, 98, 0.806, false}}};
    EXPECT_EQ(SuperposeCommand::summary(plan),
              "Superposed 2abc_A on 1abc_A: core RMSD 0.81 Å over 98 of 146 (67 %) pairs of CA "
              "atoms, RMSD of all 13.91 Å, 34.50 Å before");
    plan.moves.push_back({"3abc_A", {m_One, Superposition({})}, 9, 1.3, 146, 1.3, false});
    EXPECT_EQ(SuperposeCommand::summary(plan),
              "Superposed 2 structures on 1abc_A: core RMSD 0.81 to 1.30 Å over 98 to 146 of 146 "
              "pairs of CA atoms, RMSD of all 1.30 to 13.91 Å");
    plan.moves = {{"2abc_A", {m_One, Superposition({})}, 34.5, 30, 146, 30, true}};
    EXPECT_EQ(SuperposeCommand::summary(plan),
              "Superposed 2abc_A on 1abc_A: RMSD 30.00 Å over 146 pairs of CA atoms, 34.50 Å "
              "before; no three of them fit, so none was left out");
}

// ---- The dialog

TEST_F(SuperposeTest, TheDialogTellsTheCoreOfEachAndLeavesNothingOutWhenNotWanted)
{
    // Its last two residues are elsewhere.
    StructureRecord bent = helix("bent", 1, 1, 5);
    for (int i : {6, 7})
        bent.chains[0].residues[std::size_t(i)].atoms[0].position = Vertex(60 + float(9 * i), 0, 9);
    Alignment &pair = align("pair", {m_One->chain(0), load(std::move(bent)).chain(0)});
    const SuperposeDialog dialog({&pair}, nullptr, nullptr);
    const QTreeWidget &rows = list(dialog);
    const auto texts = [&rows](int row) {
        QStringList found;
        for (int column = 3; column < 6; ++column)
            found << rows.topLevelItem(row)->text(column);
        return found;
    };
    EXPECT_EQ(texts(0), QStringList({"", "", ""}));
    EXPECT_EQ(texts(1).mid(0, 2), QStringList({"6 of 8 (75 %)", "0.00"}));
    EXPECT_GT(texts(1)[2].toDouble(), 20);
    EXPECT_EQ(dialog.choice().cutoff, 2);
    auto &cutoff = child<QDoubleSpinBox>(dialog, "Cutoff");
    EXPECT_EQ(cutoff.text(), "2.0 Å");
    child<QCheckBox>(dialog, "Prune").setChecked(false);
    EXPECT_FALSE(cutoff.isEnabled());
    EXPECT_EQ(dialog.choice().cutoff, 0);
    EXPECT_EQ(texts(1)[0], "8 of 8 (100 %)");
    EXPECT_EQ(texts(1)[1], texts(1)[2]);
    rows.topLevelItem(1)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(texts(1), QStringList({"", "", ""}));
}

TEST_F(SuperposeTest, WhatWasChosenIsKeptForTheNextDialogAndTheNextRun)
{
    Alignment &whole = align("whole", {m_One->chain(0), m_Two->chain(0)});
    {
        const DataPoint<Alignment> guard(nullptr, m_Family);
        m_Family->range({2, 7});
    }
    {
        SuperposeDialog given({m_Family}, nullptr, nullptr);
        child<QCheckBox>(given, "Prune").setChecked(false);
        child<QCheckBox>(given, "InRange").setChecked(true);
        given.reject();
    }
    {
        SuperposeDialog dialog({m_Family}, nullptr, nullptr);
        EXPECT_TRUE(child<QCheckBox>(dialog, "Prune").isChecked()) << "given up, so not kept";
        EXPECT_FALSE(child<QCheckBox>(dialog, "InRange").isChecked());
        child<QDoubleSpinBox>(dialog, "Cutoff").setValue(3.5);
        child<QCheckBox>(dialog, "Prune").setChecked(false);
        child<QCheckBox>(dialog, "InRange").setChecked(true);
        dialog.accept();
    }
    // As another run of the program reads them.
    const services::ConfigStore read({}, services::ConfigStore::instance().userFile());
    EXPECT_EQ(read.value("Superpose", "LeaveOutPairs"), "false");
    EXPECT_EQ(read.value("Superpose", "Cutoff"), "3.5");
    EXPECT_EQ(read.value("Superpose", "OnlyRange"), "true");
    {
        SuperposeDialog dialog({m_Family, &whole}, m_Family, nullptr);
        EXPECT_FALSE(child<QCheckBox>(dialog, "Prune").isChecked());
        EXPECT_FALSE(child<QDoubleSpinBox>(dialog, "Cutoff").isEnabled());
        EXPECT_EQ(child<QDoubleSpinBox>(dialog, "Cutoff").value(), 3.5);
        auto &inRange = child<QCheckBox>(dialog, "InRange");
        EXPECT_TRUE(inRange.isChecked());
        EXPECT_EQ(dialog.choice().begin, 2U);
        child<QComboBox>(dialog, "Alignment").setCurrentIndex(1);
        EXPECT_FALSE(inRange.isEnabled());
        EXPECT_FALSE(inRange.isChecked());
        EXPECT_TRUE(dialog.choice().isOfAll());
        dialog.accept();
    }
    const SuperposeDialog dialog({m_Family}, nullptr, nullptr);
    EXPECT_TRUE(child<QCheckBox>(dialog, "InRange").isChecked())
        << "an alignment without a part as range tells nothing";
}

TEST_F(SuperposeTest, ASettingThatIsNoneIsAsNoSetting)
{
    for (const char *text : {"", "nan", "-3", "1e9", "near"}) {
        services::ConfigStore::instance().setValue("Superpose", "Cutoff", text);
        services::ConfigStore::instance().setValue("Superpose", "LeaveOutPairs", text);
        const SuperposeDialog dialog({m_Family}, nullptr, nullptr);
        EXPECT_EQ(dialog.choice().cutoff, 2) << text;
    }
}

TEST_F(SuperposeTest, TheAlignmentKeepsWhatItWasSuperposedByAndUndoTakesItBack)
{
    EXPECT_EQ(StructureFits::lastChoice(*m_Family), FitChoice());
    ASSERT_TRUE(SuperposeCommand::run(*m_Family, {0, 1}, {0, FitChoice::kAllColumns, 2.5}));
    EXPECT_EQ(StructureFits::lastChoice(*m_Family).cutoff, 2.5);
    EXPECT_EQ(m_History.size(), 1U);
    EXPECT_EQ(m_History.undoLabel(), "superpose two");
    m_History.undo();
    EXPECT_EQ(m_History.redoLabel(), "superpose two");
    EXPECT_EQ(StructureFits::lastChoice(*m_Family), FitChoice());
    m_History.redo();
    ASSERT_TRUE(SuperposeCommand::run(*m_Family, {0, 1}));
    EXPECT_EQ(StructureFits::lastChoice(*m_Family), FitChoice());
    setObjectLocked(*m_Family, true);
    const LogLines log;
    ASSERT_TRUE(SuperposeCommand::run(*m_Family, {0, 1}, {0, FitChoice::kAllColumns, 2.5}));
    EXPECT_EQ(log.count(), 1) << "of what was superposed";
    EXPECT_EQ(StructureFits::lastChoice(*m_Family), FitChoice());
}

TEST_F(SuperposeTest, TheDialogOffersTheRangeWhenItIsAPart)
{
    const SuperposeDialog whole({m_Family}, nullptr, nullptr);
    EXPECT_FALSE(child<QCheckBox>(whole, "InRange").isEnabled());
    EXPECT_TRUE(whole.choice().isOfAll());
    {
        const DataPoint<Alignment> guard(nullptr, m_Family);
        m_Family->range({2, 7});
    }
    const SuperposeDialog part({m_Family}, nullptr, nullptr);
    auto &inRange = child<QCheckBox>(part, "InRange");
    EXPECT_EQ(inRange.text(), "&Only the columns of the range, 3 to 7");
    EXPECT_FALSE(inRange.isChecked());
    inRange.setChecked(true);
    EXPECT_EQ(part.choice().begin, 2U);
    EXPECT_EQ(part.choice().end, 7U);
    EXPECT_EQ(plan(part), "2 structures will move onto one_A, on 5 columns in which all of them "
                          "have a CA atom.");
}

TEST_F(SuperposeTest, TheDialogListsRowsWithCoordinatesAndChecksEachStructureOnce)
{
    const SuperposeDialog dialog({m_Family}, nullptr, nullptr);
    const QTreeWidget &rows = list(dialog);
    ASSERT_EQ(rows.topLevelItemCount(), 4);
    QStringList texts;
    for (int i = 0; i < 4; ++i) {
        const QTreeWidgetItem &item = *rows.topLevelItem(i);
        texts << item.text(0) + ' ' + item.text(1) + ' ' + item.text(2) +
                     (item.checkState(0) == Qt::Checked ? " x" : "");
    }
    EXPECT_EQ(texts,
              QStringList({"one_A one 8 x", "two_A two 8 x", "two_B two 8", "three_A three 8 x"}));
    EXPECT_EQ(dialog.rows(), (Rows{0, 1, 3}));
    EXPECT_EQ(plan(dialog), "2 structures will move onto one_A, on 8 columns in which all of them "
                            "have a CA atom.");
    EXPECT_TRUE(canSuperpose(dialog));
}

TEST_F(SuperposeTest, AlignmentsRowsAndStructuresOfOneNameAreToldApart)
{
    renameObject(*m_Three, "one");
    Alignment &other = align("family", {m_One->chain(0), m_Three->chain(0)});
    renameObject(*m_Family, "family");
    const SuperposeDialog dialog({m_Family, &other}, &other, nullptr);
    const auto &alignments = child<QComboBox>(dialog, "Alignment");
    EXPECT_NE(alignments.itemText(0), alignments.itemText(1));
    EXPECT_TRUE(alignments.itemText(0).startsWith("family ("));
    const QTreeWidget &rows = list(dialog);
    ASSERT_EQ(rows.topLevelItemCount(), 2);
    EXPECT_EQ(rows.topLevelItem(0)->text(1), "one (no. 1)");
    EXPECT_EQ(rows.topLevelItem(1)->text(1), "one (no. 2)");
    EXPECT_EQ(rows.topLevelItem(0)->text(0), "one_A (row 1)");
    EXPECT_EQ(rows.topLevelItem(1)->text(0), "one_A (row 2)");
    EXPECT_EQ(child<QComboBox>(dialog, "Reference").itemText(1), "one_A (row 2)");
}

TEST_F(SuperposeTest, TheReferenceIsOneOfTheCheckedAndComesFirst)
{
    const SuperposeDialog dialog({m_Family}, nullptr, nullptr);
    auto &reference = child<QComboBox>(dialog, "Reference");
    ASSERT_EQ(reference.count(), 3);
    reference.setCurrentIndex(2);
    EXPECT_EQ(dialog.rows(), (Rows{3, 0, 1}));
    list(dialog).topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(reference.currentText(), "three_A");
    EXPECT_EQ(dialog.rows(), (Rows{3, 1}));
    EXPECT_EQ(plan(dialog), "1 structure will move onto three_A, on 8 columns in which all of them "
                            "have a CA atom.");
    list(dialog).topLevelItem(3)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(reference.currentText(), "two_A");
    EXPECT_EQ(plan(dialog), "Choose two chains or more.");
    EXPECT_FALSE(canSuperpose(dialog));
}

TEST_F(SuperposeTest, TheDialogSaysWhatIsInTheWay)
{
    const SuperposeDialog dialog({m_Family}, nullptr, nullptr);
    list(dialog).topLevelItem(2)->setCheckState(0, Qt::Checked);
    EXPECT_EQ(plan(dialog),
              "two_A and two_B belong to the same structure, two, which moves as a whole.");
    EXPECT_FALSE(canSuperpose(dialog));
    list(dialog).topLevelItem(1)->setCheckState(0, Qt::Unchecked);
    EXPECT_TRUE(canSuperpose(dialog));
}

TEST_F(SuperposeTest, TheKeyboardChecksAndSuperposes)
{
    SuperposeDialog dialog({m_Family}, nullptr, nullptr);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    EXPECT_EQ(dialog.focusWidget(), &list(dialog));
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
    EXPECT_EQ(dialog.rows(), (Rows{0, 3}));
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(SuperposeTest, TheDialogBeginsWithTheChosenAlignmentOrTheFirstThatCanBeUsed)
{
    Alignment &plain = align("plain", {&sequence("s", "AAAA"), m_One->chain(0)});
    const SuperposeDialog useful({&plain, m_Family}, nullptr, nullptr);
    EXPECT_EQ(useful.alignment(), m_Family);
    const SuperposeDialog chosen({&plain, m_Family}, &plain, nullptr);
    EXPECT_EQ(chosen.alignment(), &plain);
    EXPECT_EQ(plan(chosen),
              "Fewer than two rows of this alignment belong to structures that are loaded.");
    EXPECT_FALSE(canSuperpose(chosen));
    child<QComboBox>(chosen, "Alignment").setCurrentIndex(1);
    EXPECT_EQ(chosen.alignment(), m_Family);
    EXPECT_TRUE(canSuperpose(chosen));
}

TEST_F(SuperposeTest, AnAlignmentThatGoesWhileTheDialogIsOpenIsLeftAlone)
{
    const SuperposeDialog dialog({m_Family}, nullptr, nullptr);
    {
        const DataDelete<Space> guard(nullptr, Space::instance());
        DataMaker::Destroy(m_Family);
    }
    EXPECT_EQ(dialog.alignment(), nullptr);
    list(dialog).topLevelItem(1)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(plan(dialog), "The alignment is not loaded any more.");
    EXPECT_FALSE(canSuperpose(dialog));
}

// ---- The workbench

class SuperposeWorkbenchTest : public AppFixture
{
protected:
    SuperposeWorkbenchTest()
    {
        forgetChoices();
        m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins());
    }
    ~SuperposeWorkbenchTest() override
    {
        m_Workbench->undo().history().clear();
        m_Workbench.reset();
    }
    static Structure &load(StructureRecord record)
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        return *ObjectFactory::adopt(std::move(record));
    }
    [[nodiscard]] QAction *entry() const
    {
        for (const QAction *top : m_Workbench->window().menuBar()->actions()) {
            if (top->text().remove(u'&') != "Tools")
                continue;
            for (QAction *action : top->menu()->actions()) {
                if (action->text().remove(u'&') == "Superpose…")
                    return action;
            }
        }
        return nullptr;
    }
    [[nodiscard]] QString status() const
    {
        return m_Workbench->window().statusBar()->currentMessage();
    }

    std::unique_ptr<Workbench> m_Workbench;
};

TEST_F(SuperposeWorkbenchTest, TheMenuEntryAsksAndSuperposes)
{
    const Structure &one = load(helix("one", 1, 0, 0));
    const Structure &two = load(helix("two", 1, 1, 20));
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        DataMaker::makeAlignment("family", {one.chain(0), two.chain(0)});
    }
    bool isAnswered = false;
    std::function<void()> answer = [&] {
        if (auto *dialog = qobject_cast<SuperposeDialog *>(QApplication::activeModalWidget())) {
            isAnswered = true;
            dialog->findChild<QPushButton *>("Superpose")->click();
        } else {
            QTimer::singleShot(1, qApp, answer);
        }
    };
    QTimer::singleShot(1, qApp, answer);
    ASSERT_NE(entry(), nullptr);
    entry()->trigger();
    EXPECT_TRUE(isAnswered);
    EXPECT_NEAR(two.chain(0)->position(5).y(), one.chain(0)->position(5).y(), 1e-3);
    EXPECT_TRUE(status().startsWith("Superposed two_A on one_A: RMSD 0.00 Å over 8 pairs"))
        << status().toStdString();
    EXPECT_EQ(m_Workbench->undo().history().undoLabel(), "superpose two");
}

TEST_F(SuperposeWorkbenchTest, WithoutAnAlignmentTheStatusLineSaysSo)
{
    entry()->trigger();
    EXPECT_EQ(status(), "Superposing takes an alignment, and none is open.");
}

TEST_F(SuperposeWorkbenchTest, AFailureStandsInTheStatusLine)
{
    const Structure &one = load(helix("one", 1, 0, 0));
    Alignment *family = nullptr;
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        family = DataMaker::makeAlignment("family", {one.chain(0)});
    }
    EXPECT_FALSE(m_Workbench->superpose(*family, {0}));
    EXPECT_EQ(status(), "Choose two chains or more.");
}

} // namespace SuperposeTest
