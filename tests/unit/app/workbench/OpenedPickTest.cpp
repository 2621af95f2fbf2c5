// SPDX-License-Identifier: GPL-3.0-or-later
// What was just opened is picked in the tree.
#include "AppFixture.h"
#include "DataPoint.h"
#include "MainWindow.h"
#include "ObjectTree.h"
#include "ObjectTreeModel.h"
#include "SelectObject.h"
#include "TestTexts.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "support/Answering.h"
#include "support/WaitUntil.h"

#include <QLineEdit>
#include <QTest>

#include <memory>
#include <stdexcept>

namespace OpenedPickTest {

using namespace TAMBO;
using app::MainWindow;
using app::ObjectTree;
using app::Workbench;
using Texts = std::vector<std::string>;

class OpenedPick : public AppFixture
{
protected:
    OpenedPick()
        : m_Workbench(std::make_unique<Workbench>(Workbench::Attendance::User, withoutPlugins()))
    { }
    ~OpenedPick() override
    {
        m_Workbench->undo().history().clear();
        m_Workbench.reset();
    }

    ObjectTree &tree() { return m_Workbench->window().tree(); }
    void show()
    {
        m_Workbench->window().show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Workbench->window()));
    }
    void finish()
    {
        waitUntil([this] { return !m_Workbench->loader().isBusy(); });
    }
    void open(const QStringList &files)
    {
        m_Workbench->open(files);
        finish();
    }
    Texts picked()
    {
        Texts names;
        for (const Compound *const object : m_Workbench->window().pickedObjects())
            names.push_back(object->Name());
        return names;
    }
    static Compound &object(const std::string &name)
    {
        for (Compound *const object : *Space::instance()) {
            if (object->Name() == name)
                return *object;
        }
        throw std::runtime_error(name);
    }
    void click(const Compound &object, Qt::KeyboardModifiers modifiers = {})
    {
        tree().expandAll();
        const QRect place = tree().visualRect(m_Workbench->window().objects().indexOf(&object));
        QTest::mouseClick(tree().viewport(), Qt::LeftButton, modifiers, place.center());
    }
    QString sequences() { return write("s.fasta", ">a\nACD\n>b\nACDE\n"); }
    QString others() { return write("o.fasta", ">c\nACDF\n>d\nACDEF\n"); }
    QString family() { return write("family.fasta", ">e\nAC-D\n>f\nACCD\n"); }
    QString model() { return write("m.pdb", pdbText("ACD")); }

    std::unique_ptr<Workbench> m_Workbench;
};

TEST_F(OpenedPick, AStructureAnAlignmentOrSequencesArePickedWhenTheyAreThere)
{
    open({sequences()});
    EXPECT_EQ(picked(), (Texts{"a", "b"}));
    open({model()});
    EXPECT_EQ(picked(), Texts{"m"});
    open({family()});
    EXPECT_EQ(picked(), Texts{"family"}) << "its sequences are what it is made of";
}

TEST_F(OpenedPick, OfSeveralFilesAllThatCameIs)
{
    open({sequences(), model(), others()});
    EXPECT_EQ(picked(), (Texts{"m", "a", "b", "c", "d"}));
}

TEST_F(OpenedPick, WithAFileThatFailsTheOthersAre)
{
    open({sequences(), path("none.fasta"), model()});
    EXPECT_EQ(picked(), (Texts{"m", "a", "b"}));
    open({path("none.fasta")});
    EXPECT_EQ(picked(), (Texts{"m", "a", "b"})) << "nothing came";
}

TEST_F(OpenedPick, ItTakesThePlaceOfWhatWasPickedBefore)
{
    show();
    open({model()});
    click(object("m"));
    open({sequences()});
    EXPECT_EQ(picked(), (Texts{"a", "b"}));
    EXPECT_TRUE(object("m").IsSelected()) << "what is selected of objects is the user's";
}

TEST_F(OpenedPick, NotWhenTheUserHasPickedSomethingMeanwhile)
{
    show();
    open({model()});
    m_Workbench->open({sequences()});
    m_Workbench->open({others()});
    click(object("m"));
    open({family()});
    EXPECT_EQ(picked(), Texts{"family"}) << "asked for after that";
    m_Workbench->open({write("late.fasta", ">g\nA\n>h\nAC\n")});
    click(object("m"));
    finish();
    EXPECT_EQ(picked(), Texts{"m"});
}

