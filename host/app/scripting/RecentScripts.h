// SPDX-License-Identifier: GPL-3.0-or-later
// The scripts that were run last, with their arguments, and the folder they came from; kept in the
// user's settings, the latest first. Whoever owns the settings saves them.
#pragma once

#include <QObject>
#include <QString>

#include <vector>

namespace TAMBO::services {
class ConfigStore;
}

namespace TAMBO::app {

class RecentScripts : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMost = 10;

    struct Script
    {
        QString file;
        // As typed.
        QString arguments;

        bool operator==(const Script &) const = default;
    };

    // store outlives this.
    explicit RecentScripts(services::ConfigStore &store, QObject *parent = nullptr);

    [[nodiscard]] std::vector<Script> scripts() const;
    // Becomes the latest, with these arguments alone.
    void add(const Script &script);
    void remove(const QString &file);
    void clear();

    [[nodiscard]] QString folder() const;
    void setFolder(const QString &folder);

signals:
    void changed();

private:
    void keep(const std::vector<Script> &scripts);

    services::ConfigStore &m_Store;
};

} // namespace TAMBO::app
