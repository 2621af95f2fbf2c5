// SPDX-License-Identifier: GPL-3.0-or-later
// The program that builds what is missing in a family's folder. It stands in the list of running
// jobs, goes on when the window closes, and when the workbench ends without stopping it.
#pragma once

#include "Result.h"
#include "RunChoice.h"
#include "RunningJobs.h"

#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <QTimer>

#include <filesystem>

namespace TAMBO::app {

class RunningFamily : public QObject
{
    Q_OBJECT

public:
    // What the run says is kept there.
    static constexpr const char *kSaysFile = "run.log";

    // program: the workbench's own. family: as users call it.
    RunningFamily(QString program, std::filesystem::path folder, const QString &family,
                  QObject *parent = nullptr);
    // The program goes on.
    ~RunningFamily() override;

    // Refused when it runs.
    [[nodiscard]] Result<void> start(const RunOrder &order);
    // Asks it to end.
    void stop();
    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] bool isStopping() const noexcept { return m_IsStopping; }
    [[nodiscard]] const std::filesystem::path &folder() const noexcept { return m_Folder; }

signals:
    void changed();

private:
    void ended();
    // The last lines of what it has said.
    [[nodiscard]] QStringList lastLines() const;

    QString m_Program;
    std::filesystem::path m_Folder;
    QString m_Family;
    QPointer<QProcess> m_Process;
    RunningJobs::Number m_Job = 0;
    bool m_IsStopping = false;
    QTimer m_Listen;
};

} // namespace TAMBO::app
