// SPDX-License-Identifier: GPL-3.0-or-later
// The question about unsaved work: what it lists, and that keys are enough to answer it.
#include "UnsavedDialog.h"

#include "AppFixture.h"
#include "JobList.h"
#include "support/WaitUntil.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTreeWidget>
#include <QWindow>

namespace UnsavedDialogTest {

using namespace TAMBO;
using app::SavedPlaces;
using app::UnsavedDialog;
using Answer = UnsavedDialog::Answer;
using Purpose = UnsavedDialog::Purpose;
using Indices = std::vector<std::size_t>;

class UnsavedDialogTest : public AppFixture
{
protected:
    // A structure, and an alignment that names its numbers.
    std::vector<SavedPlaces::Unsaved> things()
    {
        Structure &known = structure("1abc", "A", "ACD");
        Alignment &family = alignment("fam<b>ily", {"AC", "A-"});
        return {{&known, "residue numbers", {}, {}},
                {&family, "rows, columns or gaps", "/somewhere/family.ali", {&known}}};
    }
    template <typename Widget> static Widget &control(const QWidget &dialog, const char *name)
    {
        auto *found = dialog.findChild<Widget *>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    static QString note(const QWidget &dialog)
    {
        const auto &label = control<QLabel>(dialog, "Note");
        return label.isVisibleTo(&dialog) ? label.text() : QString();
    }
    static void show(QDialog &dialog)
    {
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }
    // To whoever has the focus, as the keyboard does it.
    static void press(QDialog &dialog, Qt::Key key)
    {
        QWidget *focus = dialog.focusWidget();
        QTest::keyClick(focus != nullptr ? focus : &dialog, key);
    }

    services::JobList m_Jobs;
};

TEST_F(UnsavedDialogTest, ThingsOfOneNameAreToldApart)
{
    const std::vector<SavedPlaces::Unsaved> twins = {
        {&alignment("family", {"AC", "A-"}), "all of it", {}, {}},
        {&alignment("family", {"ACD"}), "all of it", {}, {}}};
    const UnsavedDialog dialog(Purpose::Quit, twins, QString(), nullptr, nullptr);
    const auto &list = control<QTreeWidget>(dialog, "Things");
    EXPECT_EQ(list.topLevelItem(0)->text(0), "family (2 × 2)");
    EXPECT_EQ(list.topLevelItem(1)->text(0), "family (1 × 3)");
}

TEST_F(UnsavedDialogTest, EachThingIsListedWithABoxWithWhatAndWithWhere)
{
    const UnsavedDialog dialog(Purpose::Quit, things(), QString(), nullptr, nullptr);
    const auto &list = control<QTreeWidget>(dialog, "Things");
    ASSERT_EQ(list.topLevelItemCount(), 2);
    const auto texts = [&list](int row) {
        const QTreeWidgetItem &item = *list.topLevelItem(row);
        return QStringList{item.text(0), item.text(1), item.text(2)};
    };
    EXPECT_EQ(texts(0), (QStringList{"1abc", "residue numbers", "asks for a file"}));
    EXPECT_EQ(texts(1), (QStringList{"fam<b>ily", "rows, columns or gaps", "family.ali"}));
    EXPECT_TRUE(list.topLevelItem(1)->toolTip(2).contains("/somewhere/family.ali"));
    EXPECT_FALSE(list.topLevelItem(1)->toolTip(0).contains("<b>"));
    EXPECT_EQ(dialog.checked(), (Indices{0, 1}));
    EXPECT_EQ(control<QLabel>(dialog, "Headline").text(), "Save changes before quitting?");
    EXPECT_FALSE(control<QGroupBox>(dialog, "Jobs").isVisibleTo(&dialog));
}

TEST_F(UnsavedDialogTest, ReturnSavesWhatIsChecked)
{
    UnsavedDialog dialog(Purpose::Quit, things(), QString(), nullptr, nullptr);
    show(dialog);
    press(dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.answer(), Answer::Save);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.checked(), (Indices{0, 1}));
}

TEST_F(UnsavedDialogTest, EscapeStays)
{
    UnsavedDialog dialog(Purpose::Quit, things(), QString(), nullptr, nullptr);
    show(dialog);
    press(dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.answer(), Answer::Stay);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(UnsavedDialogTest, KeysUncheckWhatIsNotToBeSaved)
{
    UnsavedDialog dialog(Purpose::Quit, things(), QString(), nullptr, nullptr);
    show(dialog);
    press(dialog, Qt::Key_Space);
    EXPECT_EQ(dialog.checked(), Indices{1});
    press(dialog, Qt::Key_Down);
    press(dialog, Qt::Key_Space);
    EXPECT_EQ(dialog.checked(), Indices{});
    EXPECT_FALSE(control<QPushButton>(dialog, "Save").isEnabled()) << "there is nothing to save";
    press(dialog, Qt::Key_Space);
    EXPECT_EQ(dialog.checked(), Indices{1});
    EXPECT_TRUE(control<QPushButton>(dialog, "Save").isEnabled());
}

TEST_F(UnsavedDialogTest, TabReachesEveryButton)
{
    m_Jobs.begin("Kestram", QCoreApplication::applicationPid());
    UnsavedDialog dialog(Purpose::Quit, things(), QString(), &m_Jobs, nullptr);
    show(dialog);
    QStringList reached;
    for (int i = 0; i < 10; ++i) {
        reached << dialog.focusWidget()->objectName();
        press(dialog, Qt::Key_Tab);
    }
    for (const char *name : {"Things", "Wait", "Save", "Discard", "Stay"})
        EXPECT_TRUE(reached.contains(name)) << name;
}

TEST_F(UnsavedDialogTest, TheButtonsHaveKeysOfTheirOwn)
{
    for (const auto &[key, answer] :
         {std::pair(Qt::Key_S, Answer::Save), std::pair(Qt::Key_Q, Answer::Discard)}) {
        UnsavedDialog dialog(Purpose::Quit, things(), QString(), nullptr, nullptr);
        show(dialog);
        QTest::keyClick(dialog.windowHandle(), key, Qt::AltModifier);
        // A button that is pressed by its key stays down for a moment.
        waitUntil([&dialog] { return !dialog.isVisible(); });
        EXPECT_EQ(dialog.answer(), answer);
    }
}

TEST_F(UnsavedDialogTest, NumbersThatNoFileWillHaveAreToldWhileTheirStructureIsNotChecked)
{
    const UnsavedDialog dialog(Purpose::Quit, things(), QString(), nullptr, nullptr);
    auto &list = control<QTreeWidget>(dialog, "Things");
    EXPECT_EQ(note(dialog), QString());
    list.topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(note(dialog),
              "fam<b>ily will name residue numbers of 1abc that are in no structure file.");
    list.topLevelItem(1)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(note(dialog), QString());
}

TEST_F(UnsavedDialogTest, ClosingHasWordsOfItsOwn)
{
    const UnsavedDialog dialog(Purpose::Close, things(), QString(), nullptr, nullptr);
    EXPECT_EQ(control<QLabel>(dialog, "Headline").text(), "Save changes before closing?");
    EXPECT_EQ(control<QPushButton>(dialog, "Save").text(), "&Save and Close");
}

// ---- Jobs

TEST_F(UnsavedDialogTest, ARunningJobIsListedWithThreeWaysOut)
{
    const auto job = m_Jobs.begin("Kestram", QCoreApplication::applicationPid());
    m_Jobs.say(job, "loop 3 of 7");
    const UnsavedDialog dialog(Purpose::Quit, {}, QString(), &m_Jobs, nullptr);
    EXPECT_EQ(control<QLabel>(dialog, "Headline").text(), "Quit although something is running?");
    EXPECT_EQ(control<QLabel>(dialog, "JobLines").text(), "Kestram 0:00 – loop 3 of 7");
    EXPECT_EQ(dialog.jobs(), UnsavedDialog::Jobs::Wait) << "nothing is lost by waiting";
    control<QRadioButton>(dialog, "Leave").click();
    EXPECT_EQ(dialog.jobs(), UnsavedDialog::Jobs::Leave);
    control<QRadioButton>(dialog, "Cancel").click();
    EXPECT_EQ(dialog.jobs(), UnsavedDialog::Jobs::Cancel);
    EXPECT_EQ(dialog.findChild<QTreeWidget *>("Things"), nullptr);
}

TEST_F(UnsavedDialogTest, KeysChooseAmongTheWaysOut)
{
    m_Jobs.begin("Kestram", QCoreApplication::applicationPid());
    UnsavedDialog dialog(Purpose::Quit, {}, QString(), &m_Jobs, nullptr);
    show(dialog);
    press(dialog, Qt::Key_Down);
    EXPECT_EQ(dialog.jobs(), UnsavedDialog::Jobs::Leave);
    press(dialog, Qt::Key_Down);
    EXPECT_EQ(dialog.jobs(), UnsavedDialog::Jobs::Cancel);
    press(dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.answer(), Answer::Discard);
}

TEST_F(UnsavedDialogTest, AJobThatCannotBeCancelledIsNotOfferedTo)
{
    m_Jobs.begin("Malign");
    const UnsavedDialog dialog(Purpose::Quit, {}, QString(), &m_Jobs, nullptr);
    EXPECT_FALSE(control<QRadioButton>(dialog, "Cancel").isEnabled());
}

TEST_F(UnsavedDialogTest, AJobThatEndsWithTheWorkbenchIsNotOfferedToGoOn)
{
    const auto job = m_Jobs.begin("fasttree", QCoreApplication::applicationPid());
    m_Jobs.begin("Kestram", QCoreApplication::applicationPid());
    m_Jobs.endWithWorkbench(job);
    const UnsavedDialog dialog(Purpose::Quit, {}, QString(), &m_Jobs, nullptr);
    EXPECT_TRUE(control<QRadioButton>(dialog, "Leave").isEnabled()) << "of the other one";
    control<QRadioButton>(dialog, "Leave").click();
    m_Jobs.end(m_Jobs.jobs().back().number);
    EXPECT_FALSE(control<QRadioButton>(dialog, "Leave").isEnabled());
    EXPECT_TRUE(control<QRadioButton>(dialog, "Cancel").isEnabled());
    EXPECT_EQ(dialog.jobs(), UnsavedDialog::Jobs::Wait);
}

TEST_F(UnsavedDialogTest, TheJobsFollowTheirList)
{
    const auto one = m_Jobs.begin("One");
    const auto two = m_Jobs.begin("Two");
    UnsavedDialog dialog(Purpose::Quit, things(), QString(), &m_Jobs, nullptr);
    show(dialog);
    EXPECT_EQ(control<QGroupBox>(dialog, "Jobs").title(), "2 jobs are running");
    m_Jobs.end(one);
    EXPECT_EQ(control<QGroupBox>(dialog, "Jobs").title(), "A job is running");
    m_Jobs.end(two);
    EXPECT_FALSE(control<QGroupBox>(dialog, "Jobs").isVisible());
    EXPECT_TRUE(dialog.isVisible()) << "there are things to ask about";
}

TEST_F(UnsavedDialogTest, WhenTheLastJobEndsThereIsNothingToAsk)
{
    const auto job = m_Jobs.begin("Kestram");
    UnsavedDialog dialog(Purpose::Quit, {}, QString(), &m_Jobs, nullptr);
    show(dialog);
    m_Jobs.end(job);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.answer(), Answer::Discard);
}

TEST_F(UnsavedDialogTest, ASessionIsOfferedFirst)
{
    UnsavedDialog dialog(Purpose::Quit, things(), "work.tambo", nullptr, nullptr);
    EXPECT_EQ(control<QLabel>(dialog, "Explanation").text(),
              "What is not checked is lost. The session work.tambo can keep all of it.");
    EXPECT_TRUE(control<QPushButton>(dialog, "SaveSession").isDefault());
    EXPECT_FALSE(control<QPushButton>(dialog, "Save").isDefault());
    control<QPushButton>(dialog, "SaveSession").click();
    EXPECT_EQ(dialog.answer(), UnsavedDialog::Answer::SaveSession);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST_F(UnsavedDialogTest, ASessionAloneIsSavedOrNot)
{
    UnsavedDialog dialog(Purpose::Close, {}, "work.tambo", nullptr, nullptr);
    EXPECT_EQ(control<QLabel>(dialog, "Headline").text(), "Save changes before closing?");
    EXPECT_EQ(control<QLabel>(dialog, "Explanation").text(),
              "The session work.tambo has changes that are not saved.");
    EXPECT_EQ(dialog.findChild<QPushButton *>("Save"), nullptr);
    control<QPushButton>(dialog, "Discard").click();
    EXPECT_EQ(dialog.answer(), UnsavedDialog::Answer::Discard);
}

} // namespace UnsavedDialogTest
