// SPDX-License-Identifier: GPL-3.0-or-later
#include "Workbench.h"

#include "AddRowsCommand.h"
#include "Alignment.h"
#include "Config.h"
#include "ConfigStore.h"
#include "DialogPlaces.h"
#include "EditorDialogs.h"
#include "EmptiedWindows.h"
#include "FailureBoxes.h"
#include "FamilyDesk.h"
#include "FirstPlaces.h"
#include "Hooks.h"
#include "JobList.h"
#include "KeptState.h"
#include "LateWindow.h"
#include "LiveStore.h"
#include "LogBook.h"
#include "LogModel.h"
#include "Logger.h"
#include "LossBox.h"
#include "MainWindow.h"
#include "NewAlignment.h"
#include "ObjectFacts.h"
#include "ObjectOrigins.h"
#include "ObjectReferences.h"
#include "ObjectSpace.h"
#include "ObjectTree.h"
#include "ObjectTreeModel.h"
#include "OpenWindows.h"
#include "PickedSaving.h"
#include "PluginParts.h"
#include "PrintoutDesk.h"
#include "RealignCommand.h"
#include "RecentFiles.h"
#include "Routes.h"
#include "ScriptDesk.h"
#include "SessionCommands.h"
#include "Space.h"
#include "StatusDesk.h"
#include "Structure.h"
#include "SuperposeCommand.h"
#include "SuperposeDialog.h"
#include "UndoCommands.h"
#include "WorkProgress.h"
#include "WorkbenchCommands.h"
#include "WritableObject.h"
#include "WriteJob.h"
#include "WriteWait.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <utility>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;

constexpr int kSaveMilliseconds = 2000;
// Until it is looked again whether a dialog has gone.
constexpr std::chrono::milliseconds kPause(20);

void sayUnlessEmpty(MainWindow &window, const QString &text)
{
    if (!text.isEmpty())
        window.say(text);
}

} // namespace

Workbench::Workbench(Attendance attendance, services::PluginFolders plugins)
    : m_Attendance(attendance),
      m_Marks(ObjectSpace::get(), m_Values),
      m_Places(m_History, m_Sources),
      m_Files(m_Sources, m_Places),
      m_KeptNotes(m_Notes),
      m_Exports(m_Places),
      m_Document(m_History),
      m_Saving(m_Document, m_History, m_Values, m_Sources),
      m_Question(m_Places, m_Document, m_Saving, services::JobList::instance()),
      m_Loader(m_Sources),
      m_Commands(m_Sources),
      m_Plugins(std::move(plugins)),
      m_Undo(std::make_unique<UndoCommands>(m_History)),
      m_LogModel(std::make_unique<LogModel>(services::LogBook::instance())),
      m_RecentFiles(std::make_unique<RecentFiles>(services::ConfigStore::instance()))
{
    m_Values.add(m_Files);
    m_Values.add(m_KeptNotes);
    m_Values.add(m_Arriving);
    m_Arriving.setRecords(
        {[this] { return m_LiveStore == nullptr ? 0 : m_LiveStore->recordCount(); },
         [this](std::uint64_t records) {
             return m_LiveStore == nullptr || m_LiveStore->hasHandedOver(records);
         }});
    // Writing to the disk can wait until the windows are painted.
    m_SaveTimer.setSingleShot(true);
    m_SaveTimer.setInterval(kSaveMilliseconds);
    connect(&m_SaveTimer, &QTimer::timeout, this,
            [] { services::ConfigStore::instance().saveOrLog(); });
    connect(m_RecentFiles.get(), &RecentFiles::changed, &m_SaveTimer, qOverload<>(&QTimer::start));
    m_Plugins.loadAll();
    connect(&m_Loader, &Loader::objectsCome, this,
            [this](const std::vector<fs::path> &asked) { m_Arriving.comeWithNextRecord(asked); });
    connect(&m_Loader, &Loader::finished, this, &Workbench::filesOpened);
    m_Values.add(m_Document);
    m_LateWindow = std::make_unique<LateWindow>([this]() -> QWidget & { return window(); });
    m_FirstPlaces = std::make_unique<FirstPlaces>();
    m_DialogPlaces = std::make_unique<services::DialogPlaces>();
    m_EditorDialogs = std::make_unique<EditorDialogs>([this](const Alignment &alignment) {
        const QString file = m_Places.lastFileOf(alignment);
        return file.isEmpty() ? QString() : QFileInfo(file).absolutePath();
    });
    if (m_Attendance == Attendance::User)
        m_Places.setSaved([this](const QString &file) { m_RecentFiles->add({file}); });
    m_EmptiedWindows = std::make_unique<EmptiedWindows>(&Plugins::showIn);
    if (m_Attendance == Attendance::User)
        m_Progress = std::make_unique<services::WorkProgress>([this] { return windowInUse(); });
    m_Commands.setPlaces(m_Places);
    m_Commands.setNotes(m_Notes);
    m_Commands.setExports(m_Exports);
    connect(&m_Exports, &ExportRuns::exported, this, [this](const QString &file) {
        say(tr("Exported %1").arg(QFileInfo(file).fileName()));
    });
    connect(&m_Exports, &ExportRuns::failed, this, &Workbench::tellFailure);
    // Not at once: whoever ends a job is in the middle of it.
    connect(&services::JobList::instance(), &services::JobList::changed, this,
            &Workbench::quitAfterJobs, Qt::QueuedConnection);
    if (!m_Plugins.alignmentViewers().empty())
        m_Commands.setEditor([this](Alignment &alignment) { openInEditor(&alignment); });
    makeRoutes();
    makeScripts();
    connect(&services::JobList::instance(), &services::JobList::failed, this,
            &Workbench::tellFailure);
    installHooks();
    makeValues();
}

