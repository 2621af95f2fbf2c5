// SPDX-License-Identifier: GPL-3.0-or-later
// The modelling job's process, and the realignment of a column range by the workbench.
#include "Check.h"
#include "Config.h"
#include "DataAdder.h"
#include "KALMO2.h"
#include "KestramProcess.h"
#include "LastWords.h"
#include "Logger.h"
#include "MessageBox.h"
#include "PluginManager.h"
#include "Space.h"
#include "WritePDB.h"

#include <QFile>
#include <QPointer>
#include <QTextStream>

#include <vector>

namespace ZEP {

namespace {

QString jobFile(const char *name)
{
    return QString::fromStdString(Config::GetPersonalTmpDir()) + '/' + name;
}

KestramProcess &kestramOf(QProcess *process)
{
    return static_cast<KestramProcess &>(*process);
}

// why: what is known of it without the program's last words.
void failJob(RunningJobs::Number job, const QString &why, const LastWords &words)
{
    QStringList reasons;
    for (const QString &reason : {why, words.reason}) {
        if (!reason.isEmpty())
            reasons << reason;
    }
    RunningJobs::Fail(job, QStringLiteral("No model was built: %1.").arg(reasons.join(": ")),
                      words.lines);
}

} // namespace

void KALMO2::ProcInit()
{
    m_Process = new KestramProcess(this);
    TAMBO_CHECK_PTR(m_Process, "KalmoModel", 53);
    m_Process->setStandardInputFile(QProcess::nullDevice());
    m_Process->setWorkingDirectory(QString::fromStdString(Config::GetPersonalTmpDir()));
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
    kestramOf(m_Process).noteErrors(m_Errors);
}

void KALMO2::kestram()
{
    if (qEnvironmentVariableIsEmpty("KESTRAM") || m_Data == nullptr || m_Data->height() < 2)
        return;
    std::vector<TAMBO::Compound *> atoms;
    TAMBO::GetAtoms(m_Data->GetSeq(0), atoms, true);
    if (atoms.empty()) {
        tell(nullptr, QMessageBox::Warning, QStringLiteral("Structure required"),
             QStringLiteral("First sequence (the structure template) must have coordinates."));
        return;
    }
    const QPointer<KALMO2> alive(this);
    TAMBO::Alignment *Current = m_Data;
    if (m_Data->height() > 2) {
        const DataAdder<TAMBO::Space> guard(this, TAMBO::Space::instance());
        if (guard.m_good) {
            Current = m_Data->duplicate(2);
            // NOLINTNEXTLINE(modernize-use-nullptr): the condition's text is part of the message.
            TAMBO_ASSERT(0 != Current, "KalmoModel", 127);
        }
    }
    // Whoever heard of the new alignment may have closed this window.
    if (!alive)
        return;
    Save(jobFile("seq.ali"), Current);
    writePDB(jobFile("str.pdb"), m_Data);
    RunKestram();
}

void KALMO2::RunKestram()
{
    if (m_Process->state() != QProcess::NotRunning) {
        qDebug("previous job still running.");
        return;
    }
    m_Output = QString();
    m_Errors = QString();
    m_Process->start(QStringLiteral("kestram"), {"seq.ali", "str.pdb"});
    // Only until the program has taken the place of its starter.
    if (!m_Process->waitForStarted(-1)) {
        qDebug("Start failed");
        tell(this, QMessageBox::Warning, QStringLiteral("Tambo"),
             QStringLiteral("Failed to start KESTRAM"));
        return;
    }
    kestramOf(m_Process).noteBegin(QStringLiteral("Kestram"));
}

void KALMO2::JobReady()
{
    readOutput();
    readOutputError();
    const RunningJobs::Number job = kestramOf(m_Process).takeJob();
    Logger::Write(m_Errors.toLatin1().constData());
    if (m_Process->exitStatus() != QProcess::NormalExit) {
        failJob(job, QStringLiteral("the program was killed or has crashed"), LastWords(m_Errors));
        qDebug("Failed");
        tell(this, QMessageBox::Warning, QStringLiteral("Tambo"),
             QStringLiteral("Failed to run KESTRAM"));
        return;
    }
    const QString path = jobFile("model.pdb");
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        QTextStream stream(&file);
        stream.setEncoding(QStringConverter::Latin1);
        stream << m_Output;
        stream.flush();
        file.close();
    }
    const QByteArray name = path.toLatin1();
    const LastWords words(m_Errors);
    const QString silence = m_Output.isEmpty()
                                ? QStringLiteral("the program printed nothing")
                                : QStringLiteral("what the program printed is no structure");
    const QPointer<KALMO2> alive(this);
    const PluginManager::Outcome outcome =
        PluginManager::Command("Parse", "PDB", "KALMO", "Read PDB stream", "ReadPDB",
                               static_cast<const void *>(name.constData()));
    // For the list of jobs alone: here the run is complete, whatever came of it.
    if (outcome == PluginManager::Outcome::Done)
        RunningJobs::End(job);
    else
        failJob(job, words.reason.isEmpty() ? silence : QString(), words);
    // Whoever heard of the new structure may have closed this window.
    if (!alive)
        return;
    tell(this, QMessageBox::Information, QStringLiteral("Tambo"),
         QStringLiteral("Run of Kestram complete."));
    qDebug("Done");
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
    const QPointer<KALMO2> alive(this);
    PluginManager::Execute("Calculate", "Alignment", "KALMO", "Malign",
                           static_cast<void *>(m_Data));
    // Whoever heard of the realignment may have closed this window.
    if (alive)
        Populate(m_Data);
}

} // namespace ZEP
