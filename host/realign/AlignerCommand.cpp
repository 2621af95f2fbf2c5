// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignerCommand.h"

#include <QProcess>

namespace TAMBO::realign {

namespace {

const QString kInput = QStringLiteral("{input}");
const QString kOutput = QStringLiteral("{output}");
const QString kAdded = QStringLiteral("{added}");

} // namespace

QStringList AlignerCommand::argumentsFor(const QString &input, const QString &output,
                                         const QString &added) const
{
    QStringList result = arguments;
    result.replaceInStrings(kInput, input);
    result.replaceInStrings(kOutput, output);
    result.replaceInStrings(kAdded, added);
    return result;
}

Result<AlignerCommand> parseAlignerCommand(const QString &line)
{
    QStringList words = QProcess::splitCommand(line);
    if (words.isEmpty())
        return Failure{FailureKind::BadInput, "the command of the aligner is empty"};
    AlignerCommand command;
    command.program = words.takeFirst();
    command.arguments = words;
    command.printsAnswer = words.filter(kOutput).isEmpty();
    if (words.filter(kInput).isEmpty())
        return Failure{FailureKind::BadInput, "the command of the aligner, \"" +
                                                  line.toStdString() + "\", has no {input}"};
    return command;
}

} // namespace TAMBO::realign
