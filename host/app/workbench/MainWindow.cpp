// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindow.h"

#include "ChangeScope.h"
#include "Config.h"
#include "ConfigStore.h"
#include "ConsolePanel.h"
#include "CountedStatusBar.h"
#include "Directories.h"
#include "FamilyDesk.h"
#include "FirstPlaces.h"
#include "ForeignData.h"
#include "HelpTexts.h"
#include "HelpViewer.h"
#include "HistoryPanel.h"
#include "JobList.h"
#include "JobStatus.h"
#include "LoadProgress.h"
#include "Loader.h"
#include "LogModel.h"
#include "LogPanel.h"
#include "ModellingTools.h"
#include "ObjectCommands.h"
#include "ObjectReferences.h"
#include "ObjectTree.h"
#include "ObjectTreeModel.h"
#include "PickedSaving.h"
#include "PlainText.h"
#include "Plugins.h"
#include "PluginsDialog.h"
#include "PrintNotice.h"
#include "PrintoutDesk.h"
#include "RecentFiles.h"
#include "ScriptDesk.h"
#include "ScriptMenu.h"
#include "Space.h"
#include "StartPage.h"
#include "UndoActions.h"
#include "UndoCommands.h"
#include "WindowPlaces.h"
#include "WorkbenchMenus.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QToolBar>

