// SPDX-License-Identifier: GPL-3.0-or-later
// The program `tambo`: the workbench, or a command that needs no window.
#include "Application.h"
#include "ColorPicking.h"
#include "CommandLine.h"
#include "Config.h"
#include "ConvertCommand.h"
#include "EndSignals.h"
#include "ExitStatus.h"
#include "FontSettings.h"
#include "HandedFiles.h"
#include "HandoverSocket.h"
#include "IdentityCommand.h"
#include "InfoCommand.h"
#include "MainWindow.h"
#include "ModellingTools.h"
#include "ModelsCommand.h"
#include "PaintedWindows.h"
#include "Picture.h"
#include "PluginCommands.h"
#include "Plugins.h"
#include "PrintCommand.h"
#include "PrivateDirectory.h"
#include "Readability.h"
#include "ScriptCommand.h"
#include "Services.h"
#include "Workbench.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QPixmap>
#include <QStyle>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

using TAMBO::app::CommandLine;
using TAMBO::app::FontSettings;
using TAMBO::app::kBadInput;
using TAMBO::app::kWrongCall;
using TAMBO::app::LoadReport;
using TAMBO::app::whenPainted;
using TAMBO::app::Workbench;

int complain(const std::string &sentence, int status)
{
    std::cerr << "tambo: " << sentence << '\n';
    return status;
}

// What the toolkit said while it looked for a screen.
QStringList s_StartMessages;

// The toolkit gives up with several lines and a core dump when there is no screen.
void takeStartMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtFatalMsg) {
        s_StartMessages << text;
        return;
    }
    std::cerr << "tambo: no screen can be opened; \"tambo info FILE\" needs none" << std::endl;
    std::_Exit(kWrongCall);
}

// To standard error, for whoever started the program.
int tellBadFiles(const LoadReport &report)
{
    int status = EXIT_SUCCESS;
    for (const TAMBO::FileFailure &failure : report.failures)
        status = complain(failure.failure.message(), kBadInput);
    return status;
}

// For those who measure how long opening takes.
bool endsWhenPainted()
{
    return !qEnvironmentVariableIsEmpty("TAMBO_EXIT_WHEN_PAINTED");
}

// The call as if it named the example's files.
CommandLine withExample(CommandLine line)
{
    if (!line.withExample)
        return line;
    line.files.insert(line.files.begin(),
                      QFile::encodeName(Workbench::exampleFile()).toStdString());
    if (line.tools.empty())
        line.tools = {Workbench::kExampleTool};
    return line;
}

// Whether another workbench may open the files just as well.
bool mayHandOver(const CommandLine &line)
{
    return line.mode == CommandLine::Mode::Workbench && !line.files.empty() && line.tools.empty() &&
           !line.inNewWorkbench && !endsWhenPainted();
}

QStringList asNames(const std::vector<std::string> &files)
{
    QStringList names;
    for (const std::string &file : files)
        names << QFile::decodeName(file.c_str());
    return names;
}

// Blocks of a megabyte, in which the rows of large files are read, go back to the system as soon as
// they are freed, however many small objects have been made meanwhile.
void returnLargeBlocks()
{
#ifdef __GLIBC__
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
    mallopt(M_TRIM_THRESHOLD, 1 << 20);
#endif
}

// Every menu bar asks the style for the first one, and the first picture of all has the toolkit
// load its libraries for pictures. The other one is the icon of the editor's window; the toolkit
// keeps a picture that was read a moment ago.
void preparePictures(const TAMBO::app::Plugins &plugins)
{
    static_cast<void>(
        QApplication::style()->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton));
    const auto viewers = plugins.alignmentViewers();
    if (viewers.empty())
        return;
    const std::string name = viewers.front()->descriptor.name.toStdString();
    const std::string icon = Config::GetSetting(name, "Icon").ToString();
    if (!icon.empty())
        QPixmap().load(QString::fromStdString(Config::GetIconDir() + '/' + icon));
}

