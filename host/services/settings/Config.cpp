// SPDX-License-Identifier: GPL-3.0-or-later
#include "Config.h"

#include "ConfigStore.h"
#include "Directories.h"
#include "PrivateDirectory.h"

#include <QFile>

using namespace TAMBO::services;

namespace {

std::string nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

} // namespace

Setting Config::GetSetting(const std::string &section, const std::string &key)
{
    std::optional<std::string> value = ConfigStore::instance().value(section, key);
    return value ? Setting(std::move(*value)) : Setting();
}

std::string Config::GetIconDir()
{
    return nativePath(Directories::shared() + QStringLiteral("/icons"));
}

std::string Config::GetPersonalTmpDir()
{
    return nativePath(personalScratchDirectory());
}