Workbench::~Workbench()
{
    ModelHooks &hooks = modelHooks();
    hooks.showMenu = nullptr;
    hooks.refused = nullptr;
    hooks.denied = nullptr;
    hooks.changed = nullptr;
    services::PrintoutDesk::instance().setFolderOf(nullptr);
    services::ObjectOrigins::remove();
}

MainWindow &Workbench::window()
{
    if (m_Window == nullptr)
        makeWindow();
    return *m_Window;
}

SessionCommands &Workbench::sessions()
{
    if (m_Sessions == nullptr)
        makeWindow();
    return *m_Sessions;
}

QWidget *Workbench::shownWindow() const
{
    return m_Window != nullptr && m_Window->isVisible() ? m_Window.get() : nullptr;
}

void Workbench::makeWindow()
{
    m_Window = std::make_unique<MainWindow>(MainWindow::Parts{
        m_Loader, m_Plugins, m_Commands, *m_Undo, *m_RecentFiles, *m_LogModel, *m_Scripts});
    m_FirstPlaces->setWorkbench(*m_Window);
    m_FailureBoxes = std::make_unique<services::FailureBoxes>(*m_Window);
    m_Commands.setDialogParent(m_Window.get());
    connectWindow();
    makeSessions();
    for (const auto &act : std::exchange(m_ForWindow, {}))
        act(*m_Window);
}

void Workbench::inWindow(std::function<void(MainWindow &)> act)
{
    if (m_Window != nullptr)
        act(*m_Window);
    else
        m_ForWindow.push_back(std::move(act));
}

void Workbench::say(const QString &text)
{
    inWindow([text](MainWindow &window) { window.say(text); });
}

void Workbench::sayOfLock(const QString &text, const Compound &locked)
{
    const auto object = std::make_shared<const ObjectReferences>(
        std::vector<Compound *>{&const_cast<Compound &>(locked)});
    inWindow([text, object](MainWindow &window) { window.sayOfLock(text, object); });
}

void Workbench::warn(const QString &text)
{
    inWindow([text](MainWindow &window) { window.warn(text); });
}

services::FailureBoxes &Workbench::boxes()
{
    m_LateWindow->showNow();
    if (m_Window == nullptr)
        makeWindow();
    return *m_FailureBoxes;
}

QWidget *Workbench::windowInUse()
{
    return boxes().windowInUse();
}

