// SPDX-License-Identifier: GPL-3.0-or-later
#include "WorkbenchValues.h"

#include "ConfigStore.h"
#include "Directories.h"
#include "Logger.h"
#include "PluginValues.h"
#include "ValueName.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <algorithm>
#include <memory>

namespace TAMBO::services {

namespace {

// Kept for the run: what could not be written is tried again with the next change.
ConfigStore &valueFile()
{
    static std::unique_ptr<ConfigStore> s_File;
    const QString path = Directories::data() + QStringLiteral("/values.ini");
    if (s_File == nullptr || s_File->userFile() != path)
        s_File = std::make_unique<ConfigStore>(QString(), path);
    return *s_File;
}

// Names may hold any character, values any byte.
std::string encodedName(const std::string &name)
{
    return QUrl::toPercentEncoding(QString::fromStdString(name)).toStdString();
}

std::string decodedName(const std::string &name)
{
    return QUrl::fromPercentEncoding(QByteArray::fromStdString(name)).toStdString();
}

std::string encodedValue(const std::string &value)
{
    return QByteArray::fromStdString(value).toBase64().toStdString();
}

std::string decodedValue(const std::string &value)
{
    return QByteArray::fromBase64(QByteArray::fromStdString(value)).toStdString();
}

std::vector<std::string> decodedNames(const std::vector<std::string> &names)
{
    std::vector<std::string> decoded;
    decoded.reserve(names.size());
    for (const std::string &name : names)
        decoded.push_back(decodedName(name));
    std::ranges::sort(decoded);
    return decoded;
}

bool refuseValue(const std::string &plugin, const std::string &key, const std::string &cause)
{
    Logger::Write(QString::fromStdString("The value \"" + shownName(key) + "\" of \"" +
                                         shownName(plugin) + "\" was not kept: " + cause + '.'),
                  Logger::Severity::Warning);
    return false;
}

bool hasGoodNames(const std::string &plugin, const std::string &key)
{
    const std::string problem =
        valueNameProblem(plugin, PluginValues::kLongestName, key, PluginValues::kLongestKey);
    return problem.empty() || refuseValue(plugin, key, problem);
}

bool saveOrLog(ConfigStore &file)
{
    const Result<void> saved = file.save();
    if (!saved)
        Logger::Write(QStringLiteral("The values of plug-ins could not be saved: %1")
                          .arg(QString::fromStdString(saved.error().message())),
                      Logger::Severity::Error);
    return saved.has_value();
}

std::size_t sizeWithout(const std::string &plugin, const std::string &key)
{
    std::size_t size = 0;
    for (const std::string &other : WorkbenchValues::Keys(plugin)) {
        if (other != key)
            size += other.size() + WorkbenchValues::Get(plugin, other).value_or("").size();
    }
    return size;
}

} // namespace

} // namespace TAMBO::services

using namespace TAMBO::services;

bool WorkbenchValues::Set(const std::string &plugin, const std::string &key,
                          const std::string &value)
{
    if (!hasGoodNames(plugin, key))
        return false;
    if (value.size() > kLongestValue)
        return refuseValue(plugin, key, "it is longer than 256 KB");
    if (sizeWithout(plugin, key) + key.size() + value.size() > kMostOfPlugin)
        return refuseValue(plugin, key, "the values of the plug-in would exceed 1 MB");
    ConfigStore &file = valueFile();
    file.setValue(encodedName(plugin), encodedName(key), encodedValue(value));
    return saveOrLog(file);
}

bool WorkbenchValues::Remove(const std::string &plugin, const std::string &key)
{
    if (!hasGoodNames(plugin, key))
        return false;
    ConfigStore &file = valueFile();
    file.reset(encodedName(plugin), encodedName(key));
    return saveOrLog(file);
}

std::optional<std::string> WorkbenchValues::Get(const std::string &plugin, const std::string &key)
{
    const std::optional<std::string> value =
        valueFile().value(encodedName(plugin), encodedName(key));
    return value ? std::optional(decodedValue(*value)) : std::nullopt;
}

std::vector<std::string> WorkbenchValues::Keys(const std::string &plugin)
{
    return decodedNames(valueFile().userValues().keys(encodedName(plugin)));
}

std::vector<std::string> WorkbenchValues::Plugins()
{
    return decodedNames(valueFile().userValues().sections());
}
