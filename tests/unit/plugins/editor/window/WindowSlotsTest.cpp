// SPDX-License-Identifier: GPL-3.0-or-later
// The meta-object of the editor window: by it the workbench and its tool bars know the window.
#include "WindowFixture.h"

#include <QMetaEnum>
#include <QMetaMethod>

namespace WindowSlotsTest {

class WindowSlots : public WindowFixture
{
};

const std::vector<std::string> kSlots = {
    "AddSequences()",
    "GetSequences()",
    "GetAlignment()",
    "MergeAlignment()",
    "CombineAlignment()",
    "DeleteAlignment()",
    "Duplicate()",
    "AddGapColumn()",
    "RangeFull()",
    "RangeSelect()",
    "RangeRemove()",
    "RangeReNumber()",
    "RangeAddSSE()",
    "Clear()",
    "Save()",
    "Save(QString,TAMBO::Alignment*)",
    "printItBox()",
    "printItChar()",
    "printItBW()",
    "drawIt(QPainter*,PrintStyle)",
    "showHelp()",
    "about()",
    "kestram()",
    "modeller()",
    "malign()",
    "scroll(int,int)",
    "setColor(QColor*)",
    "ChangeFont()",
    "CreateNumbering()",
    "ButtonPressed(int,int,bool)",
    "Update()",
    "ReCreate()",
    "ReRange(ulong,ulong)",
    "RemoveRow(ulong)",
    "RemoveCol(ulong)",
    "InsertCol(ulong)",
    "setColor()",
    "colorConserved()",
    "colorConservedN()",
    "colorDistance()",
    "selectConservedN()",
    "selectSubSequence()",
    "readOutput()",
    "readOutputError()",
    "JobReady()",
    "RunKestram()",
};
constexpr std::size_t kPublicSlots = 29;

TEST_F(WindowSlots, StandInTheirFixedOrder)
{
    const QMetaObject &meta = ZEP::KALMO2::staticMetaObject;
    std::vector<std::string> found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        found.push_back(meta.method(i).methodSignature().toStdString());
    EXPECT_EQ(found, kSlots);
}

TEST_F(WindowSlots, TheFirst29ArePublicTheOthersPrivate)
{
    const QMetaObject &meta = ZEP::KALMO2::staticMetaObject;
    for (std::size_t i = 0; i < kSlots.size(); ++i) {
        const QMetaMethod method = meta.method(meta.methodOffset() + static_cast<int>(i));
        EXPECT_EQ(method.methodType(), QMetaMethod::Slot) << kSlots[i];
        EXPECT_EQ(method.access(), i < kPublicSlots ? QMetaMethod::Public : QMetaMethod::Private)
            << kSlots[i];
        EXPECT_STREQ(method.typeName(), "void") << kSlots[i];
    }
}

TEST_F(WindowSlots, HelpersAreNotSlots)
{
    const QMetaObject &meta = ZEP::KALMO2::staticMetaObject;
    for (const char *name : {"Populate(TAMBO::Compound*)", "ProcInit()", "CreateMenubar()",
                             "CreateToolbars()", "OpenFile()"})
        EXPECT_EQ(meta.indexOfMethod(name), -1) << name;
}

TEST_F(WindowSlots, CastsByClassName)
{
    ZEP::KALMO2 &window = open();
    EXPECT_EQ(window.qt_metacast("ZEP::KALMO2"), &window);
    EXPECT_EQ(window.qt_metacast("Subscriber"), static_cast<Subscriber *>(&window));
    EXPECT_EQ(window.qt_metacast("BaseWindow"), static_cast<BaseWindow *>(&window));
    EXPECT_EQ(window.qt_metacast("QMainWindow"), static_cast<QMainWindow *>(&window));
    EXPECT_EQ(window.qt_metacast("Nobody"), nullptr);
}

TEST_F(WindowSlots, ThePrintStylesHaveTheirNumbers)
{
    EXPECT_EQ(ZEP::KALMO2::Slim, 1);
    EXPECT_EQ(ZEP::KALMO2::Fat, 2);
    EXPECT_EQ(ZEP::KALMO2::BlackAndWhite, 3);
}

TEST_F(WindowSlots, MergeIsDisabled)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    for (ZEP::KALMO2 *window : {&open(), &open(shown)}) {
        const ExpectMessage disabled(QtDebugMsg, "Disabled");
        window->MergeAlignment();
    }
    EXPECT_EQ(rowsOf(shown), Texts{"AC"});
}

TEST_F(WindowSlots, ModellerSaysNotYet)
{
    const ExpectMessage notYet(QtDebugMsg, "Not yet");
    open().modeller();
}

TEST_F(WindowSlots, CommandsWithoutAnAlignmentAreSilent)
{
    ZEP::KALMO2 &window = open();
    DialogDriver dialogs;
    const MessageRecorder messages;
    const LogLines log;
    for (const char *slot : {"AddSequences",
                             "CombineAlignment",
                             "Duplicate",
                             "AddGapColumn",
                             "RangeFull",
                             "RangeSelect",
                             "RangeRemove",
                             "RangeReNumber",
                             "RangeAddSSE",
                             "Clear",
                             "Save",
                             "printItBox",
                             "printItChar",
                             "printItBW",
                             "kestram",
                             "malign",
                             "setColor",
                             "colorConserved",
                             "colorConservedN",
                             "colorDistance",
                             "selectConservedN",
                             "selectSubSequence",
                             "CreateNumbering",
                             "Update",
                             "ReCreate"})
        call(window, slot);
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_EQ(log.texts(), QStringList());
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_TRUE(isEmpty(window));
}

} // namespace WindowSlotsTest
