// SPDX-License-Identifier: GPL-3.0-or-later
#include "SlicedWork.h"

#include "Texts.h"

#include <QCoreApplication>
#include <QPointer>
#include <QProgressDialog>

namespace companion {

namespace {

constexpr int kAllOfIt = 100;

} // namespace

Pace &paceOfFinishing() noexcept
{
    static Pace pace;
    return pace;
}

bool finish(const SlicedWork &work, const QString &what, QWidget *over)
{
    const auto begin = std::chrono::steady_clock::now();
    // Gone when the widget goes, which a program that is ended does at any time.
    QPointer<QProgressDialog> progress;
    bool isDone = false;
    while (!(isDone = !work.goOn(paceOfFinishing().slice))) {
        if (progress == nullptr) {
            if (std::chrono::steady_clock::now() - begin < paceOfFinishing().withoutProgress)
                continue;
            progress = new QProgressDialog(what, tr("Cancel"), 0, kAllOfIt, over);
            progress->setWindowModality(Qt::ApplicationModal);
            progress->setAutoReset(false);
            progress->setMinimumDuration(0);
            progress->show();
        }
        progress->setValue(work.percent());
        QCoreApplication::processEvents();
        if (progress == nullptr)
            return false;
        if (progress->wasCanceled())
            break;
    }
    delete progress;
    return isDone;
}

} // namespace companion
