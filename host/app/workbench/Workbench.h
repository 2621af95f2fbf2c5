// SPDX-License-Identifier: GPL-3.0-or-later
// The running workbench: owns the history, the loader, the plug-ins and the main window, and ties
// them to what the model asks of the program.
#pragma once

#include "ArrivingFiles.h"
#include "ExportRuns.h"
#include "ForeignData.h"
#include "History.h"
#include "KeptFiles.h"
#include "KeptNotes.h"
#include "KeptValues.h"
#include "Loader.h"
#include "ObjectCommands.h"
#include "ObjectNotes.h"
#include "ObjectSources.h"
#include "OpenedSequences.h"
#include "Plugins.h"
#include "SavedPlaces.h"
#include "SessionDocument.h"
#include "SessionMarks.h"
#include "SessionSaving.h"
#include "StructureFits.h"
#include "UnsavedQuestion.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <cstddef>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace TAMBO {
struct AddFilesRequest;
struct AddSequencesRequest;
struct AlignRowsRequest;
struct RealignRequest;
} // namespace TAMBO

namespace TAMBO::services {
class DialogPlaces;
class FailureBoxes;
class WorkProgress;
} // namespace TAMBO::services

namespace TAMBO::app {

class EmptiedWindows;
class FamilyDesk;
class EditorDialogs;
class FirstPlaces;
class LateWindow;
struct LeftSession;
class LiveStore;
class LogModel;
class MainWindow;
class OpenWindows;
class RecentFiles;
class PluginParts;
class Routes;
class ScriptDesk;
class SessionCommands;
class UndoCommands;

class Workbench : public QObject
{
    Q_OBJECT

public:
    enum class Attendance {
        // Somebody sits before the screen and can be asked.
        User,
        // Nothing may wait for an answer.
        Nobody
    };

    explicit Workbench(Attendance attendance = Attendance::User,
                       services::PluginFolders plugins = services::PluginFolders::standard());
    ~Workbench() override;

    [[nodiscard]] Loader &loader() noexcept { return m_Loader; }
    [[nodiscard]] Plugins &plugins() noexcept { return m_Plugins; }
    [[nodiscard]] ExportRuns &exports() noexcept { return m_Exports; }
    [[nodiscard]] const ObjectCommands &commands() const noexcept { return m_Commands; }
    [[nodiscard]] ObjectNotes &notes() noexcept { return m_Notes; }
    [[nodiscard]] UndoCommands &undo() noexcept { return *m_Undo; }
    [[nodiscard]] sessions::KeptValues &values() noexcept { return m_Values; }
    [[nodiscard]] const SessionDocument &session() const noexcept { return m_Document; }
    [[nodiscard]] RecentFiles &recentFiles() noexcept { return *m_RecentFiles; }
    [[nodiscard]] ScriptDesk &scripts() noexcept { return *m_Scripts; }
    [[nodiscard]] LogModel &logModel() noexcept { return *m_LogModel; }
    // Made when somebody asks for it: an editor that comes first does not wait for it.
    [[nodiscard]] MainWindow &window();
    // Null while it is not to be seen.
    [[nodiscard]] QWidget *shownWindow() const;
    // They ask in that window, and are made with it.
    [[nodiscard]] SessionCommands &sessions();

    // From now on what is done is kept on the disk, in case the program does not come to its end.
    // Asks before whether what others have left behind is to be recovered, which needs an empty
    // workbench.
    void keepWork();
    // Whether it may ask.
    [[nodiscard]] static bool mayHaveLeftWork();
    // Tools to open once the files of the call are there, by their titles. Refused, with those that
    // there are, when one of them is unknown.
    [[nodiscard]] Result<void> setToolsAtStart(const std::vector<std::string> &titles);
    // When there are no files to open: at once.
    void openToolsAtStart();
    // Opens the files of the call, then the editor on the first alignment among them.
    void openAtStart(std::vector<std::filesystem::path> files);
    // The same, and shows the workbench's window: below the editor when that is soon there.
    // beforeTexts: called when texts are about to be measured, maybe again.
    void showAndOpen(
        std::vector<std::filesystem::path> files, const std::function<void()> &beforeTexts = [] {});
    void open(const QStringList &files);
    // What another call of the program hands over: comes to the front, and opens the editor on the
    // first alignment, as that call would have done.
    void openHandedOver(const QStringList &files);
    // A family, with its structures in the structure view when that is there; as a call with these
    // files would have opened them.
    void openExample();
    [[nodiscard]] static QString exampleFile();
    static constexpr const char *kExampleTool = "Structure View";
    // Text of the clipboard as if it were in a file, or the files there.
    void paste();
    // With a file dialog; false when the user chose nothing.
    bool askAndOpen(QWidget *parent);
    // Takes top-level objects out; asks when that touches unsaved work.
    void closeObjects(const std::vector<Compound *> &objects);
    // A file was written for a plug-in. The user is told what it lacks of the object, and whether
    // the object counts as saved in spite of it is the user's choice.
    // state: what was written; null for what the object is now.
    void noteWritten(Compound &object, const SavedPlaces::Place &place, const QStringList &losses,
                     const KeptState *state = nullptr);

