// SPDX-License-Identifier: GPL-3.0-or-later
// Shows how far a file is written, and lets the user give up.
#pragma once

#include "ProgressBox.h"

#include <QPointer>
#include <QString>

namespace TAMBO::app {

class WriteJob;

class WriteProgress : public services::ProgressBox
{
    Q_OBJECT

public:
    // Beside the user's work.
    WriteProgress(WriteJob &job, const QString &title, QWidget *parent);
    ~WriteProgress() override;

    // Another one takes its place.
    void follow(WriteJob &job);
    // Gives up the writing.
    void reject() override;

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    QPointer<WriteJob> m_Job;
};

} // namespace TAMBO::app