namespace TAMBO::app {

namespace {

using services::ConfigStore;
using services::UndoActions;

constexpr const char *kPlaceKey = "Workbench";
constexpr int kSayMilliseconds = 8000;
constexpr const char *kTourPage = "tour.html";

// Beside the places of windows, which are no settings either.
ConfigStore dockStore()
{
    return {QString(), services::Directories::data() + QStringLiteral("/windows.ini")};
}

QIcon icon(const char *name)
{
    return QIcon(QStringLiteral("%1/%2.svg")
                     .arg(QString::fromStdString(Config::GetIconDir()), QString::fromLatin1(name)));
}

// The color of selected residues, thinned so that names stay the loudest thing in the tree.
QColor tint()
{
    const QColor color(
        QString::fromStdString(Config::GetSetting("General", "SelectionColor").ToString()));
    const QColor full = color.isValid() ? color : QColor(Qt::yellow);
    const auto thin = [](int part) { return (part + 2 * 255) / 3; };
    return {thin(full.red()), thin(full.green()), thin(full.blue())};
}

// "&" in a menu text marks the next letter.
QString menuText(QString text)
{
    return text.replace(u'&', QStringLiteral("&&"));
}

} // namespace

MainWindow::MainWindow(const Parts &parts)
    : BaseWindow(tr("Tambo"), QSize(640, 860), QString::fromLatin1(kPlaceKey), false, nullptr,
                 "MainWindow"),
      m_Parts(parts)
{
    setWindowIcon(QApplication::windowIcon());
    setAcceptDrops(true);
    makeTree();
    makeDocks();
    makeFileMenu();
    makeEditMenu();
    makeViewMenu();
    makeToolsMenu();
    makeHelpMenu();
    makeToolBar();
    makeStatusBar();
    new LoadProgress(parts.loader, this);
    connect(&parts.loader, &Loader::started, this, &MainWindow::offerStart);
    connect(&parts.loader, &Loader::finished, this, &MainWindow::offerStart);
    enableActions();
    countObjects();
    restoreDocks();
}

MainWindow::~MainWindow() = default;

// ---- What the window is made of

void MainWindow::makeTree()
{
    m_Objects = new ObjectTreeModel(*Space::instance(), this);
    m_Objects->setSelectionColor(tint());
    m_Tree = new ObjectTree(*m_Objects);
    setCentralWidget(m_Tree);
    connect(m_Tree, &ObjectTree::picked, this, &MainWindow::enableActions);
    connect(m_Tree, &ObjectTree::opened, this, &MainWindow::editorAsked);
    connect(m_Tree, &ObjectTree::menuAsked, this, [this](const std::vector<Compound *> &objects) {
        m_Parts.commands.popUpMenu(objects);
    });
    connect(m_Objects, &ObjectTreeModel::renameAsked, this,
            [](Compound *object, const QString &name) { ObjectCommands::rename(*object, name); });
}

QDockWidget *MainWindow::addDock(const QString &title, const char *name, QWidget *content)
{
    auto *dock = new QDockWidget(title, this);
    dock->setObjectName(QString::fromLatin1(name));
    dock->setWidget(content);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    return dock;
}

void MainWindow::makeDocks()
{
    m_LogDock = addDock(tr("Log"), "LogDock", new LogPanel(m_Parts.log));
    m_HistoryDock = addDock(tr("History"), "HistoryDock", new HistoryPanel(m_Parts.undo));
    tabifyDockWidget(m_LogDock, m_HistoryDock);
    makeConsole();
    m_LogDock->raise();
    setTabPosition(Qt::BottomDockWidgetArea, QTabWidget::North);
    resizeDocks({m_LogDock}, {260}, Qt::Vertical);
}

// Not to be seen before somebody wants it.
void MainWindow::makeConsole()
{
    auto *panel = new ConsolePanel(m_Parts.scripts);
    m_ConsoleDock = addDock(tr("Console"), "ConsoleDock", panel);
    tabifyDockWidget(m_HistoryDock, m_ConsoleDock);
    m_ConsoleDock->hide();
    const auto raise = [this, panel] {
        m_ConsoleDock->show();
        m_ConsoleDock->raise();
        panel->focusInput();
    };
    m_ConsoleDock->toggleViewAction()->setText(tr("&Console"));
    connect(m_ConsoleDock->toggleViewAction(), &QAction::triggered, this, [raise](bool isShown) {
        if (isShown)
            raise();
    });
    connect(&m_Parts.scripts, &ScriptDesk::consoleAsked, this, raise);
    connect(panel, &ConsolePanel::said, this, &MainWindow::say);
}

void MainWindow::makeFileMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&File"));
    m_Open = menu->addAction(icon("open"), tr("&Open…"), QKeySequence::Open, this,
                             &MainWindow::filesAsked);
    m_Open->setToolTip(tr("Open structures, alignments, sequences or a session"));
    m_Recent = menu->addMenu(tr("Open &Recent"));
    connect(m_Recent, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
    menu->addAction(tr("&New Alignment…"), QKeySequence(Qt::CTRL | Qt::Key_N), this,
                    &MainWindow::newAlignmentAsked)
        ->setToolTip(tr("Make an alignment of loaded sequences, and show it in the editor"));
    menu->addSeparator();
    m_Save = menu->addAction(icon("save"), tr("&Save"), QKeySequence(Qt::CTRL | Qt::Key_S), this,
                             [this] { emit saveAsked(m_Tree->pickedObjects()); });
    m_SaveAs = menu->addAction(tr("Save &As…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
                               this, [this] { emit saveAsAsked(m_Tree->pickedObjects()); });
    m_Export = menu->addAction(tr("E&xport…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E), this,
                               &MainWindow::exportPicked);
    menu->addSeparator();
    // What is about all of the work is asked for in any window.
    menu->addAction(tr("Save Sess&ion"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_S), this,
                    &MainWindow::saveSessionAsked)
        ->setShortcutContext(Qt::ApplicationShortcut);
    menu->addAction(tr("Save Session As…"), this, &MainWindow::saveSessionAsAsked);
    menu->addSeparator();
    m_Close = menu->addAction(tr("&Close"), QKeySequence(Qt::CTRL | Qt::Key_W), this,
                              &MainWindow::closePicked);
    menu->addSeparator();
    QAction *quit = menu->addAction(tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this,
                                    &MainWindow::quitAsked);
    quit->setMenuRole(QAction::QuitRole);
    quit->setShortcutContext(Qt::ApplicationShortcut);
}

void MainWindow::makeEditMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Edit"));
    UndoActions::undo()->setIcon(icon("undo"));
    UndoActions::redo()->setIcon(icon("redo"));
    menu->addAction(UndoActions::undo());
    menu->addAction(UndoActions::redo());
    menu->addSeparator();
    menu->addAction(tr("&Paste"), QKeySequence::Paste, this, &MainWindow::pasteAsked)
        ->setToolTip(tr("Open what is on the clipboard: sequences, an alignment, files"));
    menu->addAction(tr("Select &None"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A), this,
                    [this] {
                        // First, since the tree deselects what is picked in it.
                        ObjectCommands::selectNone();
                        m_Tree->clearSelection();
                    });
    menu->addAction(tr("Select A&gain"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L), this,
                    &ObjectCommands::selectAgain);
    menu->addSeparator();
    m_Rename = menu->addAction(tr("&Rename…"), this, [this] {
        const std::vector<Compound *> objects = m_Tree->pickedObjects();
        if (!objects.empty())
            m_Parts.commands.askRename(*objects.front());
    });
    m_Delete =
        menu->addAction(tr("&Delete"), QKeySequence::Delete, this, &MainWindow::deletePicked);
    m_Properties =
        menu->addAction(tr("&Properties…"), QKeySequence(Qt::ALT | Qt::Key_Return), this, [this] {
            const std::vector<Compound *> objects = m_Tree->pickedObjects();
            if (!objects.empty())
                m_Parts.commands.showProperties(*objects.front());
        });
}

void MainWindow::makeViewMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&View"));
    menu->addAction(m_LogDock->toggleViewAction());
    menu->addAction(m_HistoryDock->toggleViewAction());
    menu->addAction(m_ConsoleDock->toggleViewAction());
}

void MainWindow::makeToolsMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Tools"));
    for (const services::PluginRecord *plugin : m_Parts.plugins.tools()) {
        QAction *action =
            menu->addAction(Plugins::iconOf(*plugin), menuText(Plugins::titleOf(*plugin)), this,
                            [this, plugin] { emit toolAsked(*plugin); });
        if (m_Tools.empty() && plugin->showsAlignments())
            action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
        m_Tools.push_back(action);
    }
    if (m_Tools.empty())
        menu->addAction(tr("No plug-ins"))->setEnabled(false);
    menu->addSeparator();
    menu->addAction(tr("&Superpose…"), this, [this] {
        const std::vector<Compound *> objects = m_Tree->pickedObjects();
        emit superposeAsked(objects.size() == 1 ? objects.front() : nullptr);
    });
    menu->addSeparator();
    m_Models = menu->addAction(tr("Models of a &Family…"), this, [this] {
        const std::vector<Compound *> objects = m_Tree->pickedObjects();
        emit modelsAsked(objects.size() == 1 ? objects.front() : nullptr);
    });
    menu->addAction(tr("&Results of a Family…"), this, &MainWindow::modelResultsAsked)
        ->setToolTip(tr("What has come of the models in a folder"));
    menu->addSeparator();
    new ScriptMenu(m_Parts.scripts, *menu);
    menu->setToolTipsVisible(true);
}

