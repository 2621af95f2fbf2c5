// SPDX-License-Identifier: GPL-3.0-or-later
// One run of an aligner, in a folder of its own, without a shell. Nothing of it stays behind.
#pragma once

#include "AlignerCommand.h"

#include <QObject>
#include <QProcess>
#include <QTemporaryDir>

#include <optional>
#include <string>

namespace TAMBO::realign {

class AlignerRun : public QObject
{
    Q_OBJECT

public:
    AlignerRun(AlignerCommand command, std::string fasta);
    // Ends the program and all that it has started.
    ~AlignerRun() override;

    // The program is looked for on the search path.
    void start();
    // The run ends with the given reason.
    void stop(const QString &reason);

    [[nodiscard]] bool isOver() const noexcept { return m_IsOver; }
    // What went wrong, as the end of a sentence that begins with the program's name; empty when it
    // ended well.
    [[nodiscard]] const QString &error() const noexcept { return m_Error; }
    [[nodiscard]] const QString &program() const noexcept { return m_Command.program; }
    // The alignment, when it ended well.
    [[nodiscard]] std::string answer() const;
    // The last line that it wrote to standard error.
    [[nodiscard]] const QString &lastLine() const noexcept { return m_LastLine; }

signals:
    void ended();
    void said(const QString &line);

private:
    [[nodiscard]] QString workFile(const char *name) const;
    void readAnswer();
    void readErrors();
    void finish(const QString &error);

    AlignerCommand m_Command;
    std::string m_Fasta;
    QTemporaryDir m_Folder;
    QProcess m_Process;
    QByteArray m_Answer;
    QString m_LastLine;
    QString m_Error;
    bool m_IsOver = false;
};

} // namespace TAMBO::realign