void Workbench::connectWindow()
{
    MainWindow *const window = m_Window.get();
    window->setMayClose([this] { return mayQuit(); });
    connect(window, &MainWindow::closed, this, &Workbench::leave);
    connect(window, &MainWindow::quitAsked, this, &Workbench::quit);
    connect(window, &MainWindow::filesAsked, this, [this, window] { askAndOpen(window); });
    connect(window, &MainWindow::exampleAsked, this, &Workbench::openExample);
    connect(window, &MainWindow::openAsked, this, &Workbench::open);
    connect(window, &MainWindow::pasteAsked, this, &Workbench::paste);
    const auto saving = std::make_shared<const PickedSaving>(m_Places, *window);
    connect(window, &MainWindow::saveAsked, this, [window, saving](const auto &objects) {
        sayUnlessEmpty(*window, saving->save(objects, window->tree().isPickedByUser()));
    });
    connect(window, &MainWindow::saveAsAsked, this, [window, saving](const auto &objects) {
        sayUnlessEmpty(*window, saving->saveAs(objects, window->tree().isPickedByUser()));
    });
    connect(window, &MainWindow::closeAsked, this, &Workbench::closeObjects);
    connect(window, &MainWindow::editorAsked, this, &Workbench::openInEditor);
    connect(window, &MainWindow::toolAsked, this, &Workbench::openTool);
    connect(window, &MainWindow::newAlignmentAsked, this, &Workbench::askForNewAlignment);
    connect(window, &MainWindow::superposeAsked, this, &Workbench::askSuperpose);
    connect(window, &MainWindow::modelsAsked, this, &Workbench::askForModels);
    connect(window, &MainWindow::modelResultsAsked, this,
            [this, window] { families().askForFolder(window); });
    connect(window, &MainWindow::failed, this, &Workbench::tellFailure);
}

void Workbench::makeRoutes()
{
    Routes::Actions actions;
    actions.askAndOpen = [this](QWidget *parent) { return askAndOpen(parent); };
    actions.realign = [this](Alignment &alignment) { return realign(alignment); };
    actions.realignAll = [this](RealignRequest &request) { return realignAll(request); };
    actions.alignRows = [this](AlignRowsRequest &request) { return alignRows(request); };
    actions.addSequences = [this](AddSequencesRequest &request) { return addSequences(request); };
    actions.addFiles = [this](const AddFilesRequest &request) { return addFiles(request); };
    actions.show = [this](Alignment &alignment) { return openInEditor(&alignment) != nullptr; };
    actions.exportTo = [this](Alignment &alignment) { window().exportObjects({&alignment}); };
    actions.saveAs = [this](Alignment &alignment) {
        QWidget *const inUse = windowInUse();
        QWidget &parent = inUse != nullptr ? *inUse : window();
        sayUnlessEmpty(window(), PickedSaving(m_Places, parent).saveAs({&alignment}, true));
    };
    actions.tellBadFiles = [this](const LoadReport &report) { tellFailures(report); };
    actions.tellFailure = [this](const QString &headline, const QStringList &causes) {
        tellFailure(headline, causes);
    };
    if (m_Attendance == Attendance::User)
        actions.write = [this](const std::shared_ptr<const WritableObject> &object,
                               const QString &path, const WriteOptions &options) {
            WriteJob job(object, path, options);
            job.start();
            return waitToTheEnd(job, tr("Save"), windowInUse());
        };
    actions.keepState = [this](const Alignment &alignment) {
        return m_Places.keepState(alignment);
    };
    actions.noteWritten = [this](Alignment &alignment, const QString &file,
                                 const QStringList &losses, const KeptState *state) {
        noteWritten(alignment, {file, WriteOptions()}, losses, state);
    };
    m_Routes = std::make_unique<Routes>(m_Loader, std::move(actions));
}

void Workbench::makeScripts()
{
    ScriptDesk::Actions actions;
    actions.say = [this](const QString &text) { say(text); };
    actions.tellFailure = [this](const QString &headline, const QStringList &causes) {
        tellFailure(headline, causes);
    };
    actions.opened = [this](const Compound &object, const fs::path &file) {
        m_Sources.set(object, file);
    };
    actions.sessionValues = [this] {
        ScriptDesk::SessionValues values;
        auto kept = m_Saving.values();
        if (!kept)
            return values;
        for (sessions::NamedValue &value : *kept)
            values.emplace_back(std::move(value.name), std::move(value.content));
        return values;
    };
    actions.sessionSaved = [this](const fs::path &file) { m_Saving.noteSaved(file); };
    m_Scripts = std::make_unique<ScriptDesk>(m_History, services::ConfigStore::instance(),
                                             std::move(actions));
}

