// SPDX-License-Identifier: GPL-3.0-or-later
// The console: what scripts write, a line to type into, and the button that stops them. Its parts
// are made when it is first seen.
#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

namespace TAMBO::app {

class ConsoleInput;
class ConsoleOutput;
class ScriptDesk;

class ConsolePanel : public QWidget
{
    Q_OBJECT

public:
    // desk outlives the panel.
    explicit ConsolePanel(ScriptDesk &desk, QWidget *parent = nullptr);
    ~ConsolePanel() override;

    void focusInput();

signals:
    // For the status line.
    void said(const QString &text);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void make();
    void showNews();
    void showState();
    void showPlace(const QString &file, int line, const QString &text);

    ScriptDesk &m_Desk;
    ConsoleOutput *m_Output = nullptr;
    QLabel *m_Prompt = nullptr;
    ConsoleInput *m_Input = nullptr;
    QToolButton *m_Stop = nullptr;
};

} // namespace TAMBO::app
