// SPDX-License-Identifier: GPL-3.0-or-later
#include "Config.h"

#include "ConfigStore.h"
#include "Directories.h"
#include "Logger.h"
#include "PrivateDirectory.h"
#include "Text.h"

#include <QFile>

using namespace TAMBO::services;

namespace {

std::string nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

// Of a section or a key, as it comes back from a settings file.
bool isName(const std::string &text)
{
    return !text.empty() && TAMBO::trimmed(text) == text &&
           text.find_first_of("=[]\r\n") == std::string::npos && text.front() != '#' &&
           text.front() != ';';
}

} // namespace

Setting Config::GetSetting(const std::string &section, const std::string &key)
{
    std::optional<std::string> value = ConfigStore::instance().value(section, key);
    return value ? Setting(std::move(*value)) : Setting();
}

bool Config::SetSetting(const std::string &section, const std::string &key,
                        const std::string &value)
{
    if (!isName(section) || !isName(key)) {
        Logger::Write(QStringLiteral("%1/%2 is no name of a setting.")
                          .arg(QString::fromStdString(section), QString::fromStdString(key)),
                      Logger::Severity::Error);
        return false;
    }
    ConfigStore::instance().setValue(section, key, value);
    ConfigStore::instance().saveOrLog();
    return true;
}

std::string Config::GetIconDir()
{
    return nativePath(Directories::shared() + QStringLiteral("/icons"));
}

std::string Config::GetPersonalTmpDir()
{
    return nativePath(personalScratchDirectory());
}
