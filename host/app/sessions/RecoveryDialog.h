// SPDX-License-Identifier: GPL-3.0-or-later
// Asks what is to become of the work that workbenches have left behind which did not come to their
// end.
#pragma once

#include "SessionFolder.h"

#include <QDialog>

#include <vector>

class QPushButton;
class QTreeWidget;

namespace TAMBO::app {

class RecoveryDialog : public QDialog
{
    Q_OBJECT

public:
    enum class Answer { Later, Recover };

    // At least one.
    RecoveryDialog(std::vector<LeftSession> sessions, QWidget *parent);

    [[nodiscard]] Answer answer() const noexcept { return m_Answer; }
    // Which is to be recovered.
    [[nodiscard]] const LeftSession &chosen() const;

signals:
    // The program goes on to ask.
    void filesWanted(const LeftSession &session);

private:
    void makeList();
    void makeButtons();
    void discard();
    [[nodiscard]] std::size_t picked() const;

    std::vector<LeftSession> m_Sessions;
    Answer m_Answer = Answer::Later;
    QTreeWidget *m_List = nullptr;
};

} // namespace TAMBO::app
