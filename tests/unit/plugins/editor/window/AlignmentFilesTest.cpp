// SPDX-License-Identifier: GPL-3.0-or-later
// Saving and opening through the workbench.
#include "HostSpy.h"
#include "WindowFixture.h"

#include "PluginRoutes.h"
#include "WorkbenchCommands.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QTemporaryDir>

namespace AlignmentFilesTest {

using TAMBO::services::PluginRoutes;

class AlignmentFiles : public WindowFixture
{
protected:
    struct Saved
    {
        std::string caller;
        std::string text;
        QString path;
        TAMBO::Alignment *alignment;
    };

    AlignmentFiles()
    {
        PluginRoutes::instance().registerCommand(
            "Parse", "PIR", "SaveALI", [this](const PluginCall &call) {
                const auto *request = static_cast<TAMBO::SaveRequest *>(call.data);
                m_Saved.push_back({call.caller, call.text, request->path, request->alignment});
                return m_Succeeds;
            });
        PluginRoutes::instance().registerExecute("Data", "OpenFile", "open",
                                                 [this](const PluginCall &call) {
                                                     m_Opened.push_back(call.caller);
                                                     return true;
                                                 });
    }
    ~AlignmentFiles() override
    {
        HostSpy::onSync = nullptr;
        PluginRoutes::instance().removeCommand("Parse", "PIR", "SaveALI");
        PluginRoutes::instance().removeExecute("Data", "OpenFile", "open");
    }

    std::vector<Saved> m_Saved;
    std::vector<std::string> m_Opened;
    bool m_Succeeds = true;
};

TEST_F(AlignmentFiles, SavingHandsPathAndAlignmentToTheWorkbench)
{
    TAMBO::Alignment &other = alignment({"AC"});
    ZEP::KALMO2 &window = open();
    const MessageRecorder messages;
    window.Save("out", &other);
    ASSERT_EQ(m_Saved.size(), 1U);
    EXPECT_EQ(m_Saved[0].caller, "KALMO");
    EXPECT_EQ(m_Saved[0].text, "Save PIR");
    EXPECT_EQ(m_Saved[0].path, "out");
    EXPECT_EQ(m_Saved[0].alignment, &other);
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(AlignmentFiles, SavingNothingOrNowhereIsNoCall)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    ZEP::KALMO2 &window = open(shown);
    window.Save("x.ali", nullptr);
    window.Save("", &shown);
    window.Save(QString(), &shown);
    EXPECT_TRUE(m_Saved.empty());
}

TEST_F(AlignmentFiles, TheRequestBeginsWithThePath)
{
    TAMBO::SaveRequest request{"x.ali", nullptr};
    EXPECT_EQ(static_cast<void *>(&request.path), static_cast<void *>(&request));
    EXPECT_EQ(reinterpret_cast<char *>(&request.alignment) - reinterpret_cast<char *>(&request),
              std::ptrdiff_t(sizeof(QString)));
}

TEST_F(AlignmentFiles, SavingOverAFileAsksNothing)
{
    const QTemporaryDir directory;
    QFile old(directory.filePath("old.ali"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    TAMBO::Alignment &shown = alignment({"AC"});
    ZEP::KALMO2 &window = open(shown);
    const DialogDriver dialogs;
    window.Save(old.fileName(), &shown);
    window.Save(old.fileName(), &shown);
    EXPECT_EQ(m_Saved.size(), 2U);
    EXPECT_EQ(dialogs.titles(), QStringList());
}

TEST_F(AlignmentFiles, SavingNeedsNoGuardAndTellsNobody)
{
    TAMBO::Alignment &shown = alignment({"AC"});
    ZEP::KALMO2 &window = open(shown);
    lockAll();
    const RecordingSubscriber listener;
    window.Save("x.ali", &shown);
    EXPECT_EQ(m_Saved.size(), 1U);
    EXPECT_TRUE(listener.calls.empty());
    EXPECT_FALSE(history.canUndo());
}

TEST_F(AlignmentFiles, AFailedSaveIsTheWorkbenchsToReport)
{
    m_Succeeds = false;
    TAMBO::Alignment &shown = alignment({"AC"});
    ZEP::KALMO2 &window = open(shown);
    const DialogDriver dialogs;
    const MessageRecorder messages;
    window.Save("/nowhere/x.ali", &shown);
    EXPECT_EQ(m_Saved.size(), 1U);
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(AlignmentFiles, TheDialogSuggestsTheNameOfTheAlignment)
{
    for (const QString name : {"SeqAli", "x.ali"}) {
        ZEP::KALMO2 &window = open(alignment({"AC"}, name.toStdString()));
        DialogDriver dialogs;
        dialogs.expect([&](QDialog &dialog) {
            auto &files = dynamic_cast<QFileDialog &>(dialog);
            ASSERT_EQ(files.selectedFiles().size(), 1);
            EXPECT_EQ(QFileInfo(files.selectedFiles().front()).fileName(), name + ".ali");
            EXPECT_EQ(files.nameFilters(), QStringList{"*.ali"});
            EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptSave);
            EXPECT_FALSE(files.testOption(QFileDialog::DontResolveSymlinks));
            EXPECT_EQ(files.parentWidget(), &window);
            dialog.reject();
        });
        window.Save();
        EXPECT_TRUE(m_Saved.empty()) << "cancelled";
    }
}

TEST_F(AlignmentFiles, TheChosenNameIsSaved)
{
    const QTemporaryDir directory;
    TAMBO::Alignment &shown = alignment({"AC"});
    ZEP::KALMO2 &window = open(shown);
    const QString path = directory.filePath("t.ali");
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        dynamic_cast<QFileDialog &>(dialog).selectFile(path);
        dialog.accept();
    });
    const MessageRecorder messages;
    window.Save();
    ASSERT_EQ(m_Saved.size(), 1U);
    EXPECT_EQ(m_Saved[0].path, path);
    EXPECT_EQ(m_Saved[0].alignment, &shown);
    EXPECT_EQ(messages.messages(), QStringList());
}

TEST_F(AlignmentFiles, SavingWithoutAnAlignmentOpensNoDialog)
{
    DialogDriver dialogs;
    open().Save();
    EXPECT_EQ(dialogs.titles(), QStringList());
    EXPECT_TRUE(m_Saved.empty());
}

TEST_F(AlignmentFiles, OpeningLeavesTheDisplay)
{
    ZEP::KALMO2 &window = open(alignment({"AC"}, "shown"));
    const MessageRecorder messages;
    window.OpenFile();
    EXPECT_EQ(m_Opened, std::vector<std::string>{"SequenceEditor"});
    EXPECT_EQ(WindowParts(window).corner->text(), "shown");
    EXPECT_EQ(messages.messages(), QStringList());
}

// What waits for the screen is drawn before the user is kept waiting by a dialog or a file.
TEST_F(AlignmentFiles, TheMenuIsGoneFromTheScreenBeforeAFileIsAskedFor)
{
    QStringList order;
    HostSpy::onSync = [&] { order.append(QString("drawn, %1 opened").arg(m_Opened.size())); };
    ZEP::KALMO2 &window = open(alignment({"AC"}));
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        order.append("asked");
        dialog.reject();
    });
    window.Save();
    EXPECT_EQ(order, (QStringList{"drawn, 0 opened", "asked"}));
    window.OpenFile();
    EXPECT_EQ(order, (QStringList{"drawn, 0 opened", "asked", "drawn, 0 opened"}));
    EXPECT_EQ(m_Opened.size(), 1U);
    open().Save();
    EXPECT_EQ(order.size(), 4) << "also when there is nothing to save";
}

} // namespace AlignmentFilesTest
