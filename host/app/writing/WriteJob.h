// SPDX-License-Identifier: GPL-3.0-or-later
// Writes plain values as a file in a thread of its own. Used in the GUI thread; what was loaded may
// be edited, or go, meanwhile.
#pragma once

#include "FileState.h"
#include "Result.h"
#include "WriteOptions.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QThread;

namespace TAMBO {
struct WriteAids;
enum class WriteStage;
} // namespace TAMBO

namespace TAMBO::app {

class WritableObject;

// How much of all that writing a file takes is done, from 0 to 1, when so much of the stage is.
[[nodiscard]] double shareWritten(WriteStage stage, double done);

class WriteJob : public QObject
{
    Q_OBJECT

public:
    using Write = std::function<Result<void>(const QString &path, WriteAids &aids)>;
    // write shares nothing with the GUI thread.
    WriteJob(Write write, const QString &path);
    WriteJob(std::shared_ptr<const WritableObject> object, const QString &path,
             const WriteOptions &options);
    // Calls it off, and waits until the thread has taken notice.
    ~WriteJob() override;
    WriteJob(const WriteJob &) = delete;
    WriteJob &operator=(const WriteJob &) = delete;

    [[nodiscard]] const QString &path() const noexcept { return m_Path; }
    // Before it is started: the file that may be replaced, as it was last looked at.
    void expect(const FileState &state);
    // Once. It is over at once when another job is writing that file.
    void start();
    // The file stays as it is, unless it is being changed already.
    void cancel();
    // Without an event loop; whether it is over.
    bool wait(std::chrono::milliseconds most);

    [[nodiscard]] bool isOver() const noexcept { return m_IsOver; }
    // Of a job that is over. Its remarks are in the log.
    [[nodiscard]] const Result<void> &outcome() const noexcept { return m_Outcome; }
    // The new file, of a job that has written one; nothing for a pipe.
    [[nodiscard]] const std::optional<FileState> &written() const noexcept { return m_Written; }
    // How much of the work is done, from 0 to 1.
    [[nodiscard]] double done() const noexcept;

signals:
    // From the event loop or from wait().
    void ended();

private:
    struct Shared;

    void finish();
    void leave();

    QString m_Path;
    // By which jobs know that they write the same file.
    QString m_Target;
    std::shared_ptr<Shared> m_Shared;
    QThread *m_Thread = nullptr;
    bool m_IsOver = false;
    Result<void> m_Outcome;
    std::optional<FileState> m_Written;
};

} // namespace TAMBO::app
