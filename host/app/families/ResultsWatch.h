// SPDX-License-Identifier: GPL-3.0-or-later
// Tells what changes in a family's folder, about a second after it has. Looks in a thread of its
// own, so that a folder on a slow disk holds nobody up.
#pragma once

#include "ResultsLook.h"

#include <QObject>
#include <QThread>
#include <QTimer>

#include <filesystem>
#include <memory>

namespace TAMBO::app {

class ResultsWatch : public QObject
{
    Q_OBJECT

public:
    explicit ResultsWatch(const std::filesystem::path &folder, QObject *parent = nullptr);
    // Waits for the end of a look that is under way.
    ~ResultsWatch() override;

    // Without waiting for the second to pass.
    void lookNow();

signals:
    void found(const std::shared_ptr<const TAMBO::app::ResultsLook::News> &news);

private:
    void looked(const std::shared_ptr<const ResultsLook::News> &news);

    std::unique_ptr<ResultsLook> m_Look;
    QThread m_Thread;
    // Lives in the thread, for calls into it.
    QObject *m_Worker;
    QTimer m_Pause;
    bool m_IsLooking = false;
    bool m_IsAskedAgain = false;
};

} // namespace TAMBO::app
