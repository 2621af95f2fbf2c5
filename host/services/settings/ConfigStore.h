// SPDX-License-Identifier: GPL-3.0-or-later
// The settings: the user's values over the shipped defaults.
#pragma once

#include "IniFile.h"
#include "Result.h"

#include <QObject>
#include <QString>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace TAMBO::services {

// A file that is broken or cannot be read counts as empty, with one line in the log.
class ConfigStore : public QObject
{
    Q_OBJECT

public:
    ConfigStore(const QString &defaultsFile, QString userFile);

    // The store behind Config, made from the installed defaults and the user's tambo.ini when first
    // asked for.
    static ConfigStore &instance();
    // Exchanges the store behind Config; null goes back to making it from the files when next
    // asked.
    static void setInstance(std::unique_ptr<ConfigStore> store);

    [[nodiscard]] std::optional<std::string> value(const std::string &section,
                                                   const std::string &key) const;
    [[nodiscard]] std::optional<std::string> defaultValue(const std::string &section,
                                                          const std::string &key) const;
    // The user's values alone, in the order of the file.
    [[nodiscard]] const IniFile &userValues() const noexcept { return m_User; }
    // Defaults of a plug-in, below the user's values. A key that has a default keeps it, be it one
    // that was shipped or of another plug-in; the log says so where they differ.
    void addDefaults(const IniFile &defaults, const QString &plugin);
    void setValue(const std::string &section, const std::string &key, const std::string &value);
    // Back to the default.
    void reset(const std::string &section, const std::string &key);

    // Writes what has changed since the last save into the user's file as it is now, so that two
    // running workbenches keep each other's changes. A broken file is kept beside it as ".broken".
    // Changes that could not be written are tried again at the next save.
    [[nodiscard]] Result<void> save();
    // For those who have nothing better to do with a failure than to write it into the log.
    void saveOrLog();
    [[nodiscard]] bool hasUnsavedChanges() const noexcept { return !m_Changes.empty(); }
    [[nodiscard]] const QString &userFile() const noexcept { return m_UserFile; }

signals:
    void changed(const QString &section, const QString &key);

private:
    using Key = std::pair<std::string, std::string>;

    QString m_UserFile;
    IniFile m_Defaults;
    IniFile m_User;
    // Nothing stands for a reset.
    std::map<Key, std::optional<std::string>> m_Changes;
};

} // namespace TAMBO::services
