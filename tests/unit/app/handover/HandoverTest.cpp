// SPDX-License-Identifier: GPL-3.0-or-later
// What a new call of the program and the workbench that runs say to each other.
#include "HandedFiles.h"
#include "HandoverSocket.h"
#include "LocalSocket.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <unistd.h>

#include <future>
#include <optional>

namespace HandoverTest {

using TAMBO::app::HandedFiles;
using TAMBO::app::handOver;
using TAMBO::app::handoverSocket;
using TAMBO::app::handoverSockets;
using namespace std::chrono_literals;

class Handover : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_Folder.isValid()); }

    [[nodiscard]] QString folder() const { return m_Folder.path(); }

    void listen()
    {
        m_Workbench.emplace(folder());
        ASSERT_TRUE(m_Workbench->isListening());
        QObject::connect(&*m_Workbench, &HandedFiles::taken, &*m_Workbench,
                         [this](const QStringList &files) { m_Taken << files; });
    }

    // Of another process, which waits for the answer while this one goes on.
    bool call(const QStringList &files)
    {
        std::future<bool> caller = std::async(
            std::launch::async, [this, files] { return handOver(folder(), files, 60s); });
        waitUntil([&] { return caller.wait_for(0s) == std::future_status::ready; });
        return caller.get();
    }

    // Connected, as a caller that keeps to no rule.
    int connectRaw()
    {
        const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const auto address = TAMBO::app::localAddress(handoverSockets(folder()).value(0));
        EXPECT_TRUE(address);
        EXPECT_EQ(::connect(socket, reinterpret_cast<const sockaddr *>(&*address), sizeof *address),
                  0);
        return socket;
    }

    // Waits until the workbench has hung up.
    static void expectHungUp(int socket)
    {
        char byte = 0;
        waitUntil([&] {
            const ssize_t got = ::recv(socket, &byte, 1, MSG_DONTWAIT);
            return got == 0 || (got < 0 && errno != EAGAIN);
        });
        ::close(socket);
    }

    QTemporaryDir m_Folder;
    std::optional<HandedFiles> m_Workbench;
    QList<QStringList> m_Taken;
};

TEST_F(Handover, TheWorkbenchThatRunsTakesTheFilesInTheirOrder)
{
    listen();
    EXPECT_TRUE(call({"/data/b.ali", "/data/a.pdb"}));
    waitUntil([&] { return !m_Taken.isEmpty(); });
    EXPECT_EQ(m_Taken, QList<QStringList>({{"/data/b.ali", "/data/a.pdb"}}));
}

TEST_F(Handover, NamesAreMadeAbsoluteSinceTheWorkbenchStandsInAnotherFolder)
{
    listen();
    EXPECT_TRUE(call({"family.ali"}));
    waitUntil([&] { return !m_Taken.isEmpty(); });
    EXPECT_EQ(m_Taken.value(0), QStringList(QDir::current().absoluteFilePath("family.ali")));
}

TEST_F(Handover, NamesMayHaveAnySignThatTheSystemAllows)
{
    listen();
    const QStringList files = {QStringLiteral("/data/F\u00e4lle \"1\"\n2.ali"), "/data/-- x"};
    EXPECT_TRUE(call(files));
    waitUntil([&] { return !m_Taken.isEmpty(); });
    EXPECT_EQ(m_Taken.value(0), files);
}

TEST_F(Handover, SeveralCallsAreTakenOneAfterTheOther)
{
    listen();
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(call({QStringLiteral("/data/%1").arg(i)}));
    waitUntil([&] { return m_Taken.size() == 5; });
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(m_Taken.value(i), QStringList(QStringLiteral("/data/%1").arg(i)));
}

TEST_F(Handover, WithoutAWorkbenchNobodyTakesThem)
{
    EXPECT_FALSE(handOver(folder(), {"/data/a"}));
}