int runWorkbench(const CommandLine &line, std::optional<FontSettings> &fonts)
{
    Workbench workbench;
    if (const TAMBO::Result<void> known = workbench.setToolsAtStart(line.tools); !known)
        return complain(known.error().message(), kWrongCall);
    preparePictures(workbench.plugins());
    // Before there may be texts; as late as can be, since it takes longer than all that is done
    // meanwhile.
    const auto waitForFonts = [&fonts] { fonts.reset(); };
    int status = EXIT_SUCCESS;
    QObject::connect(&workbench, &Workbench::started, qApp, [&](const LoadReport &report) {
        status = tellBadFiles(report);
        if (endsWhenPainted())
            whenPainted(workbench, [&status] { QApplication::exit(status); });
    });
    const auto begin = [&] {
        workbench.keepWork();
        // Files are read while the windows come up.
        if (!line.files.empty())
            return workbench.showAndOpen({line.files.begin(), line.files.end()}, waitForFonts);
        waitForFonts();
        workbench.window().show();
        workbench.openToolsAtStart();
        if (endsWhenPainted())
            whenPainted(workbench, [] { QApplication::exit(EXIT_SUCCESS); });
    };
    // Questions are for somebody who sees the window.
    const bool mayAsk = Workbench::mayHaveLeftWork();
    if (mayAsk) {
        waitForFonts();
        workbench.window().show();
    } else {
        begin();
    }
    const TAMBO::app::HandedFiles handed(TAMBO::services::personalScratchDirectory());
    QObject::connect(&handed, &TAMBO::app::HandedFiles::taken, &workbench,
                     &Workbench::openHandedOver);
    const TAMBO::app::EndSignals endSignals;
    QObject::connect(&endSignals, &TAMBO::app::EndSignals::asked, &workbench,
                     &Workbench::endOnRequest);
    if (mayAsk)
        QTimer::singleShot(0, &workbench, begin);
    const int ended = QApplication::exec();
    return ended != EXIT_SUCCESS ? ended : status;
}

int runPicture(const CommandLine &line)
{
    Workbench workbench(Workbench::Attendance::Nobody);
    if (const TAMBO::Result<void> known = workbench.setToolsAtStart(line.tools); !known)
        return complain(known.error().message(), kWrongCall);
    QObject::connect(&workbench, &Workbench::started, qApp, [&](const LoadReport &report) {
        const int status = tellBadFiles(report);
        if (status != EXIT_SUCCESS)
            return QApplication::exit(status);
        whenPainted(workbench, [&] {
            const TAMBO::Result<void> written = TAMBO::app::writePicture(
                QString::fromStdString(line.picture),
                TAMBO::app::sideBySide(TAMBO::app::shownWindows(workbench)));
            QApplication::exit(written ? EXIT_SUCCESS
                                       : complain(written.error().message(), kBadInput));
        });
    });
    workbench.openAtStart({line.files.begin(), line.files.end()});
    workbench.window().show();
    return QApplication::exec();
}

