// SPDX-License-Identifier: GPL-3.0-or-later
// Shows how far a file is written, and lets the user give up.
#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>

class QLabel;
class QProgressBar;

namespace TAMBO::app {

class WriteJob;

class WriteProgress : public QDialog
{
    Q_OBJECT

public:
    // Beside the user's work.
    WriteProgress(WriteJob &job, const QString &title, QWidget *parent);
    ~WriteProgress() override;

    // Gives up the writing.
    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QPointer<WriteJob> m_Job;
    QLabel *m_Text = nullptr;
    QProgressBar *m_Bar = nullptr;
};

} // namespace TAMBO::app
