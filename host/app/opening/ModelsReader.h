// SPDX-License-Identifier: GPL-3.0-or-later
// Opens many models at once: reads their files in a thread of its own, then makes all their objects
// in one step of undo, each on its template and tied to its rows.
#pragma once

#include "Loader.h"
#include "ModelsJob.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <memory>
#include <vector>

class QThread;

namespace TAMBO::app {

// Used in the GUI thread.
class ModelsReader : public QObject
{
    Q_OBJECT

public:
    // Makes objects by the loader, which outlives the reader.
    explicit ModelsReader(Loader &loader, QObject *parent = nullptr);
    // Cancels what is under way.
    ~ModelsReader() override;

    // Returns at once; finished() tells the end. False when it is busy.
    bool open(std::vector<ModelFiles> models);
    // Nothing is loaded then.
    void cancel();
    [[nodiscard]] bool isBusy() const noexcept { return m_Thread != nullptr || m_IsArriving; }

signals:
    void started();
    void progressed(const QString &fileName, double fraction);
    void finished(const TAMBO::app::LoadReport &report);

private:
    void readingEnded(const std::shared_ptr<Result<ModelsOutcome>> &outcome);
    [[nodiscard]] LoadReport makeObjects(ModelsOutcome &outcome);

    Loader &m_Loader;
    QThread *m_Thread = nullptr;
    // Read, and waiting until objects may be made.
    bool m_IsArriving = false;
    std::shared_ptr<std::atomic<bool>> m_Cancelled;
};

} // namespace TAMBO::app
