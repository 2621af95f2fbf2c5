// SPDX-License-Identifier: GPL-3.0-or-later
// How files come into the workbench, and what is said of them.
#include "Workbench.h"

#include "Alignment.h"
#include "Directories.h"
#include "FailureBoxes.h"
#include "FirstPlaces.h"
#include "LateWindow.h"
#include "LiveStore.h"
#include "MainWindow.h"
#include "ObjectReferences.h"
#include "ObjectTree.h"
#include "OpenDialog.h"
#include "RecentFiles.h"
#include "ScriptDesk.h"
#include "SessionCommands.h"
#include "SessionFile.h"
#include "Structure.h"
#include "WorkbenchCommands.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QFileInfo>
#include <QFontMetrics>
#include <QMimeData>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <utility>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;

fs::path toPath(const QString &file)
{
    return fs::path(QFile::encodeName(file).toStdString());
}

std::vector<fs::path> toPaths(const QStringList &files)
{
    std::vector<fs::path> paths;
    std::ranges::transform(files, std::back_inserter(paths), toPath);
    return paths;
}

QString toText(const fs::path &file)
{
    return QFile::decodeName(QByteArray::fromStdString(file.string()));
}

// With files of so many bytes the editor is there at once.
constexpr std::uintmax_t kQuicklyOpened = 4 << 20;

bool areQuicklyOpened(const std::vector<fs::path> &files)
{
    std::uintmax_t bytes = 0;
    for (const fs::path &file : files) {
        std::error_code error;
        const std::uintmax_t size = fs::file_size(file, error);
        bytes += error ? 0 : size;
    }
    // A session asks in the workbench's window, and brings windows of its own.
    return !files.empty() && bytes <= kQuicklyOpened &&
           std::ranges::none_of(files, sessions::isSessionFile);
}

// Whatever window comes first, it has a text, and the first one waits for the fonts.
void prepareFonts()
{
    static_cast<void>(QFontMetrics(QApplication::font()).boundingRect(QStringLiteral("x")));
}

// In which a file is written again. Its ending tells apart what readers do not.
std::optional<WriteOptions> optionsOf(const LoadReport::Origin &origin)
{
    const std::optional<WriteOptions> byEnding = writeOptionsFor(origin.file);
    const bool isA2m = byEnding && byEnding->format == FileFormat::A2m && origin.format == "a3m";
    return isA2m ? byEnding : writeOptionsNamed(origin.format);
}

} // namespace

void Workbench::showAndOpen(std::vector<fs::path> files, const std::function<void()> &beforeTexts)
{
    if (shownWindow() == nullptr && areQuicklyOpened(files) &&
        !m_Plugins.alignmentViewers().empty()) {
        m_FirstPlaces->expectWorkbench(MainWindow::firstPlace());
        m_LateWindow->expect();
    } else {
        beforeTexts();
        window().show();
    }
    openAtStart(std::move(files));
    beforeTexts();
    prepareFonts();
}

void Workbench::openAtStart(std::vector<fs::path> files)
{
    QStringList sessionFiles;
    std::erase_if(files, [&sessionFiles](const fs::path &file) {
        const bool isSession = sessions::isSessionFile(file);
        if (isSession)
            sessionFiles << toText(file);
        return isSession;
    });
    const auto loadOthers = [this](const LoadReport &before, std::vector<fs::path> others) {
        connect(
            &m_Loader, &Loader::finished, this,
            [this, failures = before.failures](LoadReport report) {
                report.failures.insert(report.failures.begin(), failures.begin(), failures.end());
                showAtStart(report);
            },
            Qt::SingleShotConnection);
        load(std::move(others));
    };
    if (sessionFiles.isEmpty())
        return loadOthers({}, files);
    QStringList others;
    std::ranges::transform(files, std::back_inserter(others), toText);
    sessions().open(
        sessionFiles, others,
        [this, loadOthers](const LoadReport &report, const QStringList &here) {
            if (here.isEmpty())
                finishStart(report);
            else
                loadOthers(report, toPaths(here));
        },
        [this] { finishStart({}); });
}

void Workbench::load(std::vector<fs::path> files)
{
    m_Arriving.begin(files);
    if (m_LiveStore != nullptr)
        m_LiveStore->writeStepValues();
    if (!files.empty())
        m_PicksBefore.push_back(m_Window == nullptr ? 0 : m_Window->tree().userPicks());
    m_Loader.open(std::move(files));
}

