// SPDX-License-Identifier: GPL-3.0-or-later
// What the workbench offers while nothing is open: files, the example, the last files.
#pragma once

#include <QStringList>
#include <QWidget>

class QVBoxLayout;

namespace TAMBO::app {

class RecentFiles;

// Lies over the widget that is empty, and takes its size. Files dropped on it go on to the window.
class StartPage : public QWidget
{
    Q_OBJECT

public:
    // recent outlives this.
    StartPage(const RecentFiles &recent, QWidget &over);
    ~StartPage() override;

signals:
    void openAsked();
    void exampleAsked();
    void tourAsked();
    void helpAsked();
    void fileAsked(const QString &file);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fillRecent();

    const RecentFiles &m_RecentFiles;
    QVBoxLayout *m_List;
};

} // namespace TAMBO::app