TEST_F(Handover, WhatADeadWorkbenchLeftBehindIsRemoved)
{
    // Bound, and closed without being removed, as by a kill.
    const QString path = handoverSocket(folder(), 1);
    const auto address = TAMBO::app::localAddress(path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr *>(&*address), sizeof *address), 0);
    ::close(socket);
    ASSERT_EQ(handoverSockets(folder()).size(), 1);
    EXPECT_FALSE(handOver(folder(), {"/data/a"}));
    EXPECT_TRUE(handoverSockets(folder()).isEmpty());
}

TEST_F(Handover, AWorkbenchThatEndsLeavesNothingBehind)
{
    listen();
    EXPECT_EQ(handoverSockets(folder()).size(), 1);
    m_Workbench.reset();
    EXPECT_TRUE(QDir(folder()).entryList(QDir::System | QDir::NoDotAndDotDot).isEmpty());
}

TEST_F(Handover, ABusyWorkbenchTakesNothingSinceTheCallOpensThemElsewhere)
{
    listen();
    // Its events are not looked at meanwhile.
    EXPECT_FALSE(handOver(folder(), {"/data/a"}, 20ms));
    EXPECT_TRUE(call({"/data/b"}));
    waitUntil([&] { return !m_Taken.isEmpty(); });
    EXPECT_EQ(m_Taken, QList<QStringList>({{"/data/b"}}));
}

TEST_F(Handover, OneOnAnotherScreenIsLeftAlone)
{
    const QByteArray display = qgetenv("DISPLAY");
    listen();
    qputenv("DISPLAY", ":77");
    EXPECT_TRUE(handoverSockets(folder()).isEmpty());
    EXPECT_FALSE(handOver(folder(), {"/data/a"}));
    if (display.isNull())
        qunsetenv("DISPLAY");
    else
        qputenv("DISPLAY", display);
}

TEST_F(Handover, WhoSaysNoRequestIsHungUpOn)
{
    listen();
    for (const QByteArray &words :
         {QByteArray("\0\0", 2), QByteArray("relative\0\0", 10), QByteArray(5, '\0')}) {
        const int socket = connectRaw();
        ASSERT_EQ(
            ::send(socket, words.constData(), static_cast<std::size_t>(words.size()), MSG_NOSIGNAL),
            words.size());
        expectHungUp(socket);
    }
    EXPECT_TRUE(m_Taken.isEmpty());
}

TEST_F(Handover, WhoGoesOnAndOnIsHungUpOn)
{
    listen();
    const int socket = connectRaw();
    std::future<void> caller = std::async(std::launch::async, [socket] {
        const QByteArray words(1 << 16, 'a');
        while (::send(socket, words.constData(), static_cast<std::size_t>(words.size()),
                      MSG_NOSIGNAL) > 0) {
        }
    });
    waitUntil([&] { return caller.wait_for(0s) == std::future_status::ready; });
    ::close(socket);
    EXPECT_TRUE(m_Taken.isEmpty());
}

TEST_F(Handover, WhoIsGoneBeforeItSaysGoHasOpenedThemItself)
{
    listen();
    const int socket = connectRaw();
    const QByteArray request("/data/a\0\0", 9);
    ASSERT_EQ(::send(socket, request.constData(), 9, MSG_NOSIGNAL), 9);
    char byte = 0;
    waitUntil([&] { return ::recv(socket, &byte, 1, MSG_DONTWAIT) == 1; });
    EXPECT_EQ(byte, TAMBO::app::kReady);
    ::close(socket);
    EXPECT_TRUE(call({"/data/b"}));
    waitUntil([&] { return !m_Taken.isEmpty(); });
    EXPECT_EQ(m_Taken, QList<QStringList>({{"/data/b"}}));
}

TEST_F(Handover, AFolderWhoseNameIsTooLongForASocketIsLeftAlone)
{
    const QString deep = folder() + u'/' + QString(100, u'x');
    ASSERT_TRUE(QDir().mkpath(deep));
    const HandedFiles workbench(deep);
    EXPECT_FALSE(workbench.isListening());
    EXPECT_FALSE(handOver(deep, {"/data/a"}));
}

} // namespace HandoverTest