void Workbench::showAtStart(const LoadReport &report)
{
    // An editor by itself stands beside the workbench.
    if (!m_ToolsAtStart.empty() && !report.alignments.empty())
        m_FirstPlaces->shareRoom(m_ToolsAtStart.size() + 1);
    QWidget *const editor =
        report.alignments.empty() ? nullptr : openInEditor(report.alignments.front());
    if (editor != nullptr)
        m_LateWindow->showBelow(*editor);
    else
        m_LateWindow->showNow();
    finishStart(report);
}

void Workbench::finishStart(const LoadReport &report)
{
    openToolsAtStart();
    m_FirstPlaces->shareRoom(0);
    emit started(report);
}

Result<void> Workbench::setToolsAtStart(const std::vector<std::string> &titles)
{
    for (const std::string &title : titles) {
        const auto tool = m_Plugins.toolCalled(QString::fromStdString(title));
        if (!tool)
            return tool.error();
        m_ToolsAtStart.push_back(tool.value());
    }
    return {};
}

void Workbench::openToolsAtStart()
{
    for (const services::PluginRecord *const tool : std::exchange(m_ToolsAtStart, {}))
        openTool(*tool);
}

void Workbench::open(const QStringList &files)
{
    QStringList others = files;
    const QStringList sessionFiles = SessionCommands::takeSessions(others);
    if (sessionFiles.isEmpty())
        return load(others);
    sessions().open(sessionFiles, others, [this](const LoadReport &, const QStringList &here) {
        if (!here.isEmpty())
            load(here);
    });
}

