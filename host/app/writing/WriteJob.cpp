// SPDX-License-Identifier: GPL-3.0-or-later
#include "WriteJob.h"

#include "Config.h"
#include "FileWriter.h"
#include "Logger.h"
#include "WritableObject.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QSet>
#include <QThread>

#include <array>
#include <atomic>
#include <utility>

namespace TAMBO::app {

namespace {

// About how long the stages take, of all.
constexpr std::array<double, kWriteStages> kStageShares = {0.15, 0.25, 0.35, 0.2, 0.05};

constexpr const char *kFilesSection = "Files";
constexpr const char *kBackupsKey = "Backups";

// What is being written.
QSet<QString> &targetsUnderWay()
{
    static QSet<QString> targets;
    return targets;
}

// One spelling a file, whether it is there already or not.
QString targetOf(const QString &path)
{
    const QFileInfo file(path);
    const QString known = file.canonicalFilePath();
    return known.isEmpty()
               ? QFileInfo(file.absolutePath()).canonicalFilePath() + u'/' + file.fileName()
               : known;
}

} // namespace

double shareWritten(WriteStage stage, double done)
{
    double share = 0;
    for (std::size_t i = 0; i < std::size_t(stage); ++i)
        share += kStageShares[i];
    return share + done * kStageShares[std::size_t(stage)];
}

// What the thread works on, and keeps as long as it needs it.
struct WriteJob::Shared
{
    Shared(Write how, QString file) : write(std::move(how)), path(std::move(file)) { }

    Write write;
    QString path;
    WriteAids aids;
    Result<void> outcome;
    std::atomic<double> done = 0;
    std::atomic<bool> isCancelled = false;

    void run()
    {
        aids.step = [this](WriteStage stage, double part) {
            done = shareWritten(stage, part);
            return !isCancelled;
        };
        outcome = write(path, aids);
        aids.step = {};
    }
};

WriteJob::WriteJob(Write write, const QString &path)
    : m_Path(path),
      m_Target(targetOf(path)),
      m_Shared(std::make_shared<Shared>(std::move(write), path))
{ }

WriteJob::WriteJob(std::shared_ptr<const WritableObject> object, const QString &path,
                   const WriteOptions &options)
    : WriteJob(
          [object = std::move(object), options](const QString &file, WriteAids &aids) {
              return object->write(file, options, aids);
          },
          path)
{ }

WriteJob::~WriteJob()
{
    if (m_Thread == nullptr)
        return;
    cancel();
    m_Thread->wait();
    delete m_Thread;
    leave();
}

void WriteJob::expect(const FileState &state)
{
    m_Shared->aids.expected = state;
}

void WriteJob::start()
{
    if (targetsUnderWay().contains(m_Target)) {
        m_IsOver = true;
        m_Outcome = Failure{
            FailureKind::Refused,
            QCoreApplication::translate("WriteJob", "is being written just now").toStdString(),
            {QFileInfo(m_Path).fileName().toStdString()}};
        return;
    }
    targetsUnderWay().insert(m_Target);
    // Settings are the GUI thread's.
    m_Shared->aids.scratch = [folder = std::filesystem::path(Config::GetPersonalTmpDir())] {
        return folder;
    };
    m_Shared->aids.keepsBackups = Config::GetSetting(kFilesSection, kBackupsKey).ToBool();
    m_Thread = QThread::create([shared = m_Shared] { shared->run(); });
    connect(m_Thread, &QThread::finished, this, &WriteJob::finish);
    m_Thread->start();
}

void WriteJob::cancel()
{
    m_Shared->isCancelled = true;
}

bool WriteJob::wait(std::chrono::milliseconds most)
{
    if (m_Thread != nullptr && m_Thread->wait(QDeadlineTimer(most)))
        finish();
    return m_IsOver;
}

double WriteJob::done() const noexcept
{
    return m_Shared->done;
}

// The signal may come when it has been waited for already.
void WriteJob::finish()
{
    if (m_Thread == nullptr)
        return;
    m_Thread->wait();
    delete std::exchange(m_Thread, nullptr);
    leave();
    m_IsOver = true;
    m_Outcome = m_Shared->outcome;
    m_Written = m_Shared->aids.written;
    for (const std::string &remark : m_Shared->aids.remarks)
        Logger::Write(QString::fromStdString(remark), Logger::Severity::Warning);
    emit ended();
}

void WriteJob::leave()
{
    targetsUnderWay().remove(m_Target);
}

} // namespace TAMBO::app

#include "moc_WriteJob.cpp"
