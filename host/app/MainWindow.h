// SPDX-License-Identifier: GPL-3.0-or-later
// The window of the workbench: the tree of objects, the log, the history, and the menus.
#pragma once

#include "BaseWindow.h"
#include "Subscriber.h"

#include <vector>

class QAction;
class QDockWidget;
class QLabel;
class QMenu;
class QToolBar;

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

class ObjectTree;
class ObjectTreeModel;
class Workbench;

class MainWindow : public BaseWindow, private Subscriber
{
    Q_OBJECT

public:
    // The workbench outlives the window.
    explicit MainWindow(Workbench &workbench);
    ~MainWindow() override;

    [[nodiscard]] ObjectTree &tree() noexcept { return *m_Tree; }
    [[nodiscard]] ObjectTreeModel &objects() noexcept { return *m_Objects; }
    // In the status line for a while.
    void say(const QString &text);

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

    void makeTree();
    void makeDocks();
    void makeFileMenu();
    void makeEditMenu();
    void makeViewMenu();
    void makeToolsMenu();
    void makeHelpMenu();
    void makeToolBar();
    void makeStatusBar();

    QDockWidget *addDock(const QString &title, const char *name, QWidget *content);
    void fillRecentMenu();
    void askFiles();
    void exportPicked();
    void closePicked();
    void deletePicked();
    void enableActions();
    void countObjects();
    void about();
    void chooseFirstPlace();
    void restoreDocks();
    void rememberDocks() const;

    Workbench &m_Workbench;
    ObjectTreeModel *m_Objects = nullptr;
    ObjectTree *m_Tree = nullptr;
    QAction *m_Open = nullptr;
    QAction *m_Export = nullptr;
    QAction *m_Close = nullptr;
    QAction *m_Rename = nullptr;
    QAction *m_Delete = nullptr;
    QAction *m_Properties = nullptr;
    QMenu *m_Recent = nullptr;
    std::vector<QAction *> m_Tools;
    QDockWidget *m_LogDock = nullptr;
    QDockWidget *m_HistoryDock = nullptr;
    QLabel *m_Count = nullptr;
    bool m_IsPlaced = false;
};

} // namespace TAMBO::app
