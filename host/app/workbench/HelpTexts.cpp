// SPDX-License-Identifier: GPL-3.0-or-later
#include "HelpTexts.h"

#include "Directories.h"
#include "KitVersion.h"
#include "LogBook.h"
#include "ModellingTools.h"
#include "PluginLoader.h"
#include "Plugins.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QGuiApplication>
#include <QMessageBox>
#include <QObject>
#include <QScreen>
#include <QSysInfo>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>

namespace TAMBO::app {

namespace {

constexpr QSize kNewsSize(760, 620);
constexpr std::size_t kReportLines = 200;

QString lineKindText(const services::LogEntry &entry)
{
    if (entry.isForDevelopers)
        return QStringLiteral("check");
    switch (entry.severity) {
    case Logger::Severity::Info:
        return QStringLiteral("info");
    case Logger::Severity::Warning:
        return QStringLiteral("warning");
    case Logger::Severity::Error:
        return QStringLiteral("error");
    }
    return {};
}

QString screenText()
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return QStringLiteral("none");
    return QStringLiteral("%1, %2 x %3, scale %4")
        .arg(QGuiApplication::platformName())
        .arg(screen->size().width())
        .arg(screen->size().height())
        .arg(screen->devicePixelRatio());
}

} // namespace

QString reportText(const Plugins &plugins)
{
    QString text =
        QStringLiteral("Tambo %1, kit %2.%3\nQt %4\nSystem: %5, %6, kernel %7\nScreen: %8\n")
            .arg(QCoreApplication::applicationVersion())
            .arg(kKitMajor)
            .arg(kKitMinor)
            .arg(QString::fromLatin1(qVersion()), QSysInfo::prettyProductName(),
                 QSysInfo::currentCpuArchitecture(), QSysInfo::kernelVersion(), screenText());
    text += QStringLiteral("Modelling: %1\n\nPlug-ins:\n")
                .arg(ModellingTools(QCoreApplication::applicationDirPath()).stateText());
    for (const services::PluginRecord &plugin : plugins.loader().records())
        text +=
            QStringLiteral("  %1 (%2)%3\n")
                .arg(Plugins::titleOf(plugin), plugin.file,
                     plugin.reason.isEmpty() ? QString() : QStringLiteral(": ") + plugin.reason);
    const std::vector<services::LogEntry> entries = services::LogBook::instance().entries();
    const std::size_t told = std::min(entries.size(), kReportLines);
    text += QStringLiteral("\nThe last %1 of %2 lines of the log (%3):\n")
                .arg(told)
                .arg(entries.size())
                .arg(services::LogBook::instance().path());
    for (auto entry = entries.end() - std::ptrdiff_t(told); entry != entries.end(); ++entry)
        text +=
            QStringLiteral("%1 %2: %3\n")
                .arg(entry->time.toString(Qt::ISODateWithMs), lineKindText(*entry), entry->text);
    return text;
}

void copyReport(const Plugins &plugins)
{
    QGuiApplication::clipboard()->setText(reportText(plugins));
}

void showNews(QWidget *parent)
{
    QFile file(services::Directories::shared() + QStringLiteral("/CHANGELOG.md"));
    const QString text =
        file.open(QIODevice::ReadOnly)
            ? QString::fromUtf8(file.readAll())
            : QStringLiteral("%1 cannot be read: %2").arg(file.fileName(), file.errorString());
    auto *const dialog = new QDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QCoreApplication::translate("MainWindow", "What is New"));
    auto *const column = new QVBoxLayout(dialog);
    auto *const pages = new QTextBrowser;
    pages->setAccessibleName(dialog->windowTitle());
    pages->setOpenLinks(false);
    pages->setMarkdown(text);
    column->addWidget(pages);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
    column->addWidget(buttons);
    dialog->resize(kNewsSize);
    dialog->show();
}

void showAbout(QWidget *parent)
{
    QMessageBox::about(
        parent, QObject::tr("About Tambo"),
        QObject::tr("<h3>Tambo %1</h3>"
                    "<p>A workbench for protein structures, sequences and alignments.</p>"
                    "<p>Free software under the GNU General Public License, version 3 or "
                    "later.</p>")
            .arg(QCoreApplication::applicationVersion()));
}

} // namespace TAMBO::app
