// SPDX-License-Identifier: GPL-3.0-or-later
// The commands on objects, alone and through their menu.
#include "ObjectCommands.h"

#include "AppFixture.h"
#include "BaseWindow.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "LongWork.h"
#include "ObjectFacts.h"
#include "ObjectOperations.h"
#include "ObjectSources.h"
#include "support/Answering.h"
#include "support/ScopedSettings.h"

#include <QAction>
#include <QApplication>
#include <QColorDialog>
#include <QDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QTest>
#include <QTimer>

namespace ObjectCommandsTest {

using namespace TAMBO;
using TAMBO::app::ObjectCommands;
using Texts = std::vector<std::string>;

class ObjectCommandsTest : public RecordedFixture
{
protected:
    // Calls act with the menu once it is open, then closes what is left of it.
    template <typename Act> void withMenu(const Compounds &objects, const Act &act)
    {
        QTimer::singleShot(0, qApp, [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            act(*menu);
            menu->close();
        });
        m_Commands.popUpMenu(objects);
    }
    static QAction *entry(const QMenu &menu, const QString &text)
    {
        for (QAction *action : menu.actions()) {
            if (action->text().remove(u'&') == text)
                return action;
        }
        ADD_FAILURE() << "the menu has no " << text.toStdString();
        return nullptr;
    }
    void choose(const Compounds &objects, const QString &text)
    {
        withMenu(objects, [&](QMenu &menu) {
            QAction *action = entry(menu, text);
            ASSERT_TRUE(action->isEnabled());
            menu.setActiveAction(action);
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
            QApplication::sendEvent(&menu, &press);
        });
    }
    app::ObjectSources m_Sources;
    ObjectCommands m_Commands{m_Sources};
};

TEST_F(ObjectCommandsTest, RenamingIsOneStepOfUndo)
{
    Alignment &family = alignment("family", {"AC-D"});
    const std::size_t steps = m_History.size();
    ObjectCommands::rename(family, "serpins");
    EXPECT_EQ(family.Name(), "serpins");
    EXPECT_EQ(m_History.size(), steps + 1);
    m_History.undo();
    EXPECT_EQ(family.Name(), "family");
}

TEST_F(ObjectCommandsTest, ColoringSeveralObjectsIsOneStep)
{
    Peptide &one = sequence("one", "AC");
    Peptide &two = sequence("two", "AC");
    const Color before = one.residue(0)->OwnColor();
    const std::size_t steps = m_History.size();
    ObjectCommands::color({&one, &two}, Qt::red);
    EXPECT_EQ(one.residue(0)->OwnColor(), Color(0xff0000));
    EXPECT_EQ(two.residue(1)->OwnColor(), Color(0xff0000));
    EXPECT_EQ(m_History.size(), steps + 1);
    m_History.undo();
    EXPECT_EQ(one.residue(0)->OwnColor(), before);
}

TEST_F(ObjectCommandsTest, DeletingSeveralObjectsIsOneStep)
{
    structure("1abc", "A", "AC");
    Peptide &one = sequence("one", "AC");
    Peptide &two = sequence("two", "AC");
    EXPECT_EQ(ObjectCommands::destroy({&one, &two}), 2U);
    EXPECT_EQ(topLevelNames(), Texts{"1abc"});
    m_History.undo();
    EXPECT_EQ(topLevelNames(), (Texts{"1abc", "one", "two"}));
}

TEST_F(ObjectCommandsTest, AStructureAndItsChainAreDeletedOnce)
{
    Structure &structure = this->structure("1abc", "A", "AC");
    EXPECT_EQ(ObjectCommands::destroy({&structure, structure.chain(0)}), 1U);
    EXPECT_TRUE(topLevelNames().empty());
}

TEST_F(ObjectCommandsTest, ResiduesAreNotDeleted)
{
    Peptide &one = sequence("one", "AC");
    EXPECT_EQ(ObjectCommands::destroy({one.residue(0)}), 0U);
    EXPECT_EQ(one.residueCount(), 2U);
}

TEST_F(ObjectCommandsTest, ALockedObjectKeepsNameColorAndPlace)
{
    Peptide &one = sequence("one", "AC");
    Peptide &two = sequence("two", "AC");
    ObjectCommands::setLocked({&one}, true);
    EXPECT_TRUE(one.IsLocked());
    ObjectCommands::rename(one, "new");
    EXPECT_EQ(ObjectCommands::destroy({&one, &two}), 1U);
    EXPECT_EQ(topLevelNames(), Texts{"one"});
    EXPECT_EQ(m_Refused, (Texts{"one", "one"}));
    ObjectCommands::setLocked({&one}, false);
    ObjectCommands::rename(one, "new");
    EXPECT_EQ(one.Name(), "new");
}

TEST_F(ObjectCommandsTest, DeletingThatIsGivenUpDeletesNothing)
{
    Compounds all;
    for (std::size_t i = 0; i <= LongWork::kStride; ++i)
        all.push_back(&sequence("s", "AC"));
    const std::size_t steps = m_History.size();
    std::size_t looks = 0;
    std::size_t stop = 1;
    modelHooks().working = [&](const char *what, double, bool canBeGivenUp) {
        EXPECT_STREQ(what, "Deleting");
        EXPECT_TRUE(canBeGivenUp);
        return ++looks != stop;
    };
    for (; stop <= 2; ++stop) {
        looks = 0;
        EXPECT_EQ(ObjectCommands::destroy(all), 0U);
        EXPECT_EQ(looks, stop);
        EXPECT_EQ(space().ChildCount(), all.size());
        EXPECT_EQ(m_History.size(), steps);
    }
    looks = 0;
    EXPECT_EQ(ObjectCommands::destroy(all), all.size());
    EXPECT_EQ(looks, 2U);
    EXPECT_EQ(space().ChildCount(), 0U);
    modelHooks().working = nullptr;
}

TEST_F(ObjectCommandsTest, ColoringThatIsGivenUpLeavesAllColors)
{
    Compounds all;
    for (std::size_t i = 0; i <= LongWork::kStride; ++i)
        all.push_back(&sequence("s", "AC"));
    const std::size_t steps = m_History.size();
    std::size_t looks = 0;
    modelHooks().working = [&](const char *, double, bool) { return ++looks < 2; };
    const QColor before = all.front()->OwnColor().toQColor();
    ObjectCommands::color(all, Qt::magenta);
    EXPECT_EQ(looks, 2U);
    EXPECT_EQ(all.front()->OwnColor().toQColor(), before);
    EXPECT_EQ(m_History.size(), steps);
    modelHooks().working = nullptr;
}

TEST_F(ObjectCommandsTest, SelectingThatIsGivenUpStopsWhereItIs)
{
    Compounds all;
    for (std::size_t i = 0; i <= LongWork::kStride; ++i)
        all.push_back(&sequence("s", "AC"));
    std::size_t looks = 0;
    modelHooks().working = [&](const char *what, double, bool canBeGivenUp) {
        EXPECT_STREQ(what, "Selecting");
        EXPECT_TRUE(canBeGivenUp);
        return ++looks < 2;
    };
    EXPECT_FALSE(ObjectCommands::select(all, true));
    EXPECT_EQ(looks, 2U);
    EXPECT_TRUE(all[LongWork::kStride - 1]->IsSelected());
    EXPECT_FALSE(all.back()->IsSelected());
    looks = 0;
    ObjectCommands::changeSelection({all.back()}, all);
    EXPECT_EQ(looks, 2U);
    EXPECT_FALSE(all.back()->IsSelected()) << "the next one is not begun";
    modelHooks().working = nullptr;
}

TEST_F(ObjectCommandsTest, SelectNoneDeselectsEverything)
{
    Structure &structure = this->structure("1abc", "A", "AC");
    Peptide &one = sequence("one", "AC");
    ObjectCommands::select({structure.chain(0)->residue(1), &one}, true);
    ObjectCommands::selectNone();
    EXPECT_FALSE(structure.chain(0)->isSelected(1));
    EXPECT_FALSE(one.IsSelected());
}

TEST_F(ObjectCommandsTest, TheMenuOffersWhatCanBeDone)
{
    Structure &structure = this->structure("1abc", "A", "AC");
    withMenu({&structure}, [](const QMenu &menu) {
        for (const char *text :
             {"Select", "Deselect", "Color…", "Rename…", "Lock", "Delete", "Properties…"})
            EXPECT_TRUE(entry(menu, text)->isEnabled()) << text;
    });
    withMenu({structure.chain(0)->residue(0)}, [](const QMenu &menu) {
        EXPECT_TRUE(entry(menu, "Color…")->isEnabled());
        for (const char *text : {"Rename…", "Lock", "Delete"})
            EXPECT_FALSE(entry(menu, text)->isEnabled()) << text;
    });
}

TEST_F(ObjectCommandsTest, TheMenuSelectsAndDeselects)
{
    Peptide &one = sequence("one", "AC");
    choose({&one}, "Select");
    EXPECT_TRUE(one.IsSelected());
    choose({&one}, "Deselect");
    EXPECT_FALSE(one.IsSelected());
}

TEST_F(ObjectCommandsTest, TheMenuLocksAndUnlocks)
{
    Peptide &one = sequence("one", "AC");
    choose({&one}, "Lock");
    EXPECT_TRUE(one.IsLocked());
    choose({&one}, "Unlock");
    EXPECT_FALSE(one.IsLocked());
}

TEST_F(ObjectCommandsTest, TheMenuDeletes)
{
    Peptide &one = sequence("one", "AC");
    choose({&one}, "Delete");
    EXPECT_TRUE(topLevelNames().empty());
}

TEST_F(ObjectCommandsTest, TheMenuRenamesWithADialog)
{
    Peptide &one = sequence("one", "AC");
    answering<QInputDialog>([](QInputDialog &dialog) {
        EXPECT_EQ(dialog.textValue(), "one");
        dialog.setTextValue("two");
        dialog.accept();
    });
    choose({&one}, "Rename…");
    EXPECT_EQ(one.Name(), "two");
}

TEST_F(ObjectCommandsTest, MenuAndDialogsSayWhoseChainItIs)
{
    Structure &structure = this->structure("1abc", "A", "AC");
    Peptide &chain = *structure.chain(0);
    QStringList titles;
    const auto look = [&titles](QDialog &dialog) {
        titles << dialog.windowTitle();
        dialog.reject();
    };
    answering<QColorDialog>(look);
    m_Commands.askColor({&chain});
    answering<QInputDialog>(look);
    m_Commands.askRename(chain);
    answering<QDialog>(look);
    m_Commands.showProperties(chain);
    answering<QColorDialog>(look);
    m_Commands.askColor({&chain, &structure});
    EXPECT_EQ(titles, (QStringList{"Color of chain A of 1abc", "Rename chain A of 1abc",
                                   "Properties of chain A of 1abc", "Color of 2 objects"}));
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    answering<QColorDialog>(look);
    m_Commands.askColor(std::vector<Compound *>(1024, &chain));
    QLocale::setDefault(before);
    EXPECT_EQ(titles.back(), "Color of 1,024 objects");
    withMenu({&chain}, [](const QMenu &menu) {
        EXPECT_EQ(menu.actions().front()->text(), "chain A of 1abc");
    });
    EXPECT_EQ(TAMBO::app::fullNameText(structure), "structure 1abc");
    EXPECT_TRUE(TAMBO::app::fullNameText(*chain.residue(0)).endsWith(" of chain A of 1abc"));
}

TEST_F(ObjectCommandsTest, ADialogIsOverTheWindowThatItIsCalledFrom)
{
    Peptide &one = sequence("one", "AC");
    BaseWindow caller("Caller", {400, 300}, QString(), false, nullptr, nullptr);
    caller.show();
    caller.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&caller));
    const QWidget *parent = nullptr;
    answering<QInputDialog>([&](QInputDialog &dialog) {
        parent = dialog.parentWidget();
        dialog.reject();
    });
    m_Commands.askRename(one);
    EXPECT_EQ(parent, &caller);
}

