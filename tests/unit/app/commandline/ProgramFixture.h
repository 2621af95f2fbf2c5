// SPDX-License-Identifier: GPL-3.0-or-later
// The program as scripts call it: without a display, judged by its output and exit status.
#pragma once

#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gtest/gtest.h>

struct Finished
{
    int status = -1;
    QByteArray output;
    QByteArray errors;

    QList<QByteArray> lines() const { return linesOf(output); }
    QList<QByteArray> errorLines() const { return linesOf(errors); }

private:
    static QList<QByteArray> linesOf(const QByteArray &text)
    {
        QList<QByteArray> lines = text.split('\n');
        EXPECT_TRUE(lines.isEmpty() || lines.back().isEmpty());
        lines.removeLast();
        return lines;
    }
};

class ProgramFixture : public testing::Test
{
protected:
    Finished run(const QStringList &arguments)
    {
        return runProgram(QStringLiteral(BUILD_DIR "/bin/tambo"), arguments);
    }
    // A copy of it without what is installed beside it, but for the library that it is started
    // with; what was installed on the machine is never looked at.
    Finished runAlone(const QStringList &arguments)
    {
        const QString copy = m_Folder.filePath("bin/tambo");
        for (const QString file : {"bin/tambo", "lib/tambo/parts/libtambo-core.so"}) {
            const QString to = m_Folder.filePath(file);
            EXPECT_TRUE(QDir().mkpath(QFileInfo(to).path()));
            EXPECT_TRUE(QFile::exists(to) || QFile::copy(BUILD_DIR "/" + file, to));
        }
        return runProgram(copy, arguments);
    }
    Finished runProgram(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(name);
        environment.insert("TAMBO_USER_DIR", m_Folder.path());
        environment.insert("TAMBO_SHARE_DIR", BUILD_DIR "/share/tambo");
        environment.insert("TAMBO_SYSTEM_PLUGIN_DIRS", QString());
        environment.insert(m_Environment);
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(kPatienceMilliseconds));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), process.readAllStandardOutput(),
                process.readAllStandardError()};
    }
    static QString data(const QString &name) { return QStringLiteral(TEST_DATA_DIR "/") + name; }
    QString write(const QString &name, const QByteArray &text)
    {
        QFile file(m_Folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(text), text.size());
        return file.fileName();
    }
    static QByteArray read(const QString &name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    QTemporaryDir m_Folder;
    // Beside what is always set.
    QProcessEnvironment m_Environment;
};
