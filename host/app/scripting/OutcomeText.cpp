// SPDX-License-Identifier: GPL-3.0-or-later
#include "OutcomeText.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace TAMBO::app {

namespace {

using scripting::ScriptOutcome;

QString trOutcome(const char *text)
{
    return QCoreApplication::translate("ScriptOutcome", text);
}

} // namespace

QString failureText(const ScriptOutcome &outcome, const QString &name)
{
    const QString message = QString::fromStdString(outcome.message).simplified();
    if (outcome.exitStatus != 0 && !name.isEmpty() &&
        (message.isEmpty() || message.startsWith(QLatin1String("SystemExit"))))
        return trOutcome("%1 ended with status %2.").arg(name).arg(outcome.exitStatus);
    const bool isInFile = !outcome.file.empty() && !outcome.file.starts_with('<');
    const QString file =
        isInFile ? QFileInfo(QString::fromStdString(outcome.file)).fileName() : name;
    if (outcome.line == 0)
        return file.isEmpty() ? message : QStringLiteral("%1: %2").arg(file, message);
    if (file.isEmpty())
        return trOutcome("Line %1: %2").arg(outcome.line).arg(message);
    return trOutcome("%1, line %2: %3").arg(file).arg(outcome.line).arg(message);
}

QString consequenceText(const ScriptOutcome &outcome, const QString &name)
{
    const bool isOne = outcome.steps == 1;
    if (outcome.end == ScriptOutcome::End::Done) {
        if (name.isEmpty())
            return {};
        if (outcome.steps == 0)
            return trOutcome("%1 is done; it has changed nothing.").arg(name);
        return isOne ? trOutcome("%1 is done: one step of undo.").arg(name)
                     : trOutcome("%1 is done: %2 steps of undo.").arg(name).arg(outcome.steps);
    }
    if (outcome.steps > 0 && outcome.hasTakenBack)
        return isOne ? trOutcome("One step that it had completed stays; what it did after that is "
                                 "taken back.")
                     : trOutcome("%1 steps that it had completed stay; what it did after these is "
                                 "taken back.")
                           .arg(outcome.steps);
    if (outcome.steps > 0)
        return isOne ? trOutcome("One step that it had completed stays.")
                     : trOutcome("%1 steps that it had completed stay.").arg(outcome.steps);
    if (outcome.hasTakenBack)
        return trOutcome("What it had changed is taken back.");
    if (name.isEmpty() && outcome.end == ScriptOutcome::End::Failed)
        return {};
    return trOutcome("It had changed nothing.");
}

} // namespace TAMBO::app