TEST_F(OpenedPick, FilesOfTheCallAreInTheWindowThatComesLater)
{
    m_Workbench->openAtStart({sequences().toStdString()});
    finish();
    EXPECT_EQ(m_Workbench->shownWindow(), nullptr);
    EXPECT_EQ(picked(), (Texts{"a", "b"}));
}

TEST_F(OpenedPick, FilesThatAreHandedOverAreToo)
{
    open({sequences()});
    m_Workbench->openHandedOver({model()});
    finish();
    EXPECT_EQ(picked(), Texts{"m"});
}

TEST_F(OpenedPick, NothingIsSelectedOfTheObjectsUntilTheUserPicksThem)
{
    show();
    open({model(), family()});
    EXPECT_FALSE(object("m").IsSelected());
    EXPECT_FALSE(object("family").IsSelected());
    // It is picked already.
    click(object("m"));
    EXPECT_EQ(picked(), Texts{"m"});
    EXPECT_TRUE(object("m").IsSelected());
    EXPECT_FALSE(object("family").IsSelected());
}

TEST_F(OpenedPick, AClickOnTheOnlyOneSelectsIt)
{
    show();
    open({model()});
    click(object("m"));
    EXPECT_TRUE(object("m").IsSelected());
}

TEST_F(OpenedPick, WhatTheUserAddsOneToIsSelectedWithIt)
{
    show();
    open({sequences()});
    open({model()});
    click(object("a"), Qt::ControlModifier);
    EXPECT_EQ(picked(), (Texts{"m", "a"}));
    EXPECT_TRUE(object("m").IsSelected());
    EXPECT_TRUE(object("a").IsSelected());
    EXPECT_FALSE(object("b").IsSelected());
}

TEST_F(OpenedPick, WhatWasSelectedInAnEditorStaysSoWhenTheUserPicksSomethingElse)
{
    show();
    open({sequences()});
    open({model()});
    auto &structure = dynamic_cast<Structure &>(object("m"));
    {
        const DataPoint<Compound> guard(nullptr, structure.chain(0));
        structure.chain(0)->setSelected(1, true);
    }
    click(object("a"));
    EXPECT_TRUE(structure.chain(0)->isSelected(1));
    EXPECT_FALSE(structure.chain(0)->isSelected(0));
}

TEST_F(OpenedPick, TheFocusStaysWhereItIs)
{
    QLineEdit editor;
    show();
    editor.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
    editor.activateWindow();
    editor.setFocus();
    waitUntil([&] { return editor.hasFocus(); });
    open({model()});
    EXPECT_EQ(picked(), Texts{"m"});
    EXPECT_TRUE(editor.hasFocus());
    EXPECT_TRUE(editor.isActiveWindow());
}

TEST_F(OpenedPick, ThousandsOfSequencesArePickedAndStayFolded)
{
    show();
    QByteArray text;
    for (int i = 0; i < 3000; ++i)
        text += ">s" + QByteArray::number(i) + '\n' + QByteArray(i % 7 + 1, 'A') + '\n';
    open({model(), write("many.fasta", text)});
    EXPECT_EQ(picked().size(), 3001U);
    EXPECT_EQ(tree().selectionModel()->selection().size(), 2) << "in ranges";
    EXPECT_FALSE(tree().isExpanded(m_Workbench->window().objects().sequencesIndex()));
}

TEST_F(OpenedPick, TheDialogForAnAlignmentTicksThemAndEnterTakesThem)
{
    open({model(), sequences(), family(), write("lone.fasta", ">lone\nACDE\n")});
    EXPECT_EQ(picked().size(), 5U);
    Compounds offered;
    GetPeptides(Space::instance(), offered, true);
    Compounds chosen;
    SelectObject dialog(offered, chosen, nullptr, "sequences");
    answering<SelectObject>([](SelectObject &asking) {
        EXPECT_NE(asking.focusWidget(), nullptr);
        QTest::keyClick(asking.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(dialog.exec(), QDialog::Accepted);
    Texts names;
    for (const Compound *const object : chosen)
        names.push_back(object->Name());
    EXPECT_EQ(names, (Texts{"A", "a", "b", "lone"})) << "rows of an alignment are not meant";
}

} // namespace OpenedPickTest
