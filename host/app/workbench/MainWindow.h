// SPDX-License-Identifier: GPL-3.0-or-later
// The window of the workbench: the tree of objects, the log, the history, and the menus. It shows
// what it is given, and says what the user asks for.
#pragma once

#include "BaseWindow.h"
#include "Compound.h"
#include "Subscriber.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class QAction;
class QDockWidget;
class QLabel;
class QMenu;
class QToolBar;

namespace TAMBO::services {
struct PluginRecord;
}

namespace TAMBO::app {

class CountedStatusBar;
class Loader;
class LogModel;
class ObjectCommands;
class ObjectReferences;
class ObjectTree;
class ObjectTreeModel;
class Plugins;
class RecentFiles;
class ScriptDesk;
class StartPage;
class UndoCommands;

class MainWindow : public BaseWindow, private Subscriber
{
    Q_OBJECT

public:
    // All of them outlive the window.
    struct Parts
    {
        Loader &loader;
        const Plugins &plugins;
        const ObjectCommands &commands;
        UndoCommands &undo;
        RecentFiles &recentFiles;
        LogModel &log;
        ScriptDesk &scripts;
    };

    explicit MainWindow(const Parts &parts);
    ~MainWindow() override;

    // Where the window comes up on the first screen.
    [[nodiscard]] static QRect firstPlace();

    [[nodiscard]] ObjectTree &tree() noexcept { return *m_Tree; }
    [[nodiscard]] std::vector<Compound *> pickedObjects() const;
    // As ObjectCommands::askExport(), and says what was written.
    void exportObjects(const std::vector<Compound *> &objects);
    [[nodiscard]] ObjectTreeModel &objects() noexcept { return *m_Objects; }
    // In the status line for a while.
    void say(const QString &text);
    // The same of an object that is locked, and no longer than it is.
    void sayOfLock(const QString &text, std::shared_ptr<const ObjectReferences> locked);
    // It may not be locked any more.
    void followLock();
    // There, as long as it holds; none when it is empty.
    void warn(const QString &text);
    // Asked before the window closes; it stays when the answer is no.
    void setMayClose(std::function<bool()> mayClose) { m_MayClose = std::move(mayClose); }

signals:
    void filesAsked();
    void exampleAsked();
    void openAsked(const QStringList &files);
    void pasteAsked();
    // What is picked.
    void saveAsked(const std::vector<TAMBO::Compound *> &objects);
    void saveAsAsked(const std::vector<TAMBO::Compound *> &objects);
    void saveSessionAsked();
    void saveSessionAsAsked();
    void closeAsked(const std::vector<TAMBO::Compound *> &objects);
    void editorAsked(TAMBO::Compound *object);
    void toolAsked(const TAMBO::services::PluginRecord &plugin);
    // Along the object, if it is an alignment; null when none is picked.
    void newAlignmentAsked();
    void superposeAsked(const TAMBO::Compound *object);
    // Models of a family: of the object, if it is an alignment; null when none is picked.
    void modelsAsked(const TAMBO::Compound *object);
    // What has come of them, in a folder.
    void modelResultsAsked();
    void quitAsked();
    void failed(const QString &headline, const QStringList &causes);
    void closed();

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
    void makeConsole();
    void makeFileMenu();
    void makeEditMenu();
    void makeViewMenu();
    void makeToolsMenu();
    void makeHelpMenu();
    void makeToolBar();
    void makeStatusBar();

    QDockWidget *addDock(const QString &title, const char *name, QWidget *content);
    void fillRecentMenu();
    void exportPicked();
    void closePicked();
    void deletePicked();
    void enableActions();
    void enableModels(bool hasAlignment);
    void countObjects();
    void offerStart();
    void chooseFirstPlace();
    void restoreDocks();
    void rememberDocks() const;

    Parts m_Parts;
    std::function<bool()> m_MayClose;
    // What was said last of an object that is locked; null when it holds no more.
    std::shared_ptr<const ObjectReferences> m_Locked;
    QString m_LockText;
    ObjectTreeModel *m_Objects = nullptr;
    ObjectTree *m_Tree = nullptr;
    // Null until it is needed.
    StartPage *m_Start = nullptr;
    QAction *m_Open = nullptr;
    QAction *m_Save = nullptr;
    QAction *m_SaveAs = nullptr;
    QAction *m_Export = nullptr;
    QAction *m_Close = nullptr;
    QAction *m_Rename = nullptr;
    QAction *m_Delete = nullptr;
    QAction *m_Properties = nullptr;
    QAction *m_Models = nullptr;
    QMenu *m_Recent = nullptr;
    std::vector<QAction *> m_Tools;
    QDockWidget *m_LogDock = nullptr;
    QDockWidget *m_HistoryDock = nullptr;
    QDockWidget *m_ConsoleDock = nullptr;
    CountedStatusBar *m_Status = nullptr;
    QLabel *m_Warning = nullptr;
    bool m_IsPlaced = false;
};

} // namespace TAMBO::app