void MainWindow::makeHelpMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Help"));
    services::WorkbenchMenus::instance().setMenuBar(*menuBar(), menu->menuAction());
    menu->addAction(tr("&Contents"), QKeySequence::HelpContents, this,
                    [] { HelpViewer::Show(QString()); });
    menu->addAction(tr("&Tour"), this, [] { HelpViewer::Show(QString::fromLatin1(kTourPage)); });
    menu->addAction(tr("&Plug-ins…"), this, [this] {
        PluginsDialog(m_Parts.plugins,
                      ModellingTools(QCoreApplication::applicationDirPath()).stateText(), this)
            .exec();
    });
    menu->addAction(tr("What is &New"), this, [this] { showNews(this); });
    menu->addAction(tr("&Copy a Report"), this,
                    [this] {
                        copyReport(m_Parts.plugins);
                        say(tr("Versions and the log are in the clipboard; nothing was sent"));
                    })
        ->setToolTip(
            tr("Put versions and the log into the clipboard, for whoever looks into a fault"));
    menu->addSeparator();
    QAction *about = menu->addAction(tr("&About"), this, [this] { showAbout(this); });
    about->setMenuRole(QAction::AboutRole);
}

void MainWindow::makeToolBar()
{
    QToolBar *bar = addToolBar(tr("Commands"));
    bar->setObjectName(QStringLiteral("CommandBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_Open->setIconText(tr("Open"));
    bar->addAction(m_Open);
    bar->addSeparator();
    // What they would undo is a text of any length, which their tool tips have.
    for (QAction *const action : {UndoActions::undo(), UndoActions::redo()}) {
        action->setPriority(QAction::LowPriority);
        bar->addAction(action);
    }
    if (!m_Tools.empty()) {
        bar->addSeparator();
        for (QAction *tool : m_Tools)
            bar->addAction(tool);
    }
    bar->toggleViewAction()->setVisible(false);
}

void MainWindow::makeStatusBar()
{
    m_Status = new CountedStatusBar;
    setStatusBar(m_Status);
    auto *printed = new PrintNotice(services::PrintoutDesk::instance());
    connect(printed, &PrintNotice::failed, this,
            [this](const QString &cause) { emit failed(cause, {}); });
    m_Status->addNotice(printed);
    auto *jobs = new JobStatus(services::JobList::instance());
    connect(jobs, &JobStatus::failureAsked, this, &MainWindow::failed);
    m_Status->addNotice(jobs);
    m_Warning = new QLabel;
    m_Warning->setObjectName(QStringLiteral("Warning"));
    m_Warning->setTextFormat(Qt::PlainText);
    m_Warning->hide();
    m_Status->addNotice(m_Warning);
}

void MainWindow::say(const QString &text)
{
    m_Status->showMessage(text, kSayMilliseconds);
}

void MainWindow::sayOfLock(const QString &text, std::shared_ptr<const ObjectReferences> locked)
{
    say(text);
    m_LockText = text;
    m_Locked = std::move(locked);
    followLock();
}

void MainWindow::followLock()
{
    if (m_Locked == nullptr)
        return;
    const std::vector<Compound *> &objects = m_Locked->objects();
    if (!objects.empty() && lockOn(*objects.front()) != nullptr)
        return;
    m_Locked.reset();
    // Something else may have been said since.
    if (m_Status->currentMessage() == m_LockText)
        m_Status->clearMessage();
}

void MainWindow::warn(const QString &text)
{
    m_Warning->setText(text);
    m_Warning->setToolTip(plainToolTip(text));
    m_Warning->setVisible(!text.isEmpty());
}

// ---- Commands

void MainWindow::fillRecentMenu()
{
    m_Recent->clear();
    const QStringList files = m_Parts.recentFiles.files();
    for (const QString &file : files) {
        QAction *action = m_Recent->addAction(menuText(QFileInfo(file).fileName()), this,
                                              [this, file] { emit openAsked({file}); });
        action->setToolTip(plainToolTip(file));
    }
    m_Recent->setToolTipsVisible(true);
    m_Recent->addSeparator();
    QAction *clear =
        m_Recent->addAction(tr("Clear List"), &m_Parts.recentFiles, &RecentFiles::clear);
    clear->setEnabled(!files.isEmpty());
}

void MainWindow::exportPicked()
{
    exportObjects(m_Tree->pickedObjects());
}

void MainWindow::exportObjects(const std::vector<Compound *> &objects)
{
    const QString file = m_Parts.commands.askExport(objects);
    if (!file.isEmpty())
        say(tr("Exported %1").arg(QFileInfo(file).fileName()));
}

// The structure of a picked chain is not closed with it.
void MainWindow::closePicked()
{
    std::vector<Compound *> objects = m_Tree->pickedObjects();
    std::erase_if(objects,
                  [](const Compound *object) { return object->Parent() != Space::instance(); });
    emit closeAsked(objects);
}

void MainWindow::deletePicked()
{
    ObjectCommands::destroy(m_Tree->pickedObjects());
}

void MainWindow::enableActions()
{
    const std::vector<Compound *> objects = m_Tree->pickedObjects();
    const auto isTop = [](const Compound *object) { return object->Parent() == Space::instance(); };
    const bool isForOne = !m_Tree->isPickedByUser() || PickedSaving::savable(objects).size() <= 1;
    m_SaveAs->setEnabled(PickedSaving::canSave() && isForOne);
    m_Close->setEnabled(std::ranges::any_of(objects, isTop));
    m_Rename->setEnabled(objects.size() == 1 && isRenamable(*objects.front()));
    m_Delete->setEnabled(std::ranges::any_of(
        objects, [](const Compound *object) { return ObjectCommands::isDestroyable(*object); }));
    m_Properties->setEnabled(objects.size() == 1);
}

void MainWindow::enableModels(bool hasAlignment)
{
    const QString reason =
        hasAlignment ? FamilyDesk::whyNot() : tr("It takes an alignment, and none is open.");
    m_Models->setEnabled(reason.isEmpty());
    m_Models->setToolTip(reason.isEmpty()
                             ? tr("Build models of many rows of an alignment on its structures")
                             : plainToolTip(reason));
}

// ---- Events

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (m_MayClose && !m_MayClose()) {
        event->ignore();
        return;
    }
    rememberDocks();
    BaseWindow::closeEvent(event);
    emit closed();
}

void MainWindow::showEvent(QShowEvent *event)
{
    if (!m_IsPlaced) {
        m_IsPlaced = true;
        chooseFirstPlace();
    }
    BaseWindow::showEvent(event);
    // Files of the call may just be coming.
    QMetaObject::invokeMethod(this, &MainWindow::offerStart, Qt::QueuedConnection);
}

std::vector<Compound *> MainWindow::pickedObjects() const
{
    return m_Tree->pickedObjects();
}

QRect MainWindow::firstPlace()
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget probe;
    if (!services::WindowPlaces::restore(probe, QString::fromLatin1(kPlaceKey)))
        return workbenchPlace(room);
    return probe.isMaximized() || probe.isFullScreen() ? room : probe.geometry();
}