void Workbench::openHandedOver(const QStringList &files)
{
    window().show();
    window().setWindowState(window().windowState() & ~Qt::WindowMinimized);
    window().raise();
    window().activateWindow();
    // It waits for no answer to a question.
    if (m_Scripts->isRunning()) {
        connect(
            m_Scripts.get(), &ScriptDesk::ended, this, [this, files] { openHandedOver(files); },
            Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
        return;
    }
    const std::vector<fs::path> asked = toPaths(files);
    // Sessions bring their windows along. Other commands may be under way.
    if (std::ranges::none_of(asked, sessions::isSessionFile)) {
        auto *const waiting = new QObject(this);
        connect(&m_Loader, &Loader::finished, waiting,
                [this, waiting, asked](const LoadReport &report) {
                    if (report.asked != asked)
                        return;
                    waiting->deleteLater();
                    disconnect(&m_Loader, nullptr, waiting, nullptr);
                    if (!report.alignments.empty())
                        openInEditor(report.alignments.front());
                });
    }
    open(files);
}

QString Workbench::exampleFile()
{
    return services::Directories::shared() + QStringLiteral("/examples/serine_proteases.ali");
}

void Workbench::openExample()
{
    // Without it the alignment is an example still.
    static_cast<void>(setToolsAtStart({kExampleTool}));
    openAtStart({toPath(exampleFile())});
}

void Workbench::load(const QStringList &files)
{
    load(toPaths(files));
}

void Workbench::paste()
{
    const QMimeData *const data = QGuiApplication::clipboard()->mimeData();
    if (const QStringList files = data == nullptr ? QStringList() : localFiles(*data);
        !files.isEmpty())
        return open(files);
    const QString text = data == nullptr ? QString() : data->text();
    if (text.trimmed().isEmpty())
        return say(tr("There is no text on the clipboard."));
    const Result<fs::path> file = m_Pasted.add(text);
    if (!file)
        return tellFailure(tr("Nothing could be pasted."),
                           {QString::fromStdString(file.error().message())});
    load({file.value()});
}

bool Workbench::askAndOpen(QWidget *parent)
{
    const QStringList files = askFilesToOpen(parent);
    open(files);
    return !files.isEmpty();
}

bool Workbench::addFiles(const AddFilesRequest &request)
{
    if (m_Attendance != Attendance::User)
        return false;
    const auto alignment =
        std::make_shared<ObjectReferences>(std::vector<Compound *>{request.alignment});
    QStringList files = askFilesToOpen(QApplication::activeWindow(), OpenPurpose::AddAndAlign);
    if (files.isEmpty() || alignment->objects().empty())
        return true;
    const QStringList sessionFiles = SessionCommands::takeSessions(files);
    if (!sessionFiles.isEmpty()) {
        tellFailure(tr("Nothing was opened and added."),
                    {tr("%1 is a session, which only Open opens.").arg(sessionFiles.front())});
        return false;
    }
    const std::vector<fs::path> paths = toPaths(files);
    m_OpenedSequences.await(
        paths, [this, alignment, tell = request.tell](const std::vector<Compound *> &sequences) {
            if (alignment->objects().empty())
                return tell(tr("Nothing was added: the alignment is not there any more"));
            AddSequencesRequest added{
                dynamic_cast<Alignment *>(alignment->objects().front()), sequences, {}};
            if (addSequences(added))
                tell(added.told);
        });
    load(paths);
    // They are a part of what is worked on: what is picked in the tree stays so.
    m_PicksBefore.back() = std::numeric_limits<std::size_t>::max();
    return true;
}

void Workbench::filesOpened(const LoadReport &report)
{
    m_Arriving.end(report.asked);
    for (std::size_t i = 0; i < report.structures.size(); ++i)
        noteOpened(*report.structures[i], report.structureOrigins[i]);
    for (std::size_t i = 0; i < report.alignments.size(); ++i)
        noteOpened(*report.alignments[i], report.alignmentOrigins[i]);
    if (m_LiveStore != nullptr)
        m_LiveStore->writeStepValues();
    rememberFiles(report);
    pickOpened(report);
    tellFailures(report);
    m_OpenedSequences.arrived(report);
    emit opened(report);
}

// Commands end in the order in which they were given.
void Workbench::pickOpened(const LoadReport &report)
{
    if (m_PicksBefore.empty())
        return;
    const std::size_t before = m_PicksBefore.front();
    m_PicksBefore.pop_front();
    std::vector<Compound *> objects(report.structures.begin(), report.structures.end());
    objects.insert(objects.end(), report.alignments.begin(), report.alignments.end());
    objects.insert(objects.end(), report.sequences.begin(), report.sequences.end());
    if (objects.empty())
        return;
    const auto alive = std::make_shared<const ObjectReferences>(std::move(objects));
    inWindow([alive, before](MainWindow &window) {
        if (window.tree().userPicks() == before)
            window.tree().pick(alive->objects());
    });
}

// They lie in the folder of their family. It is no file to save them to: what they are there, the
// engine has made them.
void Workbench::modelsOpened(const LoadReport &report)
{
    for (const Structure *const model : report.structures)
        m_History.markSaved(*model);
    if (m_LiveStore != nullptr)
        m_LiveStore->writeStepValues();
    tellFailures(report);
    emit opened(report);
}

// What has just been read is as it is on the disk.
void Workbench::noteOpened(const Compound &object, const LoadReport::Origin &origin)
{
    // It has no file to be saved to.
    if (m_Pasted.has(origin.file))
        return;
    const std::optional<WriteOptions> options = optionsOf(origin);
    const bool isStructure = object.Kind() == CompoundKind::Structure;
    if (options)
        m_Places.noteOpened(
            object, {toText(origin.file), *options, origin.isWhole, isStructure, origin.state});
    else
        m_History.markSaved(object);
}

void Workbench::rememberFiles(const LoadReport &report)
{
    QStringList files;
    for (const fs::path &file : report.read) {
        if (m_Pasted.has(file))
            return say(tr("Pasted what was on the clipboard"));
    }
    for (const fs::path &file : report.asked) {
        if (std::ranges::find(report.read, file) != report.read.end())
            files << toText(file);
    }
    if (files.isEmpty())
        return;
    m_RecentFiles->add(files);
    say(files.size() == 1 ? tr("Opened %1").arg(QFileInfo(files.front()).fileName())
                          : tr("Opened %L1 files").arg(files.size()));
}

void Workbench::tellFailures(const LoadReport &report)
{
    if (report.failures.empty())
        return;
    QStringList lines;
    for (const FileFailure &failure : report.failures)
        lines << QString::fromStdString(failure.failure.message());
    if (report.asked.size() == 1 && m_Pasted.has(report.asked.front()))
        return tellFailure(tr("What is on the clipboard could not be read."), lines);
    tellFailure(lines.size() == 1 ? tr("A file could not be opened.")
                                  : tr("%L1 files could not be opened.").arg(lines.size()),
                lines);
}

void Workbench::tellFailure(const QString &headline, const QStringList &causes)
{
    if (m_Attendance == Attendance::User)
        boxes().show(headline, causes);
}

} // namespace TAMBO::app
