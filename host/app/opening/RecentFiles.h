// SPDX-License-Identifier: GPL-3.0-or-later
// The files that were opened last, remembered in the user's settings; the latest first. Whoever
// owns the settings saves them.
#pragma once

#include <QObject>
#include <QStringList>

namespace TAMBO::services {
class ConfigStore;
}

namespace TAMBO::app {

class RecentFiles : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMost = 10;

    // store outlives this.
    explicit RecentFiles(services::ConfigStore &store, QObject *parent = nullptr);

    [[nodiscard]] QStringList files() const;
    // The first of them becomes the latest.
    void add(const QStringList &files);
    void remove(const QString &file);
    void clear();

signals:
    void changed();

private:
    void keep(const QStringList &files);

    services::ConfigStore &m_Store;
};

} // namespace TAMBO::app
