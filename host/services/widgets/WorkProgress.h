// SPDX-License-Identifier: GPL-3.0-or-later
// Shows how far long work of the model is, which is done in the window's thread: nothing at first,
// then a dialog that keeps input from all other windows. They do not paint either, since the model
// is in the middle of something.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>

#include <functional>
#include <vector>

class QWidget;

namespace TAMBO::services {

class ProgressBox;

class WorkProgress
{
    Q_DECLARE_TR_FUNCTIONS(WorkProgress)

public:
    // Short work comes and goes without a dialog.
    static constexpr qint64 kPatience = 300;
    // So many milliseconds of work at least are between two looks at the events.
    static constexpr qint64 kBetweenLooks = 50;
    // In milliseconds, from any start.
    using Clock = std::function<qint64()>;
    using WindowInUse = std::function<QWidget *()>;

    // Follows the model's work until it goes. The dialog stands over the window in use.
    explicit WorkProgress(WindowInUse windowInUse);
    ~WorkProgress();
    WorkProgress(const WorkProgress &) = delete;
    WorkProgress &operator=(const WorkProgress &) = delete;

    // For tests, in which nothing takes long.
    void setClock(Clock clock) { m_Clock = std::move(clock); }
    // Whether work is being waited for; nothing is to be ended then.
    [[nodiscard]] bool isShown() const noexcept;

private:
    [[nodiscard]] bool goesOn(const char *what, double share, bool canBeGivenUp);
    void show(const char *what);
    void end();

    WindowInUse m_WindowInUse;
    Clock m_Clock;
    bool m_IsUnderWay = false;
    bool m_IsStopped = false;
    qint64 m_Begin = 0;
    qint64 m_LastLook = 0;
    QPointer<ProgressBox> m_Box;
    // That do not paint meanwhile.
    std::vector<QPointer<QWidget>> m_Frozen;
};

} // namespace TAMBO::services
