// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConfigStore.h"

#include "Directories.h"
#include "Logger.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace TAMBO::services {

namespace {

std::unique_ptr<ConfigStore> &theStore()
{
    static std::unique_ptr<ConfigStore> store;
    return store;
}

Result<IniFile> readIniFile(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return IniFile();
    if (!file.open(QIODevice::ReadOnly))
        return Failure{FailureKind::System, file.errorString().toStdString(), {path.toStdString()}};
    const QByteArray text = file.readAll();
    return IniFile::parse({text.constData(), std::size_t(text.size())}, path.toStdString());
}

IniFile readOrLog(const QString &path, const char *consequence)
{
    Result<IniFile> file = readIniFile(path);
    if (file)
        return std::move(file).value();
    Logger::Write(QString::fromStdString(file.error().message()) + QString::fromLatin1(consequence),
                  Logger::Severity::Warning);
    return {};
}

void applyChanges(
    IniFile &file,
    const std::map<std::pair<std::string, std::string>, std::optional<std::string>> &changes)
{
    for (const auto &[key, value] : changes) {
        if (value)
            file.setValue(key.first, key.second, *value);
        else
            file.remove(key.first, key.second);
    }
}

} // namespace

ConfigStore::ConfigStore(const QString &defaultsFile, QString userFile)
    : m_UserFile(std::move(userFile)),
      m_Defaults(readOrLog(defaultsFile, "; the settings have no defaults")),
      m_User(readOrLog(m_UserFile, "; the default settings are used"))
{ }

ConfigStore &ConfigStore::instance()
{
    if (!theStore())
        theStore() =
            std::make_unique<ConfigStore>(Directories::shared() + QStringLiteral("/defaults.ini"),
                                          Directories::config() + QStringLiteral("/tambo.ini"));
    return *theStore();
}

void ConfigStore::setInstance(std::unique_ptr<ConfigStore> store)
{
    theStore() = std::move(store);
}

std::optional<std::string> ConfigStore::value(const std::string &section,
                                              const std::string &key) const
{
    std::optional<std::string> value = m_User.value(section, key);
    return value ? value : m_Defaults.value(section, key);
}

std::optional<std::string> ConfigStore::defaultValue(const std::string &section,
                                                     const std::string &key) const
{
    return m_Defaults.value(section, key);
}

void ConfigStore::addDefaults(const IniFile &defaults, const QString &plugin)
{
    for (const std::string &section : defaults.sections()) {
        for (const std::string &key : defaults.keys(section)) {
            const std::string value = defaults.value(section, key).value_or(std::string());
            const std::optional<std::string> before = m_Defaults.value(section, key);
            const QString name = QString::fromStdString(section + '/' + key);
            if (!before) {
                m_Defaults.setValue(section, key, value);
                if (!m_User.value(section, key))
                    emit changed(QString::fromStdString(section), QString::fromStdString(key));
            } else if (*before != value) {
                Logger::Write(QStringLiteral("%1: the setting %2 has a default already, which "
                                             "stays: %3")
                                  .arg(plugin, name, QString::fromStdString(*before)),
                              Logger::Severity::Warning);
            }
        }
    }
}

void ConfigStore::setValue(const std::string &section, const std::string &key,
                           const std::string &value)
{
    if (this->value(section, key) == value)
        return;
    m_User.setValue(section, key, value);
    m_Changes[{section, key}] = value;
    emit changed(QString::fromStdString(section), QString::fromStdString(key));
}

void ConfigStore::reset(const std::string &section, const std::string &key)
{
    if (!m_User.value(section, key))
        return;
    m_User.remove(section, key);
    m_Changes[{section, key}] = std::nullopt;
    emit changed(QString::fromStdString(section), QString::fromStdString(key));
}

Result<void> ConfigStore::save()
{
    if (m_Changes.empty())
        return {};
    Result<IniFile> onDisk = readIniFile(m_UserFile);
    const bool isBroken = !onDisk;
    IniFile result = isBroken ? m_User : std::move(onDisk).value();
    applyChanges(result, m_Changes);
    if (isBroken) {
        const QString kept = m_UserFile + QStringLiteral(".broken");
        QFile::remove(kept);
        QFile::copy(m_UserFile, kept);
    }

    const std::string text = result.text();
    QDir().mkpath(QFileInfo(m_UserFile).path());
    QSaveFile file(m_UserFile);
    const bool saved = file.open(QIODevice::WriteOnly) &&
                       file.write(text.data(), qint64(text.size())) == qint64(text.size()) &&
                       file.commit();
    if (!saved)
        return Failure{
            FailureKind::System, file.errorString().toStdString(), {m_UserFile.toStdString()}};
    m_User = std::move(result);
    m_Changes.clear();
    return {};
}

void ConfigStore::saveOrLog()
{
    if (const Result<void> saved = save(); !saved)
        Logger::Write(QStringLiteral("The settings could not be saved: %1")
                          .arg(QString::fromStdString(saved.error().message())),
                      Logger::Severity::Error);
}

} // namespace TAMBO::services

#include "moc_ConfigStore.cpp"