TEST_F(ObjectCommandsTest, ACancelledOrEmptyNameChangesNothing)
{
    Peptide &one = sequence("one", "AC");
    const std::size_t steps = m_History.size();
    answering<QInputDialog>([](QInputDialog &dialog) {
        dialog.setTextValue("two");
        dialog.reject();
    });
    m_Commands.askRename(one);
    answering<QInputDialog>([](QInputDialog &dialog) {
        dialog.setTextValue("   ");
        dialog.accept();
    });
    m_Commands.askRename(one);
    EXPECT_EQ(one.Name(), "one");
    EXPECT_EQ(m_History.size(), steps);
}

TEST_F(ObjectCommandsTest, AnObjectThatGoesWhileItsNameIsTypedIsLeftAlone)
{
    Peptide &one = sequence("one", "AC");
    const std::size_t steps = m_History.size();
    answering<QInputDialog>([&](QInputDialog &dialog) {
        {
            const DataDelete<Space> guard(nullptr, Space::instance());
            DataMaker::Destroy(&one);
        }
        dialog.setTextValue("two");
        dialog.accept();
    });
    m_Commands.askRename(one);
    EXPECT_EQ(m_History.size(), steps + 1);
}

TEST_F(ObjectCommandsTest, AnObjectThatGoesWhileItsMenuIsOpenIsLeftAlone)
{
    // Without a history nobody keeps the deleted object.
    setEditRecorder(nullptr);
    Peptide &one = sequence("one", "AC");
    withMenu({&one}, [&](QMenu &menu) {
        const DataDelete<Space> guard(nullptr, Space::instance());
        DataMaker::Destroy(&one);
        menu.setActiveAction(entry(menu, "Lock"));
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(&menu, &press);
    });
    EXPECT_TRUE(topLevelNames().empty());
}