void Workbench::installHooks()
{
    ModelHooks &hooks = modelHooks();
    hooks.showMenu = [this](Compound &object) { m_Commands.popUpMenu({&object}); };
    hooks.refused = [this](const Compound &locked) {
        sayOfLock(tr("%1 is locked").arg(nameText(locked)), locked);
    };
    hooks.denied = [this](const std::string &reason, const Compound *locked) {
        const QString text = QString::fromStdString(reason);
        if (locked != nullptr)
            sayOfLock(text, *locked);
        else
            say(text);
    };
    hooks.changed = [this] {
        if (m_Window != nullptr) {
            m_Window->objects().scheduleRefresh();
            m_Window->followLock();
        }
        m_Document.follow();
        m_EmptiedWindows->follow(m_History.isAsTravelled());
    };

    services::ObjectOrigins::install(
        [this](const Compound &object) {
            const std::optional<SavedPlaces::Place> place = m_Places.lastPlaceOf(object);
            return place ? place->file : QFile::decodeName(m_Sources.fileOf(object).c_str());
        },
        [this] {
            return m_Window == nullptr ? std::vector<Compound *>() : m_Window->pickedObjects();
        });

    auto &desk = services::PrintoutDesk::instance();
    desk.setFolderOf([this](const Compound &object) {
        return QFile::decodeName(m_Sources.fileOf(object).parent_path().c_str());
    });
    connect(&desk, &services::PrintoutDesk::refused, this,
            [this](const QString &cause) { tellFailure(cause, {}); });
    // Of a file the notice beside the line tells.
    connect(&desk, &services::PrintoutDesk::sent, this,
            [this](const QString &printer) { say(tr("Sent to the printer %1").arg(printer)); });
    connect(&services::StatusDesk::instance(), &services::StatusDesk::said, this, &Workbench::say);
}

// ---- Closing

void Workbench::closeObjects(const std::vector<Compound *> &objects)
{
    const ObjectReferences references(objects);
    if (m_Attendance == Attendance::Nobody || m_Question.mayClose(objects, &window()))
        ObjectCommands::destroy(references.objects());
}

void Workbench::noteWritten(Compound &object, const SavedPlaces::Place &place,
                            const QStringList &losses, const KeptState *state)
{
    m_Places.noteWritten(object, place, losses, state);
    const QStringList numbers = m_Places.strangeNumbers(object, place.options);
    for (const QString &sentence : numbers)
        Logger::Write(QFileInfo(place.file).fileName() + QStringLiteral(": ") + sentence,
                      Logger::Severity::Warning);
    const bool isNews = !losses.isEmpty() && !m_Places.isAccepted(object, place.file, losses);
    if (m_Attendance == Attendance::User && (isNews || !numbers.isEmpty()))
        LossBox::showOver(windowInUse(), m_Places, object, place.file,
                          isNews ? losses : QStringList(), numbers);
}

// ---- Tools

bool Workbench::realign(Alignment &alignment)
{
    return RealignCommand(windowInUse(), m_Attendance == Attendance::User).run(alignment);
}

bool Workbench::realignAll(RealignRequest &request)
{
    return RealignCommand(windowInUse(), m_Attendance == Attendance::User)
        .runOnAll(*request.alignment, &request.told);
}

bool Workbench::alignRows(AlignRowsRequest &request)
{
    using Columns = AddRowsCommand::Columns;
    return AddRowsCommand(windowInUse(), m_Attendance == Attendance::User)
        .run(*request.alignment, request.rows,
             request.keepsColumns ? Columns::Kept : Columns::AsNeeded, &request.told);
}

bool Workbench::addSequences(AddSequencesRequest &request)
{
    return AddRowsCommand(windowInUse(), m_Attendance == Attendance::User)
        .add(*request.alignment, request.sequences, &request.told);
}

// In the order of the tree.
std::vector<Alignment *> Workbench::loadedAlignments()
{
    std::vector<Alignment *> alignments;
    for (Compound *object : *Space::instance()) {
        if (auto *alignment = dynamic_cast<Alignment *>(object))
            alignments.push_back(alignment);
    }
    return alignments;
}

void Workbench::askForNewAlignment()
{
    const NewAlignment made = app::askForNewAlignment(&window());
    if (made.alignment != nullptr)
        openInEditor(made.alignment);
    else if (!made.refusal.isEmpty())
        say(made.refusal);
}

void Workbench::askSuperpose(const Compound *chosen)
{
    const std::vector<Alignment *> alignments = loadedAlignments();
    if (alignments.empty()) {
        say(tr("Superposing takes an alignment, and none is open."));
        return;
    }
    const bool isOne = dynamic_cast<const Alignment *>(chosen) != nullptr;
    SuperposeDialog dialog(alignments, isOne ? chosen : nullptr, &window());
    if (dialog.exec() == QDialog::Accepted && dialog.alignment() != nullptr)
        superpose(*dialog.alignment(), dialog.rows(), dialog.choice());
}

