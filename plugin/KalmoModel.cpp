// SPDX-License-Identifier: GPL-3.0-or-later
// The modelling job's process, and the realignment of a column range by the workbench.
#include "Check.h"
#include "Config.h"
#include "KALMO2.h"
#include "Logger.h"
#include "PluginManager.h"

#include <QFile>
#include <QProcess>

namespace ZEP {

void KALMO2::ProcInit()
{
    m_Process = new QProcess(this);
    TAMBO_CHECK_PTR(m_Process, "KalmoModel", 53);
    m_Process->setStandardInputFile(QProcess::nullDevice());
    m_Process->setWorkingDirectory(
        QFile::decodeName(QByteArray::fromStdString(Config::GetPersonalTmpDir())));
    connect(m_Process, &QProcess::readyReadStandardOutput, this, &KALMO2::readOutput);
    connect(m_Process, &QProcess::readyReadStandardError, this, &KALMO2::readOutputError);
    connect(m_Process, &QProcess::finished, this, &KALMO2::JobReady);
}

// What follows a zero byte is dropped, in both texts.
void KALMO2::readOutput()
{
    m_Output += QString::fromLatin1(m_Process->readAllStandardOutput().constData());
}

void KALMO2::readOutputError()
{
    m_Errors += QString::fromLatin1(m_Process->readAllStandardError().constData());
}

void KALMO2::kestram()
{
    if (qEnvironmentVariableIsEmpty("KESTRAM") || m_Data == nullptr || m_Data->height() < 2)
        return;
    Logger::Write("Model Kestram is not available yet.");
}

void KALMO2::RunKestram()
{
    Logger::Write("Running a modelling job is not available yet.");
}

void KALMO2::JobReady()
{
    Logger::Write("Reading a model back is not available yet.");
}

void KALMO2::modeller()
{
    qDebug("Not yet");
}

void KALMO2::malign()
{
    if (m_Data == nullptr || m_Data->height() < 2)
        return;
    const auto [begin, end] = m_Data->range();
    if (begin + 1 >= end) {
        qDebug("Too short range");
        return;
    }
    qDebug("Aligning columns [%ld,%ld)", static_cast<long>(begin), static_cast<long>(end));
    PluginManager::Execute("Calculate", "Alignment", "KALMO", "Malign",
                           static_cast<void *>(m_Data));
    Populate(m_Data);
}

} // namespace ZEP