TEST_F(ObjectCommandsTest, TheColorDialogBeginsWithTheObjectsColor)
{
    Peptide &one = sequence("one", "AC");
    ObjectCommands::color({&one}, Qt::green);
    answering<QColorDialog>([](QColorDialog &dialog) {
        EXPECT_EQ(dialog.currentColor(), QColor(Qt::green));
        dialog.setCurrentColor(Qt::blue);
        dialog.accept();
    });
    m_Commands.askColor({one.residue(0)});
    EXPECT_EQ(one.residue(0)->OwnColor(), Color(0x0000ff));
    EXPECT_EQ(one.residue(1)->OwnColor(), Color(0x00ff00));
}

TEST_F(ObjectCommandsTest, TheColorDialogBeginsWithTheColorThatWasPickedLast)
{
    const ScopedSettings settings("[General]\nLastColor = #ff8800\n");
    Peptide &one = sequence("one", "AC");
    answering<QColorDialog>([](QColorDialog &dialog) {
        EXPECT_EQ(dialog.currentColor(), QColor(0xff, 0x88, 0));
        dialog.accept();
    });
    m_Commands.askColor({&one});
    EXPECT_EQ(one.OwnColor(), Color(0xff8800));
}

TEST_F(ObjectCommandsTest, PropertiesSayWhatTheObjectIsAndWhereItComesFrom)
{
    Structure &structure = this->structure("1abc", "A", "ACD");
    m_Sources.set(structure, "/data/1abc.pdb");
    QStringList texts;
    answering<QDialog>([&](QDialog &dialog) {
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            texts << label->text();
        dialog.reject();
    });
    m_Commands.showProperties(*structure.chain(0));
    for (const char *text : {"chain", "A", "1abc/A", "3", "1 to 3", "/data/1abc.pdb"})
        EXPECT_TRUE(texts.contains(text)) << text;
}

