// SPDX-License-Identifier: GPL-3.0-or-later
// The program on a Wayland screen that nobody sees.
#include "support/WaitUntil.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace WaylandTest {

class OnWayland : public testing::Test
{
protected:
    OnWayland()
    {
        m_Environment.insert("XDG_RUNTIME_DIR", m_Folder.path());
        m_Environment.insert("TAMBO_SYSTEM_PLUGIN_DIRS", QString());
        m_Environment.insert("TAMBO_USER_DIR", m_Folder.filePath("user"));
        for (const char *name : {"DISPLAY", "TAMBO_SHARE_DIR", "TAMBO_PLUGIN_DIR"})
            m_Environment.remove(name);
        m_Screen.setProcessEnvironment(m_Environment);
        m_Screen.setStandardErrorFile(m_Folder.filePath("screen.log"));
        m_Screen.setStandardOutputFile(m_Folder.filePath("screen.log"), QIODevice::Append);
        m_Screen.start("weston", {"--backend=headless-backend.so", "--no-config", "--socket=tambo",
                                  "--width=1600", "--height=1000", "--idle-time=0"});
        EXPECT_TRUE(waitUntil([this] {
            return QFile::exists(m_Folder.filePath("tambo")) ||
                   m_Screen.state() == QProcess::NotRunning;
        }));
        EXPECT_EQ(m_Screen.state(), QProcess::Running) << "no screen: " << read("screen.log");
        m_Environment.insert("WAYLAND_DISPLAY", "tambo");
        m_Environment.insert("QT_QPA_PLATFORM", "wayland");
        // All that is said to the screen, to standard error.
        m_Environment.insert("WAYLAND_DEBUG", "1");
        m_Program.setProcessEnvironment(m_Environment);
        m_Program.setStandardErrorFile(m_Folder.filePath("said"));
    }
    ~OnWayland() override
    {
        for (QProcess *process : {&m_Program, &m_Screen}) {
            process->kill();
            process->waitForFinished(kPatienceMilliseconds);
        }
    }

    [[nodiscard]] std::string read(const QString &name) const
    {
        QFile file(m_Folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }
    [[nodiscard]] bool hasSaid(const std::string &text) const
    {
        return read("said").find(text) != std::string::npos;
    }

    QTemporaryDir m_Folder;
    QProcessEnvironment m_Environment = QProcessEnvironment::systemEnvironment();
    QProcess m_Screen;
    QProcess m_Program;
};

TEST_F(OnWayland, EditorAndStructureViewComeUpAndTheProgramEndsInOrder)
{
    m_Program.start(BUILD_DIR "/bin/tambo",
                    {"--tool", "Structure View", SOURCE_DIR "/examples/serine_proteases.ali"});
    for (const char *const title : {"Tambo", "Alignment Editor", "Structure View"}) {
        const std::string said = std::string("set_title(\"") + title + "\")";
        ASSERT_TRUE(
            waitUntil([&] { return hasSaid(said) || m_Program.state() == QProcess::NotRunning; }));
        ASSERT_EQ(m_Program.state(), QProcess::Running) << read("said");
    }
    // A window is to be seen once it has a picture.
    ASSERT_TRUE(waitUntil([this] { return hasSaid("wl_surface") && hasSaid(".attach("); }));
    m_Program.terminate();
    ASSERT_TRUE(m_Program.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(m_Program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_Program.exitCode(), 0);
}

} // namespace WaylandTest
