// SPDX-License-Identifier: GPL-3.0-or-later
#include "Plugins.h"

#include "Alignment.h"
#include "Config.h"
#include "ConfigStore.h"
#include "Directories.h"
#include "HelpPages.h"
#include "Logger.h"
#include "SelectObjectAnswers.h"

#include <QApplication>
#include <QMetaMethod>
#include <QPointer>
#include <QWidget>

#include <algorithm>

namespace TAMBO::app {

namespace {

using services::PluginRecord;

// The slot by which a window lets the user choose the alignment to show.
constexpr const char *kChooseAlignment = "GetAlignment";
// The setting that names the plug-in to show alignments.
constexpr const char *kChosenViewer = "ShowsAlignments";

} // namespace

void Plugins::find()
{
    for (const services::PluginFolders::Library &library : m_Folders.libraries()) {
        if (!library.counts.isEmpty()) {
            m_Loader.addOverruled(library.file, library.counts);
            continue;
        }
        const PluginRecord &plugin = m_Loader.add(library.file);
        if (!plugin.isPromising())
            continue;
        const services::PluginDescriptor &descriptor = plugin.descriptor;
        services::ConfigStore::instance().addDefaults(descriptor.settings, plugin.name);
        if (!descriptor.help.isEmpty())
            services::HelpPages::instance().add(
                {titleOf(plugin), descriptor.helpName, descriptor.help});
    }
}

void Plugins::loadAll()
{
    find();
    for (const PluginRecord &plugin : m_Loader.records())
        m_Loader.open(plugin);
}

QString Plugins::titleOf(const PluginRecord &plugin)
{
    const QString &name = plugin.descriptor.name;
    const std::string title = Config::GetSetting("Plugins", name.toStdString()).ToString();
    if (!title.empty())
        return QString::fromStdString(title);
    return plugin.descriptor.title.isEmpty() ? name : plugin.descriptor.title;
}

QIcon Plugins::iconOf(const PluginRecord &plugin)
{
    const QString &own = plugin.descriptor.icon;
    return QIcon(own.isEmpty()
                     ? services::Directories::shared() + QStringLiteral("/icons/plug-in.svg")
                     : own);
}

QWidget *Plugins::open(const PluginRecord &plugin)
{
    const QWidgetList before = QApplication::topLevelWidgets();
    if (!m_Loader.execute(plugin))
        return nullptr;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() == Qt::Window && !before.contains(window)) {
            // One that has chosen no icon has the program's.
            if (!plugin.descriptor.icon.isEmpty() &&
                window->windowIcon().cacheKey() == QApplication::windowIcon().cacheKey())
                window->setWindowIcon(iconOf(plugin));
            return window;
        }
    }
    return nullptr;
}

std::vector<const PluginRecord *> Plugins::alignmentViewers() const
{
    std::vector<const PluginRecord *> viewers;
    for (const PluginRecord &plugin : m_Loader.records())
        if (plugin.showsAlignments())
            viewers.push_back(&plugin);
    const QString chosen =
        QString::fromStdString(Config::GetSetting("Plugins", kChosenViewer).ToString());
    std::stable_partition(viewers.begin(), viewers.end(), [&](const PluginRecord *plugin) {
        return plugin->descriptor.name == chosen;
    });
    return viewers;
}

std::vector<const PluginRecord *> Plugins::tools() const
{
    std::vector<const PluginRecord *> tools = alignmentViewers();
    for (const PluginRecord &plugin : m_Loader.records())
        if (!plugin.showsAlignments() && plugin.descriptor.role != services::PluginRole::Background)
            tools.push_back(&plugin);
    std::erase_if(tools, [](const PluginRecord *plugin) { return !plugin->isUsable(); });
    return tools;
}

Result<const PluginRecord *> Plugins::toolCalled(const QString &title) const
{
    const auto isCalled = [&title](const PluginRecord *plugin) {
        return titleOf(*plugin).compare(title, Qt::CaseInsensitive) == 0 ||
               plugin->descriptor.name == title;
    };
    const std::vector<const PluginRecord *> usable = tools();
    const auto found = std::ranges::find_if(usable, isCalled);
    if (found != usable.end())
        return *found;
    for (const PluginRecord &plugin : m_Loader.records())
        if (!plugin.isUsable() && !plugin.reason.isEmpty() && isCalled(&plugin))
            return Failure{FailureKind::Refused, plugin.reason.toStdString()};
    std::string cause = "there is no tool called \"" + title.toStdString() + '"';
    for (const PluginRecord *plugin : usable)
        cause += (plugin == usable.front() ? "; there are \"" : ", \"") +
                 titleOf(*plugin).toStdString() + '"';
    return Failure{FailureKind::NotFound, cause};
}

Failure Plugins::whyNoViewer() const
{
    for (const PluginRecord &plugin : m_Loader.records())
        if (plugin.descriptor.role == services::PluginRole::Alignments && !plugin.reason.isEmpty())
            return {FailureKind::Refused, plugin.reason.toStdString()};
    std::string cause = "there is no alignment editor in " +
                        m_Folders.paths().join(QStringLiteral(", ")).toStdString();
    // It may be what could not be read.
    for (const PluginRecord &plugin : m_Loader.records())
        if (plugin.state == services::PluginState::BrokenDescriptor)
            cause += "; " + plugin.reason.toStdString();
    return {FailureKind::NotFound, cause};
}

Result<QWidget *> Plugins::showWith(const PluginRecord &plugin, Alignment &alignment)
{
    QPointer<QWidget> window = load(plugin).isUsable() ? open(plugin) : nullptr;
    if (!plugin.isUsable())
        return Failure{FailureKind::Refused, plugin.reason.toStdString()};
    if (window == nullptr)
        return Failure{FailureKind::Refused, plugin.name.toStdString() + " opened no window"};
    if (!canShowIn(*window)) {
        window->close();
        return Failure{FailureKind::Refused, plugin.name.toStdString() +
                                                 ": a window that is to show alignments has no "
                                                 "slot " +
                                                 kChooseAlignment + "()"};
    }
    showIn(*window, alignment);
    return window.data();
}

Result<QWidget *> Plugins::show(Alignment &alignment)
{
    const std::vector<const PluginRecord *> viewers = alignmentViewers();
    if (viewers.empty())
        return whyNoViewer();
    const std::string chosen = Config::GetSetting("Plugins", kChosenViewer).ToString();
    if (!chosen.empty() && viewers.front()->descriptor.name.toStdString() != chosen)
        Logger::Write(QStringLiteral("No plug-in that shows alignments is called %1, as the "
                                     "setting Plugins/%2 has it")
                          .arg(QString::fromStdString(chosen), QLatin1String(kChosenViewer)),
                      Logger::Severity::Warning);
    Result<QWidget *> shown = showWith(*viewers.front(), alignment);
    for (std::size_t next = 1; !shown && next < viewers.size(); ++next) {
        Logger::Write(QString::fromStdString(shown.error().message()), Logger::Severity::Warning);
        shown = showWith(*viewers[next], alignment);
    }
    return shown;
}

bool Plugins::canShowIn(const QWidget &window)
{
    const QByteArray signature = QByteArray(kChooseAlignment) + "()";
    return window.metaObject()->indexOfMethod(signature.constData()) >= 0;
}

void Plugins::showIn(QWidget &window, Alignment &alignment)
{
    if (!canShowIn(window))
        return;
    services::SelectObjectAnswers::push({&alignment});
    QMetaObject::invokeMethod(&window, kChooseAlignment);
    // A window that did not ask must not leave its answer to the next question.
    services::SelectObjectAnswers::clear();
}

} // namespace TAMBO::app
