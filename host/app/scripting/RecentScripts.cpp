// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecentScripts.h"

#include "ConfigStore.h"

#include <QFileInfo>

#include <algorithm>
#include <string>

namespace TAMBO::app {

namespace {

constexpr const char *kScriptSection = "Scripts";
constexpr const char *kScriptFolder = "Directory";

std::string scriptKey(const char *name, std::size_t place)
{
    return name + std::to_string(place + 1);
}

} // namespace

RecentScripts::RecentScripts(services::ConfigStore &store, QObject *parent)
    : QObject(parent), m_Store(store)
{ }

std::vector<RecentScripts::Script> RecentScripts::scripts() const
{
    std::vector<Script> scripts;
    const auto text = [this](const std::string &key) {
        return QString::fromStdString(m_Store.value(kScriptSection, key).value_or(std::string()));
    };
    for (std::size_t i = 0; i < kMost; ++i) {
        const QString file = text(scriptKey("File", i));
        if (!file.isEmpty())
            scripts.push_back({file, text(scriptKey("Arguments", i))});
    }
    return scripts;
}

void RecentScripts::add(const Script &script)
{
    const QString file = QFileInfo(script.file).absoluteFilePath();
    std::vector<Script> list = scripts();
    std::erase_if(list, [&file](const Script &other) { return other.file == file; });
    list.insert(list.begin(), {file, script.arguments});
    keep(list);
}

void RecentScripts::remove(const QString &file)
{
    std::vector<Script> list = scripts();
    if (std::erase_if(list, [&file](const Script &other) { return other.file == file; }) > 0)
        keep(list);
}

void RecentScripts::clear()
{
    keep({});
}

QString RecentScripts::folder() const
{
    return QString::fromStdString(
        m_Store.value(kScriptSection, kScriptFolder).value_or(std::string()));
}

void RecentScripts::setFolder(const QString &folder)
{
    if (folder == this->folder())
        return;
    m_Store.setValue(kScriptSection, kScriptFolder, folder.toStdString());
    emit changed();
}

void RecentScripts::keep(const std::vector<Script> &scripts)
{
    const auto put = [this](const std::string &key, const QString &value) {
        if (value.isEmpty())
            m_Store.reset(kScriptSection, key);
        else
            m_Store.setValue(kScriptSection, key, value.toStdString());
    };
    for (std::size_t i = 0; i < kMost; ++i) {
        const Script script = i < scripts.size() ? scripts[i] : Script();
        put(scriptKey("File", i), script.file);
        put(scriptKey("Arguments", i), script.arguments);
    }
    emit changed();
}

} // namespace TAMBO::app

#include "moc_RecentScripts.cpp"