void MainWindow::chooseFirstPlace()
{
    QWidget probe;
    if (services::WindowPlaces::restore(probe, QString::fromLatin1(kPlaceKey)))
        return;
    const QRect place = workbenchPlace(screen()->availableGeometry());
    resize(place.size());
    move(place.topLeft());
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!localFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    const QStringList files = localFiles(*event->mimeData());
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    emit openAsked(files);
}

// ---- Following the objects

void MainWindow::commUpdate() { }

void MainWindow::offerStart()
{
    const bool isEmpty = Space::instance()->begin() == Space::instance()->end() &&
                         !m_Parts.loader.isBusy() && isVisible();
    if (isEmpty && m_Start == nullptr) {
        m_Start = new StartPage(m_Parts.recentFiles, *m_Tree->viewport());
        connect(m_Start, &StartPage::openAsked, this, &MainWindow::filesAsked);
        connect(m_Start, &StartPage::exampleAsked, this, &MainWindow::exampleAsked);
        connect(m_Start, &StartPage::tourAsked, this,
                [] { HelpViewer::Show(QString::fromLatin1(kTourPage)); });
        connect(m_Start, &StartPage::helpAsked, this, [] { HelpViewer::Show(QString()); });
        connect(m_Start, &StartPage::fileAsked, this,
                [this](const QString &file) { emit openAsked({file}); });
    }
    if (m_Start != nullptr)
        m_Start->setVisible(isEmpty);
}

