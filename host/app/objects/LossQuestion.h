// SPDX-License-Identifier: GPL-3.0-or-later
// Tells what a file would lose of the object that is going to be saved into it, and asks whether it
// may.
#pragma once

#include <QMessageBox>
#include <QStringList>

class QPushButton;

namespace TAMBO::app {

class LossQuestion : public QMessageBox
{
    Q_OBJECT

public:
    enum class Answer { SaveAs, Save, Cancel };

    // losses: one sentence each.
    LossQuestion(const QString &name, const QString &file, const QStringList &losses,
                 QWidget *parent);
    ~LossQuestion() override;

    // Of a box that was executed.
    [[nodiscard]] Answer answer() const;

private:
    QPushButton *m_SaveAs = nullptr;
    QPushButton *m_Save = nullptr;
};

} // namespace TAMBO::app