TEST_F(ObjectCommandsTest, PropertiesOfARenamedStructureSayWhatFilesCallIt)
{
    Structure &structure = this->structure("1abc", "A", "ACD");
    ObjectCommands::rename(structure, "ferredoxin");
    QStringList texts;
    answering<QDialog>([&](QDialog &dialog) {
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            texts << label->text();
        dialog.reject();
    });
    m_Commands.showProperties(structure);
    for (const char *text : {"ferredoxin", "Name in files:", "1abc"})
        EXPECT_TRUE(texts.contains(text)) << text;
}

TEST_F(ObjectCommandsTest, PropertiesOfAnAlignmentSayRowsAndColumns)
{
    Alignment &family = alignment("family", {"AC-D", "ACDD"});
    QStringList texts;
    answering<QDialog>([&](QDialog &dialog) {
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            texts << label->text();
        dialog.reject();
    });
    m_Commands.showProperties(family);
    EXPECT_TRUE(texts.contains("2 × 4"));
    EXPECT_FALSE(texts.contains("File:"));
}

TEST_F(ObjectCommandsTest, AnAlignmentCanBeOpenedInTheEditor)
{
    Alignment &family = alignment("family", {"AC-D"});
    Alignment *shown = nullptr;
    m_Commands.setEditor([&](Alignment &alignment) { shown = &alignment; });
    choose({&family}, "Open in the Editor");
    EXPECT_EQ(shown, &family);
}

} // namespace ObjectCommandsTest