void MainWindow::commAdd()
{
    countObjects();
}

void MainWindow::commDelete()
{
    countObjects();
}

void MainWindow::countObjects()
{
    m_Save->setEnabled(PickedSaving::canSave());
    m_SaveAs->setEnabled(m_Save->isEnabled());
    m_Export->setEnabled(ObjectCommands::canExport());
    std::size_t structures = 0;
    std::size_t sequences = 0;
    std::size_t alignments = 0;
    for (const Compound *object : *Space::instance()) {
        const ObjectKind kind = kindOf(*object);
        structures += kind == ObjectKind::Structure ? 1 : 0;
        sequences += kind == ObjectKind::Sequence ? 1 : 0;
        alignments += kind == ObjectKind::Alignment ? 1 : 0;
    }
    enableModels(alignments > 0);
    QStringList parts;
    const auto add = [&parts](std::size_t count, const QString &one, const QString &many) {
        if (count > 0)
            parts << QStringLiteral("%1 %2").arg(QLocale().toString(qulonglong(count)),
                                                 count == 1 ? one : many);
    };
    add(structures, tr("structure"), tr("structures"));
    add(alignments, tr("alignment"), tr("alignments"));
    add(sequences, tr("sequence"), tr("sequences"));
    m_Status->setCount(parts.join(QStringLiteral(", ")));
    offerStart();
}

// ---- Docks

void MainWindow::rememberDocks() const
{
    ConfigStore store = dockStore();
    store.setValue("Docks", kPlaceKey, saveState().toBase64().toStdString());
    store.saveOrLog();
}

void MainWindow::restoreDocks()
{
    if (const std::optional<std::string> state = dockStore().value("Docks", kPlaceKey))
        restoreState(QByteArray::fromBase64(QByteArray::fromStdString(*state)));
}

} // namespace TAMBO::app

#include "moc_MainWindow.cpp"
