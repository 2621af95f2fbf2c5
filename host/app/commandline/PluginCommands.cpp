// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginCommands.h"

#include "CommandLine.h"
#include "ExitStatus.h"
#include "FormatText.h"
#include "Loader.h"
#include "Logger.h"
#include "ObjectSources.h"
#include "ObjectSpace.h"
#include "OpenedSession.h"
#include "PluginManager.h"
#include "Plugins.h"
#include "ProgramCommand.h"
#include "SessionFile.h"

#include <QFile>
#include <QIODevice>

#include <algorithm>
#include <filesystem>

namespace TAMBO::app {

namespace {

using services::PluginRecord;

// Where what a command does begins in the usage of the program.
constexpr qsizetype kSummaryColumn = 37;

Result<void> loadSessionAlone(const std::filesystem::path &file)
{
    if (ObjectSpace::get().objectCount() > 0)
        return Failure{FailureKind::Refused,
                       "a session is opened before other files",
                       {formats::cleanText(file.filename().string())}};
    return OpenedSession::loadObjects(file);
}

bool openFor(QIODevice &errors, const QString &file)
{
    const std::filesystem::path path = QFile::encodeName(file).toStdString();
    if (sessions::isSessionFile(path)) {
        const Result<void> loaded = loadSessionAlone(path);
        if (!loaded)
            errors.write("tambo: " + QByteArray::fromStdString(loaded.error().message()) + '\n');
        return loaded.has_value();
    }
    ObjectSources sources;
    Loader loader(sources);
    const LoadReport report = loader.openNow(path);
    for (const FileFailure &failure : report.failures)
        errors.write("tambo: " + QByteArray::fromStdString(failure.failure.message()) + '\n');
    return report.failures.empty();
}

} // namespace

PluginCommands::PluginCommands(Plugins &plugins) : m_Plugins(plugins)
{
    for (const PluginRecord &plugin : plugins.loader().records()) {
        if (plugin.state == services::PluginState::Overruled)
            continue;
        for (const services::PluginCommand &command : plugin.descriptor.commands) {
            const Offer *const first = find(command.word);
            if (first == nullptr && !isOwnCommand(command.word.toStdString())) {
                m_Offers.push_back({command, &plugin});
                continue;
            }
            const QString owner =
                first == nullptr ? QStringLiteral("the program itself") : first->plugin->name;
            Logger::Write(QStringLiteral("The command %1 of %2 is not used, since %3 has one of "
                                         "this name")
                              .arg(command.word, plugin.name, owner),
                          Logger::Severity::Warning);
        }
    }
}

const PluginCommands::Offer *PluginCommands::find(const QString &word) const
{
    const auto found = std::ranges::find_if(
        m_Offers, [&](const Offer &offer) { return offer.command.word == word; });
    return found == m_Offers.end() ? nullptr : &*found;
}

std::string PluginCommands::usageText() const
{
    if (m_Offers.empty())
        return {};
    QString text = QStringLiteral("\nPlug-ins add these:\n");
    for (const Offer &offer : m_Offers) {
        QString line = QStringLiteral("       tambo ") + offer.command.word;
        const QString summary = offer.command.summary.isEmpty()
                                    ? QStringLiteral("of %1").arg(Plugins::titleOf(*offer.plugin))
                                    : offer.command.summary;
        line = line.size() < kSummaryColumn ? line.leftJustified(kSummaryColumn)
                                            : line + u'\n' + QString(kSummaryColumn, u' ');
        text += line + summary + u'\n';
    }
    return text.toStdString();
}

int PluginCommands::run(const QString &word, const QStringList &arguments, QIODevice &output,
                        QIODevice &errors)
{
    const auto complain = [&](const QString &sentence) {
        errors.write("tambo: " + sentence.toLocal8Bit() + '\n');
        return kBadInput;
    };
    const Offer *const offer = find(word);
    if (offer == nullptr)
        return complain(QStringLiteral("no plug-in has a command %1").arg(word));
    const PluginRecord &plugin = m_Plugins.load(*offer->plugin);
    if (!plugin.isUsable())
        return complain(QStringLiteral("%1 cannot be used: %2").arg(word, plugin.reason));

    ProgramCommand call;
    call.arguments = arguments;
    call.output = &output;
    call.errors = &errors;
    call.openFile = [&errors](const QString &file) { return openFor(errors, file); };
    using Outcome = PluginManager::Outcome;
    const Outcome outcome =
        PluginManager::Execute(ProgramCommand::kGroup, ProgramCommand::kService, "tambo",
                               word.toStdString(), static_cast<void *>(&call));
    m_Plugins.shutDown();
    switch (outcome) {
    case Outcome::Done:
        return call.exitStatus;
    case Outcome::Failed:
        return complain(QStringLiteral("%1 failed").arg(word));
    case Outcome::NoService:
    case Outcome::NoCommand:
        break;
    }
    return complain(QStringLiteral("%1 does not answer the command %2, which its descriptor "
                                   "promises")
                        .arg(plugin.name, word));
}

} // namespace TAMBO::app
