// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignerWait.h"

#include "AlignerRun.h"
#include "Alignment.h"
#include "ObjectSpace.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QLabel>
#include <QProgressDialog>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace TAMBO::app {

namespace {

using realign::AlignerRun;
using namespace std::chrono_literals;

// Short runs come and go without a dialog.
constexpr auto kSilence = 300ms;
// Nobody is there to cancel.
constexpr auto kLongestAlone = 10min;
constexpr int kLongestSaid = 80;

QString aligning(const char *sentence)
{
    return QCoreApplication::translate("AlignerWait", sentence);
}

void waitAlone(AlignerRun &aligner)
{
    QEventLoop loop;
    QTimer::singleShot(kLongestAlone, &loop, [&aligner] {
        aligner.stop({FailureKind::System, aligning("did not come to an end").toStdString()});
    });
    QObject::connect(&aligner, &AlignerRun::ended, &loop, &QEventLoop::quit);
    aligner.start();
    if (!aligner.isOver())
        loop.exec();
}

void waitWithUser(AlignerRun &aligner, const AlignerUser &user)
{
    QEventLoop loop;
    QObject::connect(&aligner, &AlignerRun::ended, &loop, &QEventLoop::quit);
    aligner.start();
    if (aligner.isOver())
        return;
    // Windows repaint, but nobody can edit before the dialog is there to keep them from it.
    QTimer::singleShot(kSilence, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (aligner.isOver())
        return;
    QProgressDialog progress(QString(), aligning("Cancel"), 0, 0, user.parent);
    auto *label = new QLabel(user.text);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    progress.setLabel(label);
    progress.setWindowTitle(user.title);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(0);
    QObject::connect(&aligner, &AlignerRun::said, &progress, [&](const QString &line) {
        progress.setLabelText(user.text + '\n' + line.left(kLongestSaid));
    });
    QObject::connect(&progress, &QProgressDialog::canceled, &aligner, [&aligner] {
        aligner.stop({FailureKind::Cancelled, {}});
    });
    progress.show();
    if (!aligner.isOver())
        loop.exec();
}

} // namespace

void waitForAligner(AlignerRun &aligner, const std::optional<AlignerUser> &user)
{
    if (user)
        waitWithUser(aligner, *user);
    else
        waitAlone(aligner);
}

bool isStillThere(const Alignment &alignment)
{
    auto &space = ObjectSpace::get();
    return std::find(space.begin(), space.end(), &alignment) != space.end();
}

} // namespace TAMBO::app