    // The columns of its range, with the aligner of the settings.
    bool realign(Alignment &alignment);
    bool realignAll(RealignRequest &request);
    // Rows to the others.
    bool alignRows(AlignRowsRequest &request);
    // As new rows behind the others.
    bool addSequences(AddSequencesRequest &request);
    // The same of files that the user chooses, once they are open; false when he cannot be asked.
    bool addFiles(const AddFilesRequest &request);
    // Asks of which sequences, and shows it in the editor.
    void askForNewAlignment();
    // Asks which structures, along which alignment: chosen, if it is one.
    void askSuperpose(const Compound *chosen);
    // Has models of many rows built, and shows what comes of them.
    [[nodiscard]] FamilyDesk &families();
    // Of chosen, if it is an alignment.
    void askForModels(const Compound *chosen);
    // The structures of the rows onto that of the first; the status line says what came of it.
    bool superpose(Alignment &alignment, const std::vector<unsigned long> &rows,
                   const FitChoice &choice = {});

    [[nodiscard]] static std::vector<Alignment *> loadedAlignments();

    void openTool(const services::PluginRecord &plugin);
    // The window; null when there is none, which the status line explains.
    QWidget *openInEditor(Compound *alignment);

    // In a box of its own, when there is somebody to read it. headline says what was not done, the
    // causes name files. The log is the caller's.
    void tellFailure(const QString &headline, const QStringList &causes);
    // Those of one command, in one box.
    void tellFailures(const LoadReport &report);

    // Asks when there is unsaved work, or a job is running.
    [[nodiscard]] bool mayQuit();
    // Closes the tools' windows and ends the event loop.
    void leave();
    void quit();
    // Quits because somebody outside asks for it, as soon as no file is waited for, whatever the
    // user is doing: dialogs are closed as by Escape, once it is certain that nothing unsaved is
    // lost.
    void endOnRequest();

    // How a workbench beside this one is started, with files to open; for tests.
    using Starter = std::function<bool(const QStringList &files)>;
    void setStarter(Starter starter) { m_Starter = std::move(starter); }

signals:
    void opened(const TAMBO::app::LoadReport &report);
    // The files of the call are there and their windows are open.
    void started(const TAMBO::app::LoadReport &report);

private:
    void makeWindow();
    void connectWindow();
    // At once, or when the window is made.
    void inWindow(std::function<void(MainWindow &)> act);
    void say(const QString &text);
    void sayOfLock(const QString &text, const Compound &locked);
    void warn(const QString &text);
    // What stands over a window: that of the workbench is seen by then.
    [[nodiscard]] services::FailureBoxes &boxes();
    [[nodiscard]] QWidget *windowInUse();
    void makeRoutes();
    void makeScripts();
    void installHooks();
    void askToRecover();
    void recoverWork(const LeftSession &session);
    void makeValues();
    void beginLiveStore();
    // As a command; what is not there yet is named in the store.
    void load(std::vector<std::filesystem::path> files);
    void makeSessions();
    void showFirstAlignment();
    void load(const QStringList &files);
    void filesOpened(const LoadReport &report);
    void pickOpened(const LoadReport &report);
    void showAtStart(const LoadReport &report);
    void finishStart(const LoadReport &report);
    void modelsOpened(const LoadReport &report);
    void noteOpened(const Compound &object, const LoadReport::Origin &origin);
    void rememberFiles(const LoadReport &report);
    void closeDialogsAndQuit();
    void quitAfterJobs();

    Attendance m_Attendance;
    bool m_IsEnding = false;
    // The user wants to quit when no job runs any more.
    bool m_WaitsForJobs = false;
    History m_History;
    // Of what is neither object nor history; what has a part in it is made later and adds it.
    sessions::KeptValues m_Values;
    sessions::SessionMarks m_Marks;
    ObjectSources m_Sources;
    SavedPlaces m_Places;
    KeptFiles m_Files;
    ObjectNotes m_Notes;
    KeptNotes m_KeptNotes;
    ArrivingFiles m_Arriving;
    ExportRuns m_Exports;
    SessionDocument m_Document;
    SessionSaving m_Saving;
    UnsavedQuestion m_Question;
    PastedTexts m_Pasted;
    Loader m_Loader;
    // How often the user had picked something when each open command was given; those under way.
    std::deque<std::size_t> m_PicksBefore;
    OpenedSequences m_OpenedSequences;
    ObjectCommands m_Commands;
    Plugins m_Plugins;
    QTimer m_SaveTimer;
    std::unique_ptr<UndoCommands> m_Undo;
    std::unique_ptr<LogModel> m_LogModel;
    std::unique_ptr<RecentFiles> m_RecentFiles;
    std::unique_ptr<Routes> m_Routes;
    std::unique_ptr<ScriptDesk> m_Scripts;
    std::unique_ptr<MainWindow> m_Window;
    // What it is to be told when it is made.
    std::vector<std::function<void(MainWindow &)>> m_ForWindow;
    std::unique_ptr<LateWindow> m_LateWindow;
    std::unique_ptr<SessionCommands> m_Sessions;
    std::unique_ptr<FirstPlaces> m_FirstPlaces;
    std::unique_ptr<services::DialogPlaces> m_DialogPlaces;
    std::unique_ptr<EditorDialogs> m_EditorDialogs;
    std::unique_ptr<services::FailureBoxes> m_FailureBoxes;
    std::unique_ptr<EmptiedWindows> m_EmptiedWindows;
    // Null when there is nobody to see it.
    std::unique_ptr<services::WorkProgress> m_Progress;
    // Null until somebody asks for models of a family.
    std::unique_ptr<FamilyDesk> m_Families;
    Starter m_Starter;
    std::vector<const services::PluginRecord *> m_ToolsAtStart;
    std::unique_ptr<OpenWindows> m_OpenWindows;
    std::unique_ptr<PluginParts> m_PluginParts;
    // Null when nothing is kept. Goes first: the program comes to its end.
    std::unique_ptr<LiveStore> m_LiveStore;
};

} // namespace TAMBO::app
