// SPDX-License-Identifier: GPL-3.0-or-later
// The file dialog for scripts, with a line for their arguments; begins where the last one ended.
#pragma once

#include "RecentScripts.h"

#include <QFileDialog>

#include <optional>

class QLineEdit;

namespace TAMBO::app {

class RunScriptDialog : public QFileDialog
{
    Q_OBJECT

public:
    // recent outlives this.
    explicit RunScriptDialog(const RecentScripts &recent, QWidget *parent = nullptr);

    [[nodiscard]] RecentScripts::Script script() const;

private:
    // Those that the script had last, unless the user has typed others.
    void offerArguments(const QString &file);

    const RecentScripts &m_Recent;
    QLineEdit *m_Arguments;
};

// Nothing when cancelled.
[[nodiscard]] std::optional<RecentScripts::Script> askForScript(const RecentScripts &recent,
                                                                QWidget *parent);

} // namespace TAMBO::app
