// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of SelectObject, and how users drive it.
#include "SelectObject.h"

#include "Alignment.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "ObjectOrigins.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "SelectObjectAnswers.h"
#include "ShownObjects.h"
#include "support/FakeCompound.h"
#include "support/KeptQuestion.h"
#include "support/LogLines.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <gmock/gmock.h>

#include <functional>

using namespace TAMBO::services;
using TAMBO::Compound;
using TAMBO::SelectObject;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace SelectObjectContractTest {

class SelectObjectContract : public ::testing::Test
{
protected:
    void TearDown() override { SelectObjectAnswers::clear(); }

    // Runs the dialog and does as a user would, once it is there.
    static int run(SelectObject &dialog, const std::function<void()> &user)
    {
        QTimer::singleShot(0, &dialog, [&dialog, &user] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
            user();
        });
        return dialog.exec();
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static void type(const QString &text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    static QPushButton *ok(const SelectObject &dialog)
    {
        return dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    }
    static QTreeView *list(const SelectObject &dialog) { return dialog.findChild<QTreeView *>(); }
    static QStringList shown(const SelectObject &dialog)
    {
        QStringList names;
        const QAbstractItemModel *model = list(dialog)->model();
        for (int row = 0; row < model->rowCount(); ++row)
            names.append(model->index(row, 0).data().toString());
        return names;
    }
    static void clickRow(const SelectObject &dialog, int row, bool twice)
    {
        QTreeView *view = list(dialog);
        const QPoint place = view->visualRect(view->model()->index(row, 1)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        if (twice)
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }
    static void clickButton(const SelectObject &dialog, const QString &text)
    {
        for (QPushButton *button : dialog.findChildren<QPushButton *>())
            if (button->text().remove('&') == text)
                return button->click();
        FAIL() << "no button " << text.toStdString();
    }
    static bool says(const SelectObject &dialog, const QString &text)
    {
        const auto labels = dialog.findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(),
                           [&](const QLabel *label) { return label->text() == text; });
    }

    FakeCompound m_Beta{"beta", "chain"};
    FakeCompound m_Alpha{"alpha", "structure"};
    FakeCompound m_Gamma{"gamma", "chain"};
    std::vector<Compound *> m_Candidates{&m_Beta, &m_Alpha, &m_Gamma};
    Compound *m_One = nullptr;
    std::vector<Compound *> m_Several;
};

TEST_F(SelectObjectContract, TheCaptionIsTheTitle)
{
    const SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences to add");
    EXPECT_EQ(dialog.windowTitle(), "sequences to add");
}

TEST_F(SelectObjectContract, ShowsTheCandidatesInTheirOrder)
{
    const SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    EXPECT_EQ(shown(dialog), QStringList({"beta", "alpha", "gamma"}));
}

TEST_F(SelectObjectContract, AQuestionThatIsAnsweredInAdvanceTakesNoWidgets)
{
    SelectObjectAnswers::push({&m_Alpha});
    SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    EXPECT_THAT(dialog.findChildren<QWidget *>(), IsEmpty());
    EXPECT_EQ(dialog.exec(), QDialog::Accepted);
    EXPECT_EQ(m_One, &m_Alpha);
    EXPECT_THAT(dialog.findChildren<QWidget *>(), IsEmpty());
}

TEST_F(SelectObjectContract, ItAsksTheUserWhenTheAnswerHasGone)
{
    SelectObjectAnswers::push({&m_Alpha});
    m_One = &m_Gamma;
    SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    SelectObjectAnswers::clear();
    const int result = run(dialog, [&] {
        EXPECT_EQ(shown(dialog), QStringList({"beta", "alpha", "gamma"}));
        press(Qt::Key_Up);
        press(Qt::Key_Return);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(m_One, &m_Alpha);
}

TEST_F(SelectObjectContract, EnterTakesTheOneThatTheArrowsChose)
{
    SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    const int result = run(dialog, [] {
        EXPECT_NE(qobject_cast<QLineEdit *>(QApplication::focusWidget()), nullptr);
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        press(Qt::Key_Up);
        press(Qt::Key_Return);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(m_One, &m_Alpha);
}

TEST_F(SelectObjectContract, EscapeLeavesTheChoiceAsItWas)
{
    m_One = &m_Gamma;
    SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    const int result = run(dialog, [] {
        press(Qt::Key_Up);
        press(Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(m_One, &m_Gamma);
}

TEST_F(SelectObjectContract, TheFormerChoiceIsTheStart)
{
    m_One = &m_Gamma;
    SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    run(dialog, [] { press(Qt::Key_Return); });
    EXPECT_EQ(m_One, &m_Gamma);
}

TEST_F(SelectObjectContract, ADoubleClickTakesTheOne)
{
    SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    const int result = run(dialog, [&] { clickRow(dialog, 2, true); });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(m_One, &m_Gamma);
}

TEST_F(SelectObjectContract, TypingKeepsWhatHoldsTheText)
{
    SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    run(dialog, [&] {
        type("ETA");
        EXPECT_EQ(shown(dialog), QStringList("beta"));
        EXPECT_TRUE(says(dialog, "1 of 3 shown"));
        press(Qt::Key_Return);
    });
    EXPECT_EQ(m_One, &m_Beta);
}

TEST_F(SelectObjectContract, AnEmptySingleChoiceCannotBeAccepted)
{
    SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    const int result = run(dialog, [&] {
        type("nothing has this name");
        EXPECT_TRUE(shown(dialog).isEmpty());
        EXPECT_FALSE(ok(dialog)->isEnabled());
        press(Qt::Key_Return);
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        press(Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(m_One, nullptr);
}

TEST_F(SelectObjectContract, SpaceTicksAndTheChoiceComesInTheOrderOfTheCandidates)
{
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    const int result = run(dialog, [&] {
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        press(Qt::Key_Space);
        press(Qt::Key_Up);
        press(Qt::Key_Up);
        press(Qt::Key_Space);
        EXPECT_TRUE(says(dialog, "3 offered, 2 chosen"));
        press(Qt::Key_Return);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_THAT(m_Several, ElementsAre(&m_Beta, &m_Gamma));
}

TEST_F(SelectObjectContract, ThousandsAreCountedWithSeparators)
{
    const std::vector<Compound *> many(1024, &m_Beta);
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    SelectObject dialog(many, m_Several, nullptr, "sequences");
    run(dialog, [&] {
        EXPECT_TRUE(says(dialog, "1,024 offered, 0 chosen"));
        press(Qt::Key_Escape);
    });
    QLocale::setDefault(before);
}

TEST_F(SelectObjectContract, SpaceTicksInTheListTooAndTakesBack)
{
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    run(dialog, [&] {
        list(dialog)->setFocus();
        press(Qt::Key_Down);
        press(Qt::Key_Space);
        press(Qt::Key_Down);
        press(Qt::Key_Space);
        press(Qt::Key_Space);
        press(Qt::Key_Return);
    });
    EXPECT_THAT(m_Several, ElementsAre(&m_Alpha));
}

TEST_F(SelectObjectContract, SortingTheListDoesNotReorderTheChoice)
{
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    run(dialog, [&] {
        list(dialog)->sortByColumn(0, Qt::AscendingOrder);
        EXPECT_EQ(shown(dialog), QStringList({"alpha", "beta", "gamma"}));
        clickButton(dialog, "Select all");
        press(Qt::Key_Return);
    });
    EXPECT_THAT(m_Several, ElementsAre(&m_Beta, &m_Alpha, &m_Gamma));
}

TEST_F(SelectObjectContract, SelectAllAndNoneMeanWhatIsShown)
{
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    run(dialog, [&] {
        clickButton(dialog, "Select all");
        type("beta");
        clickButton(dialog, "Select none");
        EXPECT_TRUE(says(dialog, "1 of 3 shown, 2 chosen"));
        press(Qt::Key_Return);
    });
    EXPECT_THAT(m_Several, ElementsAre(&m_Alpha, &m_Gamma));
}

TEST_F(SelectObjectContract, ADoubleClickTicksWhereSeveralCanBeChosen)
{
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    run(dialog, [&] {
        clickRow(dialog, 1, true);
        EXPECT_TRUE(dialog.isVisible());
        press(Qt::Key_Return);
    });
    EXPECT_THAT(m_Several, ElementsAre(&m_Alpha));
}

TEST_F(SelectObjectContract, NoneOfSeveralIsAChoice)
{
    m_Several = {&m_Gamma};
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    const int result = run(dialog, [&] {
        EXPECT_TRUE(says(dialog, "3 offered, 1 chosen"));
        clickButton(dialog, "Select none");
        press(Qt::Key_Return);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_THAT(m_Several, IsEmpty());
}

TEST_F(SelectObjectContract, TheOnlyMatchIsWhatEnterTakes)
{
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    const int result = run(dialog, [&] {
        EXPECT_FALSE(ok(dialog)->isEnabled());
        type("alp");
        EXPECT_TRUE(says(dialog, "1 of 3 shown: OK takes it"));
        EXPECT_TRUE(ok(dialog)->isEnabled());
        press(Qt::Key_Return);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_THAT(m_Several, ElementsAre(&m_Alpha));
}

TEST_F(SelectObjectContract, TheOnlyMatchIsNotAddedToWhatIsTicked)
{
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    run(dialog, [&] {
        press(Qt::Key_Space);
        type("alp");
        EXPECT_TRUE(says(dialog, "1 of 3 shown, 1 chosen"));
        press(Qt::Key_Return);
    });
    EXPECT_THAT(m_Several, ElementsAre(&m_Beta));
}

TEST_F(SelectObjectContract, EnterWithNothingTickedSaysSoAndStays)
{
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    const int result = run(dialog, [&] {
        type("a");
        press(Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(says(dialog, "Nothing is ticked yet. Space ticks the highlighted row."));
        press(Qt::Key_Space);
        EXPECT_TRUE(says(dialog, "3 offered, 1 chosen"));
        press(Qt::Key_Return);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_THAT(m_Several, ElementsAre(&m_Beta));
}

TEST_F(SelectObjectContract, AFilterThatNothingMatchesOffersNothingToTake)
{
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    const int result = run(dialog, [&] {
        type("nothing has this name");
        EXPECT_FALSE(ok(dialog)->isEnabled());
        const QImage empty = list(dialog)->viewport()->grab().toImage();
        EXPECT_TRUE(says(dialog, "0 of 3 shown, 0 chosen"));
        bool isWritten = false;
        for (int y = 0; y < empty.height() && !isWritten; ++y)
            for (int x = 0; x < empty.width() && !isWritten; ++x)
                isWritten = empty.pixel(x, y) != empty.pixel(0, 0);
        EXPECT_TRUE(isWritten) << "the list says why it is empty";
        press(Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
}

TEST_F(SelectObjectContract, CancelLeavesSeveralAsTheyWere)
{
    m_Several = {&m_Gamma};
    SelectObject dialog(m_Candidates, m_Several, nullptr, "sequences");
    const int result = run(dialog, [&] {
        clickButton(dialog, "Select all");
        press(Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_THAT(m_Several, ElementsAre(&m_Gamma));
}

TEST_F(SelectObjectContract, EqualNamesAreDifferentRows)
{
    FakeCompound twin("beta", "chain");
    m_Candidates.push_back(&twin);
    SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    run(dialog, [] {
        type("beta");
        press(Qt::Key_Down);
        press(Qt::Key_Return);
    });
    EXPECT_EQ(m_One, &twin);
}

TEST_F(SelectObjectContract, AnAnswerGivenInAdvanceNeedsNoDialog)
{
    SelectObjectAnswers::push({&m_Gamma});
    const KeptQuestion asked({&m_Gamma, &m_Beta});
    SelectObjectAnswers::pushCancel();
    QWidget parent;
    {
        SelectObject dialog(m_Candidates, m_One, &parent, "alignment");
        EXPECT_EQ(dialog.exec(), QDialog::Accepted);
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        EXPECT_EQ(m_One, &m_Gamma);
    }
    SelectObject several(m_Candidates, m_Several, &parent, "sequences");
    EXPECT_EQ(several.exec(), QDialog::Accepted);
    EXPECT_THAT(m_Several, ElementsAre(&m_Beta, &m_Gamma));
    EXPECT_EQ(several.exec(), QDialog::Rejected);
    EXPECT_TRUE(SelectObjectAnswers::isEmpty());
    EXPECT_EQ(asked->caption, "sequences");
    EXPECT_EQ(asked->candidates, m_Candidates);
    EXPECT_TRUE(asked->isSeveral);
    EXPECT_EQ(asked->parent, &parent);
}

TEST_F(SelectObjectContract, AnAnswerThatIsNotOfferedCancelsASingleChoice)
{
    FakeCompound stranger("stranger", "chain");
    SelectObjectAnswers::push({&stranger});
    const LogLines log;
    SelectObject dialog(m_Candidates, m_One, nullptr, "alignment");
    EXPECT_EQ(dialog.exec(), QDialog::Rejected);
    EXPECT_EQ(m_One, nullptr);
    EXPECT_EQ(log.texts(), QStringList("The object chosen in advance is not offered: alignment"));
}

// With real objects in the workbench.
class SelectObjectOfTheWorkbench : public SelectObjectContract
{
protected:
    void SetUp() override
    {
        auto &space = TAMBO::ObjectSpace::get();
        for (const char *name : {"first", "second"})
            space.insertObject(space.objectCount(),
                               std::make_unique<TAMBO::Peptide>(name, "ACDEF"));
        m_Sequences = {space.object(0), space.object(1)};
        m_Alignment = TAMBO::DataMaker::makeAlignment("ali", m_Sequences);
    }
    void TearDown() override
    {
        SelectObjectContract::TearDown();
        ObjectOrigins::remove();
        TAMBO::ObjectSpace::get().reset();
    }
    static QString cell(const SelectObject &dialog, int row, int column)
    {
        return list(dialog)->model()->index(row, column).data().toString();
    }
    static void destroy(Compound *object)
    {
        const DataDelete<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        ASSERT_TRUE(guard.m_good);
        TAMBO::DataMaker::Destroy(object);
    }

    std::vector<Compound *> m_Sequences;
    Compound *m_Alignment = nullptr;
};

TEST_F(SelectObjectOfTheWorkbench, KindAndSizeAreShown)
{
    const SelectObject dialog({m_Sequences[0], m_Alignment}, m_One, nullptr, "object");
    EXPECT_EQ(cell(dialog, 0, 0), "first");
    EXPECT_EQ(cell(dialog, 0, 1), "Sequence");
    EXPECT_EQ(cell(dialog, 0, 2), "5 residues");
    EXPECT_EQ(cell(dialog, 1, 0), "ali");
    EXPECT_EQ(cell(dialog, 1, 1), "Alignment");
    EXPECT_EQ(cell(dialog, 1, 2), "2 × 5");
    for (int row : {0, 1})
        EXPECT_FALSE(list(dialog)->model()->index(row, 0).data(Qt::DecorationRole).isNull());
}

TEST_F(SelectObjectOfTheWorkbench, WhatIsPickedInTheTreeIsTickedAtFirst)
{
    ObjectOrigins::install({}, [this] { return std::vector<Compound *>{m_Sequences[1]}; });
    SelectObject dialog(m_Sequences, m_Several, nullptr, "sequences");
    run(dialog, [&] {
        EXPECT_TRUE(says(dialog, "2 offered, 1 chosen"));
        EXPECT_EQ(list(dialog)->currentIndex().row(), 1);
        press(Qt::Key_Return);
    });
    EXPECT_THAT(m_Several, ElementsAre(m_Sequences[1]));
    m_Several.clear();
    SelectObject typed(m_Sequences, m_Several, nullptr, "sequences");
    run(typed, [&] {
        type("first");
        EXPECT_TRUE(says(typed, "1 of 2 shown: OK takes it"));
        press(Qt::Key_Return);
    });
    EXPECT_THAT(m_Several, ElementsAre(m_Sequences[0])) << "what is typed says more";
    SelectObject other(m_Sequences, m_Several, nullptr, "sequences");
    run(other, [] { press(Qt::Key_Return); });
    EXPECT_THAT(m_Several, ElementsAre(m_Sequences[0])) << "the caller's own choice comes first";
}

TEST_F(SelectObjectOfTheWorkbench, SpaceOnWhatIsTypedTicksThatAndNotWhatIsPicked)
{
    ObjectOrigins::install({}, [this] { return m_Sequences; });
    SelectObject dialog(m_Sequences, m_Several, nullptr, "sequences");
    run(dialog, [&] {
        type("first");
        press(Qt::Key_Space);
        EXPECT_TRUE(says(dialog, "1 of 2 shown, 1 chosen"));
        press(Qt::Key_Space);
        EXPECT_TRUE(says(dialog, "1 of 2 shown: OK takes it"));
        press(Qt::Key_Space);
        press(Qt::Key_Return);
    });
    EXPECT_THAT(m_Several, ElementsAre(m_Sequences[0]));
}

TEST_F(SelectObjectOfTheWorkbench, SelectAllOfWhatIsTypedTakesThatAloneAndNotWhatIsPicked)
{
    ObjectOrigins::install({}, [this] { return m_Sequences; });
    SelectObject dialog(m_Sequences, m_Several, nullptr, "sequences");
    run(dialog, [&] {
        EXPECT_TRUE(says(dialog, "2 offered, 2 chosen"));
        type("first");
        for (QPushButton *const button : dialog.findChildren<QPushButton *>()) {
            if (button->text().remove(u'&') == "Select all")
                button->click();
        }
        EXPECT_TRUE(says(dialog, "1 of 2 shown, 1 chosen"));
        press(Qt::Key_Return);
    });
    EXPECT_THAT(m_Several, ElementsAre(m_Sequences[0]));
}

TEST_F(SelectObjectOfTheWorkbench, WhatIsARowAlreadySaysSoAndIsNotTickedByItself)
{
    QWidget window;
    ShownObjects::Set(&window, m_Alignment);
    auto &space = TAMBO::ObjectSpace::get();
    space.insertObject(0, std::make_unique<TAMBO::Peptide>("new", "AC"));
    const std::vector<Compound *> offered{space.object(0), m_Sequences[0], m_Sequences[1]};
    ObjectOrigins::install({}, [&] { return offered; });
    const SelectObject dialog(offered, m_Several, &window, "sequences to add");
    EXPECT_FALSE(list(dialog)->isColumnHidden(3));
    EXPECT_EQ(cell(dialog, 0, 3), "");
    EXPECT_EQ(cell(dialog, 1, 3), "already row 1");
    EXPECT_EQ(cell(dialog, 2, 3), "already row 2");
    EXPECT_TRUE(says(dialog, "3 offered, 1 chosen"));
    // Making a new one: there is no row that they could have.
    const SelectObject making(offered, m_Several, &window, "sequences");
    EXPECT_TRUE(list(making)->isColumnHidden(3));
    EXPECT_TRUE(says(making, "3 offered, 3 chosen"));
    const SelectObject combining({m_Alignment}, m_One, &window, "Alignment to combine");
    EXPECT_EQ(cell(combining, 0, 3), "shown in this window");
    ShownObjects::Set(&window, nullptr);
}

TEST_F(SelectObjectOfTheWorkbench, AtFirstAllColumnsAreInSight)
{
    QWidget window;
    ShownObjects::Set(&window, m_Alignment);
    SelectObject dialog({m_Sequences[0], m_Sequences[1]}, m_Several, &window, "sequences to add");
    run(dialog, [&] {
        EXPECT_FALSE(list(dialog)->isColumnHidden(3));
        EXPECT_LE(list(dialog)->header()->length(), list(dialog)->viewport()->width());
        press(Qt::Key_Escape);
    });
    ShownObjects::Set(&window, nullptr);
}

TEST_F(SelectObjectOfTheWorkbench, EqualNamesAreToldApart)
{
    auto &space = TAMBO::ObjectSpace::get();
    space.insertObject(0, std::make_unique<TAMBO::Peptide>("first", "AC"));
    const std::vector<Compound *> offered{space.object(0), m_Sequences[0], m_Sequences[1]};
    SelectObject dialog(offered, m_One, nullptr, "sequence");
    EXPECT_EQ(shown(dialog), QStringList({"first (2 residues)", "first (5 residues)", "second"}));
    run(dialog, [&] {
        destroy(offered[0]);
        EXPECT_EQ(shown(dialog), QStringList({"first", "second"}));
        press(Qt::Key_Escape);
    });
}

TEST_F(SelectObjectOfTheWorkbench, AnObjectDeletedMeanwhileIsNotOfferedAnyMore)
{
    SelectObject dialog(m_Sequences, m_Several, nullptr, "sequences");
    run(dialog, [&] {
        clickButton(dialog, "Select all");
        destroy(m_Sequences[0]);
        EXPECT_EQ(shown(dialog), QStringList("second"));
        EXPECT_TRUE(says(dialog, "1 offered, 1 chosen"));
        press(Qt::Key_Return);
    });
    EXPECT_THAT(m_Several, ElementsAre(m_Sequences[1]));
}

TEST_F(SelectObjectOfTheWorkbench, ASingleChoiceOfWhichNothingIsLeftCannotBeAccepted)
{
    SelectObject dialog({m_Alignment}, m_One, nullptr, "alignment");
    const int result = run(dialog, [&] {
        destroy(m_Alignment);
        EXPECT_FALSE(ok(dialog)->isEnabled());
        press(Qt::Key_Return);
        press(Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(m_One, nullptr);
}

} // namespace SelectObjectContractTest