FamilyDesk &Workbench::families()
{
    if (m_Families == nullptr) {
        FamilyDesk::Actions actions;
        actions.opened = [this](const LoadReport &report) { modelsOpened(report); };
        actions.tellFailure = [this](const QString &headline, const QStringList &causes) {
            tellFailure(headline, causes);
        };
        m_Families = std::make_unique<FamilyDesk>(FamilyDesk::Parts{m_Loader, m_Sources, m_Notes},
                                                  std::move(actions),
                                                  QCoreApplication::applicationFilePath());
    }
    return *m_Families;
}

void Workbench::askForModels(const Compound *chosen)
{
    const std::vector<Alignment *> alignments = loadedAlignments();
    if (!alignments.empty())
        families().askForModels(alignments, chosen, &window());
}

bool Workbench::superpose(Alignment &alignment, const std::vector<unsigned long> &rows,
                          const FitChoice &choice)
{
    const Result<SuperposePlan> plan = SuperposeCommand::run(alignment, rows, choice);
    say(plan ? SuperposeCommand::summary(plan.value())
             : QString::fromStdString(plan.error().message()));
    return plan.has_value();
}

void Workbench::openTool(const services::PluginRecord &plugin)
{
    m_Plugins.open(plugin);
    if (!plugin.isUsable())
        tellFailure(tr("%1 cannot be used.").arg(Plugins::titleOf(plugin)), {plugin.reason});
}

QWidget *Workbench::openInEditor(Compound *alignment)
{
    auto *shown = dynamic_cast<Alignment *>(alignment);
    if (shown == nullptr)
        return nullptr;
    const Result<QWidget *> window = m_Plugins.show(*shown);
    if (window)
        return window.value();
    say(tr("%1 cannot be shown: %2")
            .arg(nameText(*shown), QString::fromStdString(window.error().message())));
    return nullptr;
}

// ---- Unsaved work, and the end

bool Workbench::mayQuit()
{
    m_WaitsForJobs = false;
    if (m_IsEnding || m_Attendance == Attendance::Nobody)
        return true;
    if (m_Scripts->isRunning()) {
        say(tr("A script is running. Tambo can be closed when it has ended; Escape stops it."));
        return false;
    }
    // What they write may be what would be asked for.
    if (m_Exports.isAwaited() || !m_Exports.waitForAll(&window()))
        return false;
    const UnsavedQuestion::Outcome outcome = m_Question.beforeQuitting(&window());
    if (outcome == UnsavedQuestion::Outcome::Wait) {
        m_WaitsForJobs = true;
        say(tr("Tambo quits when nothing runs any more."));
    }
    return outcome == UnsavedQuestion::Outcome::GoOn;
}

// The end of a job is told in a box, and what it has made may be work to save.
void Workbench::quitAfterJobs()
{
    if (!m_WaitsForJobs || !services::JobList::instance().jobs().empty())
        return;
    if (isWriteAwaited() || QApplication::activeModalWidget() != nullptr ||
        QApplication::activePopupWidget() != nullptr)
        QTimer::singleShot(kPause, this, &Workbench::quitAfterJobs);
    else
        quit();
}

void Workbench::leave()
{
    m_Loader.cancel();
    services::ConfigStore::instance().saveOrLog();
    m_Plugins.shutDown();
    QCoreApplication::quit();
}

void Workbench::quit()
{
    window().QWidget::close();
}

void Workbench::endOnRequest()
{
    if (isWriteAwaited() || (m_Progress != nullptr && m_Progress->isShown())) {
        QTimer::singleShot(kPause, this, &Workbench::endOnRequest);
        return;
    }
    if (m_Scripts->isRunning()) {
        m_Scripts->stopForGood();
        QTimer::singleShot(kPause, this, &Workbench::endOnRequest);
        return;
    }
    if (m_IsEnding || m_Question.isOpen() || !mayQuit())
        return;
    m_IsEnding = true;
    closeDialogsAndQuit();
}

// Whoever waits for a dialog is still in the middle of something, often in a plug-in, which cannot
// go before that has come to its end.
void Workbench::closeDialogsAndQuit()
{
    QWidget *dialog = QApplication::activePopupWidget();
    if (dialog == nullptr)
        dialog = QApplication::activeModalWidget();
    if (dialog == nullptr)
        return quit();
    dialog->close();
    QTimer::singleShot(kPause, this, &Workbench::closeDialogsAndQuit);
}

} // namespace TAMBO::app

#include "moc_Workbench.cpp"
