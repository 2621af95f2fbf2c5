// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecentFiles.h"

#include "ConfigStore.h"

#include <QFileInfo>

namespace TAMBO::app {

namespace {

constexpr const char *kRecentSection = "RecentFiles";

std::string keyOf(int place)
{
    return "File" + std::to_string(place + 1);
}

} // namespace

RecentFiles::RecentFiles(services::ConfigStore &store, QObject *parent)
    : QObject(parent), m_Store(store)
{ }

QStringList RecentFiles::files() const
{
    QStringList files;
    for (int i = 0; i < kMost; ++i) {
        const std::optional<std::string> file = m_Store.value(kRecentSection, keyOf(i));
        if (file && !file->empty())
            files << QString::fromStdString(*file);
    }
    return files;
}

void RecentFiles::add(const QStringList &files)
{
    QStringList list;
    for (const QString &file : files)
        list << QFileInfo(file).absoluteFilePath();
    list << this->files();
    list.removeDuplicates();
    keep(list);
}

void RecentFiles::remove(const QString &file)
{
    QStringList list = files();
    if (list.removeAll(QFileInfo(file).absoluteFilePath()) > 0)
        keep(list);
}

void RecentFiles::clear()
{
    keep({});
}

void RecentFiles::keep(const QStringList &files)
{
    for (int i = 0; i < kMost; ++i) {
        if (i < files.size())
            m_Store.setValue(kRecentSection, keyOf(i), files[i].toStdString());
        else
            m_Store.reset(kRecentSection, keyOf(i));
    }
    emit changed();
}

} // namespace TAMBO::app

#include "moc_RecentFiles.cpp"
