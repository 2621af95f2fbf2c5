// SPDX-License-Identifier: GPL-3.0-or-later
// Says in the status line which job runs in the background, for how long, and what it said last.
#pragma once

#include <QTimer>
#include <QWidget>

namespace TAMBO::services {
class JobList;
} // namespace TAMBO::services

namespace TAMBO::app {

class JobStatus : public QWidget
{
    Q_OBJECT

public:
    // The list outlives the widget, which is hidden while no job runs.
    explicit JobStatus(services::JobList &jobs, QWidget *parent = nullptr);
    ~JobStatus() override;

    // Whole, as it is before it is cut to the room there is.
    [[nodiscard]] const QString &text() const noexcept { return m_Text; }
    // "0:07", "12:30", "1:02:03".
    [[nodiscard]] static QString durationText(qint64 milliseconds);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void refresh();

    services::JobList &m_Jobs;
    QString m_Text;
    QTimer m_Clock;
};

} // namespace TAMBO::app
