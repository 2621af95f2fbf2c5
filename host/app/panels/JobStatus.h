// SPDX-License-Identifier: GPL-3.0-or-later
// Says in the status line which job runs in the background, for how long, and what it said last, or
// which one has failed. A menu beside it cancels jobs.
#pragma once

#include <QStringList>
#include <QTimer>
#include <QWidget>

class QMenu;
class QToolButton;

namespace TAMBO::services {
class JobList;
} // namespace TAMBO::services

namespace TAMBO::app {

class JobStatus : public QWidget
{
    Q_OBJECT

public:
    // The list outlives the widget, which is hidden while no job runs and none has failed.
    explicit JobStatus(services::JobList &jobs, QWidget *parent = nullptr);
    ~JobStatus() override;

    // Whole, as it is before it is cut to the room there is.
    [[nodiscard]] const QString &text() const noexcept { return m_Text; }
    // "0:07", "12:30", "1:02:03".
    [[nodiscard]] static QString durationText(qint64 milliseconds);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    // The user wants to read about a failure again.
    void failureAsked(const QString &what, const QStringList &lastLines);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void refresh();
    void fillMenu();
    [[nodiscard]] QString describe() const;
    [[nodiscard]] QString describeAll() const;

    services::JobList &m_Jobs;
    QString m_Text;
    QTimer m_Clock;
    QToolButton *m_Button = nullptr;
    QMenu *m_Menu = nullptr;
};

} // namespace TAMBO::app
