// SPDX-License-Identifier: GPL-3.0-or-later
#include "WriteWait.h"

#include "WriteJob.h"
#include "WriteProgress.h"

#include <QApplication>
#include <QEvent>
#include <QEventLoop>
#include <QPointer>
#include <QScopedValueRollback>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <memory>

namespace TAMBO::app {

namespace {

using namespace std::chrono_literals;

// Most files are written by then, and no event has been looked at.
constexpr auto kNoLoop = 30ms;
// Short writes come and go without a dialog.
constexpr auto kWritePatience = 300ms;

int s_Awaited = 0;

// A window that its frame's button closes would do so while no dialog is there to keep it.
class CloseFilter final : public QObject
{
public:
    CloseFilter() { qApp->installEventFilter(this); }

    [[nodiscard]] bool eventFilter(QObject *object, QEvent *event) override
    {
        const auto *const window = qobject_cast<QWindow *>(object);
        if (event->type() != QEvent::Close || window == nullptr || window->type() != Qt::Window)
            return false;
        event->ignore();
        return true;
    }
};

} // namespace

bool waitUnnoticed(WriteJob &job)
{
    if (job.isOver() || job.wait(kNoLoop))
        return true;
    const QScopedValueRollback<int> awaited(s_Awaited, s_Awaited + 1);
    const CloseFilter filter;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QEventLoop loop;
    QObject::connect(&job, &WriteJob::ended, &loop, &QEventLoop::quit);
    QTimer::singleShot(kWritePatience - kNoLoop, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    QApplication::restoreOverrideCursor();
    return job.isOver();
}

Result<void> waitToTheEnd(WriteJob &job, const QString &title, QWidget *window)
{
    if (waitUnnoticed(job))
        return job.outcome();
    const QScopedValueRollback<int> awaited(s_Awaited, s_Awaited + 1);
    // The window may go, and the dialog with it.
    const QPointer<WriteProgress> dialog(new WriteProgress(job, title, window));
    dialog->setWindowModality(Qt::ApplicationModal);
    QEventLoop loop;
    QObject::connect(&job, &WriteJob::ended, &loop, &QEventLoop::quit);
    dialog->show();
    loop.exec();
    delete dialog;
    // A program that ends leaves its loops at once.
    while (!job.wait(1s)) {
    }
    return job.outcome();
}

bool isWriteAwaited() noexcept
{
    return s_Awaited > 0;
}

} // namespace TAMBO::app
