// SPDX-License-Identifier: GPL-3.0-or-later
// Writes pages into a file in small parts. The file takes its place when it is complete, and until
// then all is as it was.
#pragma once

#include "PageFormat.h"
#include "PageRun.h"

#include <QSaveFile>

#include <atomic>
#include <memory>
#include <optional>

namespace companion {

// Remembers that something of what was written did not reach the file, which forgets it with the
// next call.
class NotedDevice : public QIODevice
{
public:
    explicit NotedDevice(QIODevice &target) : m_Target(target) { }
    ~NotedDevice() override;

    [[nodiscard]] bool hasFailed() const noexcept { return m_HasFailed; }

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    QIODevice &m_Target;
    // A thread may write.
    std::atomic<bool> m_HasFailed = false;
};

class PageFileRun
{
public:
    // The format is that of the name's ending. Alignment and plan outlive this.
    PageFileRun(const TAMBO::Alignment &alignment, const PagePlan &plan, const QString &file,
                double dotsOfInch);
    // In a format whatever the name's ending is.
    PageFileRun(const TAMBO::Alignment &alignment, const PagePlan &plan, const QString &file,
                std::optional<PageFormat> format, double dotsOfInch);
    // Leaves nothing when it has not been done.
    ~PageFileRun();
    PageFileRun(const PageFileRun &) = delete;
    PageFileRun &operator=(const PageFileRun &) = delete;

    // Goes on for about that time; false when nothing is left to do, or something has gone wrong.
    bool goOn(std::chrono::microseconds most);
    [[nodiscard]] double done() const noexcept;
    // One sentence; empty when nothing has gone wrong.
    [[nodiscard]] const QString &error() const noexcept { return m_Error; }

private:
    [[nodiscard]] bool isWritten() const;
    [[nodiscard]] QString cause() const;
    void fail(const QString &cause);

    const TAMBO::Alignment &m_Alignment;
    unsigned long m_Revision;
    QSaveFile m_File;
    NotedDevice m_Device{m_File};
    std::unique_ptr<PageWriter> m_Writer;
    std::optional<PageRun> m_Run;
    bool m_IsDone = false;
    QString m_Error;
};

} // namespace companion