void introduce()
{
    QApplication::setApplicationName(QStringLiteral("tambo"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(QStringLiteral(TAMBO_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(
        QIcon(QString::fromStdString(Config::GetIconDir()) + QStringLiteral("/tambo.svg")));
    TAMBO::services::installServices();
}

// The words of the call are not for the toolkit, and what it has to say is not for scripts.
int runWithoutScreen(const std::function<int()> &command, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(takeStartMessage);
    int argc = 1;
    const TAMBO::app::Application application(argc, argv);
    introduce();
    return command();
}

// A call whose first word is the command of a plug-in, or neither that nor a file. Nothing when it
// is for the program itself.
std::optional<int> runPluginCommand(const std::vector<std::string> &words, char **argv)
{
    if (!TAMBO::app::mayBePluginCommand(words))
        return std::nullopt;
    QStringList arguments;
    for (const std::string &word : words)
        arguments << QFile::decodeName(word.c_str());
    const QString word = arguments.takeFirst();
    TAMBO::app::Plugins plugins;
    plugins.find();
    TAMBO::app::PluginCommands commands(plugins);
    if (!commands.offers(word)) {
        if (QFileInfo::exists(word))
            return std::nullopt;
        return complain("there is no file " + words.front() +
                            ", and no plug-in has a command of this name; see tambo --help",
                        kWrongCall);
    }
    QFile output;
    QFile errors;
    if (!output.open(stdout, QIODevice::WriteOnly) || !errors.open(stderr, QIODevice::WriteOnly))
        return complain("standard output cannot be written", kBadInput);
    const int status =
        runWithoutScreen([&] { return commands.run(word, arguments, output, errors); }, argv);
    errors.flush();
    if (!output.flush())
        return complain("standard output cannot be written", kBadInput);
    return status;
}

std::string usageOfPlugins()
{
    TAMBO::app::Plugins plugins;
    plugins.find();
    return TAMBO::app::PluginCommands(plugins).usageText();
}

int runWindows(const CommandLine &line, int argc, char **argv)
{
    const QtMessageHandler standard = qInstallMessageHandler(takeStartMessage);
    std::optional<FontSettings> fonts(std::in_place);
    const TAMBO::app::Application application(argc, argv);
    qInstallMessageHandler(standard);
    introduce();
    TAMBO::services::makeReadable();
    TAMBO::services::restoreOwnColors();
    // Not before there is a log.
    for (const QString &message : std::exchange(s_StartMessages, {}))
        qWarning("%s", qPrintable(message));
    TAMBO::app::ModellingTools(QCoreApplication::applicationDirPath()).offer();
    if (line.mode == CommandLine::Mode::Workbench)
        return runWorkbench(line, fonts);
    fonts.reset();
    return runPicture(line);
}

} // namespace

int main(int argc, char **argv)
{
    returnLargeBlocks();
    const std::vector<std::string> words(argv + std::min(1, argc), argv + argc);
    if (const std::optional<int> status = runPluginCommand(words, argv))
        return *status;
    const TAMBO::Result<CommandLine> parsed = TAMBO::app::parseCommandLine(words);
    if (!parsed)
        return complain(parsed.error().message() + "; see tambo --help", kWrongCall);
    const CommandLine line = withExample(parsed.value());
    if (mayHandOver(line) &&
        TAMBO::app::handOver(TAMBO::services::personalScratchDirectory(), asNames(line.files)))
        return EXIT_SUCCESS;
    switch (line.mode) {
    case CommandLine::Mode::Help:
        std::cout << TAMBO::app::usageText() << usageOfPlugins();
        return EXIT_SUCCESS;
    case CommandLine::Mode::Version:
        std::cout << "tambo " TAMBO_VERSION "\n";
        return EXIT_SUCCESS;
    case CommandLine::Mode::Info:
        return TAMBO::app::runInfo(line.files, std::cout, std::cerr);
    case CommandLine::Mode::Convert:
        return TAMBO::app::runConvert(line.convert, std::cerr);
    case CommandLine::Mode::Identity:
        return TAMBO::app::runIdentity(line.files.front(), std::cout, std::cerr);
    case CommandLine::Mode::Print:
        return runWithoutScreen([&] { return TAMBO::app::runPrint(line.print, std::cerr); }, argv);
    case CommandLine::Mode::Models:
        return TAMBO::app::runModels(
            line.models,
            [argv](const std::function<int()> &work) { return runWithoutScreen(work, argv); },
            std::cout, std::cerr);
    case CommandLine::Mode::Script:
        return TAMBO::app::runScriptCommand(line.script, std::cerr);
    case CommandLine::Mode::Workbench:
    case CommandLine::Mode::Picture:
        break;
    }
    return runWindows(line, argc, argv);
}
