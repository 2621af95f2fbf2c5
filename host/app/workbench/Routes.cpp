// SPDX-License-Identifier: GPL-3.0-or-later
#include "Routes.h"

#include "Alignment.h"
#include "ChangeScope.h"
#include "Config.h"
#include "KeptState.h"
#include "Logger.h"
#include "ModelReader.h"
#include "ObjectFacts.h"
#include "ObjectReferences.h"
#include "PluginRoutes.h"
#include "WorkbenchCommands.h"
#include "WritableObject.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include <memory>
#include <utility>

namespace TAMBO::app {

namespace {

using services::PluginRoutes;

QString scratch()
{
    return QString::fromStdString(Config::GetPersonalTmpDir());
}

bool isTemporary(const QString &path)
{
    return QFileInfo(path).absoluteFilePath().startsWith(scratch() + '/');
}

// Callers hand over Latin-1, in which letters of the scratch folder may have got lost.
QString fromLatin1Path(const char *path)
{
    const QByteArray given(path);
    const QByteArray folder = scratch().toLatin1() + '/';
    if (given.startsWith(folder))
        return scratch() + '/' + QString::fromLatin1(given.mid(folder.size()));
    return QString::fromLatin1(given);
}

} // namespace

Routes::Routes(Loader &loader, Actions actions) : m_Loader(&loader), m_Actions(std::move(actions))
{
    PluginRoutes &routes = PluginRoutes::instance();
    const auto command = [&routes](const CommandName &name, PluginRoutes::Handler handler) {
        routes.registerCommand(name.group, name.service, name.command, std::move(handler));
    };
    const auto execute = [&routes](const CommandName &name, PluginRoutes::Handler handler) {
        routes.registerExecute(name.group, name.service, name.command, std::move(handler));
    };
    execute(WorkbenchCommands::kOpenFile,
            [this](const PluginCall &call) { return openFile(call); });
    command(WorkbenchCommands::kReadStructure,
            [this](const PluginCall &call) { return readPdb(call); });
    command(WorkbenchCommands::kSaveAlignment,
            [this](const PluginCall &call) { return savePir(call); });
    execute(WorkbenchCommands::kRealign, [this](const PluginCall &call) { return realign(call); });
    execute(WorkbenchCommands::kRealignAll,
            [this](const PluginCall &call) { return realignAll(call); });
    execute(WorkbenchCommands::kAlignRows,
            [this](const PluginCall &call) { return alignRows(call); });
    execute(WorkbenchCommands::kAddSequences,
            [this](const PluginCall &call) { return addSequences(call); });
    execute(WorkbenchCommands::kAddFiles,
            [this](const PluginCall &call) { return addFiles(call); });
    execute(WorkbenchCommands::kShowAlignment,
            [this](const PluginCall &call) { return show(call); });
    execute(WorkbenchCommands::kExportAlignment,
            [this](const PluginCall &call) { return exportTo(call); });
    execute(WorkbenchCommands::kSaveAlignmentAs,
            [this](const PluginCall &call) { return saveAs(call); });
}

Routes::~Routes()
{
    PluginRoutes &routes = PluginRoutes::instance();
    for (const CommandName &name : WorkbenchCommands::kAll) {
        routes.removeCommand(name.group, name.service, name.command);
        routes.removeExecute(name.group, name.service, name.command);
    }
}

// Choosing nothing is no failure.
bool Routes::openFile(const PluginCall &call)
{
    const bool isChosen = m_Actions.askAndOpen(QApplication::activeWindow());
    if (call.data != nullptr)
        *static_cast<bool *>(call.data) = isChosen;
    return true;
}

bool Routes::readPdb(const PluginCall &call)
{
    const auto *path = static_cast<const char *>(call.readOnlyData);
    if (path == nullptr) {
        Logger::Write(QStringLiteral("ReadPDB: there is no file name."), Logger::Severity::Error);
        return false;
    }
    const QString name = fromLatin1Path(path);
    const std::filesystem::path file = QFile::encodeName(name).toStdString();
    const bool isModel = isTemporary(name) && ModelReader::isModel(file);
    // Read at once, since the next job writes over it; made into objects when that is allowed.
    std::function<LoadReport()> make;
    if (isModel) {
        const auto reader = std::make_shared<ModelReader>(*m_Loader, file);
        make = [reader] { return reader->read(); };
    } else {
        const auto outcome = std::make_shared<ReadOutcome>(Loader::readNow(file));
        make = [loader = m_Loader, outcome] {
            const ArrivalScope arrival;
            return loader->makeObjects(*outcome);
        };
    }
    // Nobody waits for what has to wait.
    const auto isRead = std::make_shared<bool>(true);
    whenNothingIsPublished(
        [loader = m_Loader, tell = m_Actions.tellBadFiles, make, isModel, isRead] {
            if (loader == nullptr)
                return;
            const LoadReport report = make();
            if (!isModel)
                tell(report);
            *isRead = report.failures.empty() && !report.structures.empty();
        });
    return *isRead;
}

bool Routes::realign(const PluginCall &call)
{
    auto *alignment = static_cast<Alignment *>(call.data);
    return alignment != nullptr && m_Actions.realign(*alignment);
}

bool Routes::realignAll(const PluginCall &call)
{
    auto *request = static_cast<RealignRequest *>(call.data);
    return request != nullptr && request->alignment != nullptr && m_Actions.realignAll(*request);
}

bool Routes::alignRows(const PluginCall &call)
{
    auto *request = static_cast<AlignRowsRequest *>(call.data);
    return request != nullptr && request->alignment != nullptr && m_Actions.alignRows(*request);
}

bool Routes::addSequences(const PluginCall &call)
{
    auto *request = static_cast<AddSequencesRequest *>(call.data);
    return request != nullptr && request->alignment != nullptr && m_Actions.addSequences(*request);
}

bool Routes::addFiles(const PluginCall &call)
{
    const auto *request = static_cast<const AddFilesRequest *>(call.data);
    return request != nullptr && request->alignment != nullptr && m_Actions.addFiles(*request);
}

bool Routes::show(const PluginCall &call)
{
    auto *alignment = static_cast<Alignment *>(call.data);
    return alignment != nullptr && m_Actions.show(*alignment);
}

bool Routes::exportTo(const PluginCall &call)
{
    auto *alignment = static_cast<Alignment *>(call.data);
    if (alignment != nullptr)
        m_Actions.exportTo(*alignment);
    return alignment != nullptr;
}

bool Routes::saveAs(const PluginCall &call)
{
    auto *alignment = static_cast<Alignment *>(call.data);
    if (alignment != nullptr)
        m_Actions.saveAs(*alignment);
    return alignment != nullptr;
}

// The file is complete, or as it was, when this returns.
bool Routes::savePir(const PluginCall &call)
{
    const auto *request = static_cast<const SaveRequest *>(call.data);
    if (request == nullptr || request->alignment == nullptr || request->path.isEmpty()) {
        Logger::Write(QStringLiteral("SaveALI: there is nothing to save."),
                      Logger::Severity::Error);
        return false;
    }
    const WriteOptions pir;
    // A file that another program is given is gone tomorrow: the user's work is not saved by it.
    // Whoever asks for it has more to do with his objects, and is not kept from that.
    const bool isForUser = !isTemporary(request->path);
    const QString path = request->path;
    const QString name = nameText(*request->alignment);
    // It may go while the file is written.
    const ObjectReferences reference({request->alignment});
    const std::unique_ptr<KeptState> state =
        isForUser && m_Actions.keepState ? m_Actions.keepState(*request->alignment) : nullptr;
    const auto object = isForUser ? WritableObject::asked(*request->alignment)
                                  : std::make_shared<const WritableObject>(*request->alignment);
    const Result<void> written = object == nullptr ? Failure{FailureKind::Cancelled, {}}
                                 : isForUser && m_Actions.write ? m_Actions.write(object, path, pir)
                                                                : object->write(path, pir);
    if (!written && written.error().kind == FailureKind::Cancelled) {
        Logger::Write(QStringLiteral("Saving %1 was cancelled; %2 is as it was.").arg(name, path));
        return false;
    }
    if (!written) {
        const QString cause = QString::fromStdString(written.error().message());
        Logger::Write(cause, Logger::Severity::Error);
        // Whoever calls shows nothing.
        m_Actions.tellFailure(QStringLiteral("%1 could not be saved.").arg(name), {cause});
        return false;
    }
    Logger::Write(QStringLiteral("Saved %1 to %2").arg(name, path));
    const QStringList losses = object->losses(pir);
    if (!losses.isEmpty())
        Logger::Write(QFileInfo(path).fileName() + QStringLiteral(": ") + losses.join(u' '),
                      Logger::Severity::Warning);
    if (isForUser && !reference.objects().empty())
        m_Actions.noteWritten(dynamic_cast<Alignment &>(*reference.objects().front()), path, losses,
                              state.get());
    return true;
}

} // namespace TAMBO::app
