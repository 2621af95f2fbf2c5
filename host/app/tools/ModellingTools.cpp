// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModellingTools.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace TAMBO::app {

namespace {

constexpr const char *kSwitch = "KESTRAM";
const QString kAdapter = QStringLiteral("kestram");
const QString kEngine = QStringLiteral("promod");

QString sentenceOf(const char *sentence)
{
    return QCoreApplication::translate("ModellingTools", sentence);
}

} // namespace

ModellingTools::ModellingTools(const QString &programFolder)
    : m_ProgramFolder(programFolder),
      m_IsOnSearchPath(!QStandardPaths::findExecutable(kAdapter).isEmpty()),
      m_IsBeside(!QStandardPaths::findExecutable(kAdapter, {programFolder}).isEmpty()),
      m_HasEngine(!QStandardPaths::findExecutable(kEngine).isEmpty())
{ }

void ModellingTools::offer() const
{
    if (m_IsBeside && !m_IsOnSearchPath) {
        QByteArray path = qgetenv("PATH");
        if (!path.isEmpty())
            path += QDir::listSeparator().toLatin1();
        qputenv("PATH", path + QFile::encodeName(m_ProgramFolder));
    }
    if (m_HasEngine && (m_IsBeside || m_IsOnSearchPath) && !qEnvironmentVariableIsSet(kSwitch))
        qputenv(kSwitch, "1");
}

bool ModellingTools::isPossible() const
{
    return !qEnvironmentVariableIsEmpty(kSwitch) && (m_IsBeside || m_IsOnSearchPath);
}

QString ModellingTools::stateText() const
{
    if (qEnvironmentVariableIsSet(kSwitch) && qEnvironmentVariableIsEmpty(kSwitch))
        return sentenceOf("Modelling is switched off: the environment variable KESTRAM is empty.");
    if (!m_IsBeside && !m_IsOnSearchPath)
        return sentenceOf(
            "Modelling is not possible: the program \"kestram\", a part of Tambo, was not "
            "found. Please install Tambo again.");
    if (!m_HasEngine)
        return sentenceOf(
            "Modelling is not possible: the modelling engine ProMod3 (program \"promod\") "
            "was not found. On Debian, install the package promod3 and start Tambo again.");
    if (!qEnvironmentVariableIsSet(kSwitch))
        return sentenceOf("Modelling will be possible when Tambo is started again.");
    return sentenceOf("Modelling is possible: ProMod3 was found.");
}

} // namespace TAMBO::app
