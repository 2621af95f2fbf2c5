// SPDX-License-Identifier: GPL-3.0-or-later
// The program `tambo`: the workbench, or a command that needs no window.
#include "Application.h"
#include "CommandLine.h"
#include "Config.h"
#include "ConvertCommand.h"
#include "EndSignals.h"
#include "ExitStatus.h"
#include "IdentityCommand.h"
#include "InfoCommand.h"
#include "MainWindow.h"
#include "ModellingTools.h"
#include "PaintedWindows.h"
#include "Picture.h"
#include "PrintCommand.h"
#include "Services.h"
#include "Workbench.h"

#include <QApplication>
#include <QIcon>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace {

using TAMBO::app::CommandLine;
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
    for (const TAMBO::app::FileFailure &failure : report.failures)
        status = complain(failure.failure.message(), kBadInput);
    return status;
}

// For those who measure how long opening takes.
bool endsWhenPainted()
{
    return !qEnvironmentVariableIsEmpty("TAMBO_EXIT_WHEN_PAINTED");
}

int runWorkbench(const CommandLine &line)
{
    Workbench workbench;
    int status = EXIT_SUCCESS;
    QObject::connect(&workbench, &Workbench::started, qApp, [&](const LoadReport &report) {
        status = tellBadFiles(report);
        if (endsWhenPainted())
            whenPainted(workbench, [&status] { QApplication::exit(status); });
    });
    // Files are read while the windows come up.
    if (!line.files.empty())
        workbench.openAtStart({line.files.begin(), line.files.end()});
    else if (endsWhenPainted())
        whenPainted(workbench, [] { QApplication::exit(EXIT_SUCCESS); });
    workbench.window().show();
    const TAMBO::app::EndSignals endSignals;
    QObject::connect(&endSignals, &TAMBO::app::EndSignals::asked, &workbench,
                     &Workbench::endOnRequest);
    const int ended = QApplication::exec();
    return ended != EXIT_SUCCESS ? ended : status;
}

int runPicture(const CommandLine &line)
{
    Workbench workbench(Workbench::Attendance::Nobody);
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
int runWithoutScreen(const TAMBO::app::PrintOrder &order, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(takeStartMessage);
    int argc = 1;
    const TAMBO::app::Application application(argc, argv);
    introduce();
    return TAMBO::app::runPrint(order, std::cerr);
}

int runWindows(const CommandLine &line, int argc, char **argv)
{
    const QtMessageHandler standard = qInstallMessageHandler(takeStartMessage);
    const TAMBO::app::Application application(argc, argv);
    qInstallMessageHandler(standard);
    for (const QString &message : std::exchange(s_StartMessages, {}))
        qWarning("%s", qPrintable(message));
    introduce();
    TAMBO::app::ModellingTools(QCoreApplication::applicationDirPath()).offer();
    return line.mode == CommandLine::Mode::Picture ? runPicture(line) : runWorkbench(line);
}

} // namespace

int main(int argc, char **argv)
{
    const TAMBO::Result<CommandLine> parsed = TAMBO::app::parseCommandLine(
        std::vector<std::string>(argv + std::min(1, argc), argv + argc));
    if (!parsed)
        return complain(parsed.error().message() + "; see tambo --help", kWrongCall);
    const CommandLine &line = parsed.value();
    switch (line.mode) {
    case CommandLine::Mode::Help:
        std::cout << TAMBO::app::usageText();
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
        return runWithoutScreen(line.print, argv);
    case CommandLine::Mode::Workbench:
    case CommandLine::Mode::Picture:
        break;
    }
    return runWindows(line, argc, argv);
}
