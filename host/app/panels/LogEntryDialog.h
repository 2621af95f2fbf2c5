// SPDX-License-Identifier: GPL-3.0-or-later
// One entry of the log, all of it, to be read and copied.
#pragma once

#include <QDialog>

namespace TAMBO::app {

class LogEntryDialog : public QDialog
{
    Q_OBJECT

public:
    LogEntryDialog(const QString &title, const QString &text, QWidget *parent);
    ~LogEntryDialog() override;
};

} // namespace TAMBO::app
