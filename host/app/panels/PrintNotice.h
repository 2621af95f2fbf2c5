// SPDX-License-Identifier: GPL-3.0-or-later
// Says in the status line where the last print went, with a button that opens it.
#pragma once

#include <QWidget>

namespace TAMBO::services {
class PrintoutDesk;
}

namespace TAMBO::app {

class PrintNotice : public QWidget
{
    Q_OBJECT

public:
    // Hidden until something is printed, and when the user has dismissed it. The desk outlives it.
    explicit PrintNotice(services::PrintoutDesk &desk, QWidget *parent = nullptr);

signals:
    // The system has not opened the file; cause names it.
    void failed(const QString &cause);

private:
    void openFile();

    QString m_Path;
};

} // namespace TAMBO::app
