// SPDX-License-Identifier: GPL-3.0-or-later
// Settings given as text, in place of the installed and the user's ones while it lives.
#pragma once

#include "ConfigStore.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

class ScopedSettings
{
public:
    // "[section]\nkey = value\n"
    explicit ScopedSettings(const QByteArray &text)
    {
        QFile file(m_Directory.filePath(QStringLiteral("tambo.ini")));
        if (file.open(QIODevice::WriteOnly))
            file.write(text);
        file.close();
        TAMBO::services::ConfigStore::setInstance(
            std::make_unique<TAMBO::services::ConfigStore>(QString(), file.fileName()));
    }
    ~ScopedSettings() { TAMBO::services::ConfigStore::setInstance(nullptr); }
    ScopedSettings(const ScopedSettings &) = delete;
    ScopedSettings &operator=(const ScopedSettings &) = delete;

private:
    QTemporaryDir m_Directory;
};
