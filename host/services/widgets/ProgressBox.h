// SPDX-License-Identifier: GPL-3.0-or-later
// A line of text, how far something is, and a button to stop it. It stays until whoever opened it
// takes it away.
#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace TAMBO::services {

class ProgressBox : public QDialog
{
    Q_OBJECT

public:
    // button: what stops it, or nothing for "Cancel".
    ProgressBox(const QString &title, const QString &button, QWidget *parent);
    ~ProgressBox() override;

    // Names in it are no markup.
    void setText(const QString &text);
    [[nodiscard]] QString text() const;
    // Of 1.
    void setDone(double share);
    [[nodiscard]] double fraction() const;
    // Otherwise there is no button, and closing it does nothing.
    void setStoppable(bool isStoppable);
    [[nodiscard]] bool isStoppable() const;

    // Escape, the button, and the frame.
    void reject() override;

signals:
    void stopped();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QLabel *m_Text = nullptr;
    QProgressBar *m_Bar = nullptr;
    QPushButton *m_Stop = nullptr;
};

} // namespace TAMBO::services
