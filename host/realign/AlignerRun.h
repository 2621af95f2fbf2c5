// SPDX-License-Identifier: GPL-3.0-or-later
// One run of an aligner, in a folder of its own, without a shell. Nothing of it stays behind.
#pragma once

#include "AlignerCommand.h"

#include <QObject>
#include <QProcess>
#include <QTemporaryDir>

#include <string>

namespace TAMBO::realign {

class AlignerRun : public QObject
{
    Q_OBJECT

public:
    // added: sequences that are to be added to those of fasta; without any there is no such file.
    AlignerRun(AlignerCommand command, std::string fasta, std::string added = {});
    // Ends the program and all that it has started.
    ~AlignerRun() override;

    // The program is looked for on the search path.
    void start();
    // The run ends with the given failure.
    void stop(const Failure &failure);

    [[nodiscard]] bool isOver() const noexcept { return m_IsOver; }
    // How it ended. The failure is the end of a sentence that begins with the program's name.
    [[nodiscard]] const Result<void> &outcome() const noexcept { return m_Outcome; }
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
    // Empty, or why it could not be written.
    [[nodiscard]] QString written(const char *name, const std::string &text) const;
    void readAnswer();
    void readErrors();
    void finish(const Result<void> &outcome);
    void fail(FailureKind kind, const QString &cause);

    AlignerCommand m_Command;
    std::string m_Fasta;
    std::string m_Added;
    QTemporaryDir m_Folder;
    QProcess m_Process;
    QByteArray m_Answer;
    QString m_LastLine;
    Result<void> m_Outcome;
    bool m_IsOver = false;
};

} // namespace TAMBO::realign
