// SPDX-License-Identifier: GPL-3.0-or-later
#include "BackupFiles.h"

#include "FileCopy.h"
#include "FileDescriptor.h"
#include "FileRights.h"
#include "UnfinishedFiles.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TAMBO::formats {

namespace {

namespace fs = std::filesystem;

bool isThere(const fs::path &file)
{
    struct stat status
    {
    };
    return ::lstat(file.c_str(), &status) == 0;
}

} // namespace

BackupFiles::BackupFiles(fs::path file) : m_File(std::move(file)) { }

BackupFiles::~BackupFiles()
{
    takeBack();
}

// Programs for files hide what ends in "~", and no format has that ending.
fs::path BackupFiles::nameOf(const fs::path &file, int number)
{
    fs::path name = file;
    name += '.' + std::to_string(number) + ".bak~";
    return name;
}

int BackupFiles::add(bool isReplaced)
{
    m_Newest = m_File.parent_path() / unfinishedName({});
    // Not every file system has links, and not every file may be linked to.
    if (!isReplaced || ::link(m_File.c_str(), m_Newest.c_str()) != 0) {
        if (const int error = copy(m_Newest))
            return error;
    }
    int last = 1;
    while (last < kMost && isThere(nameOf(m_File, last)))
        ++last;
    const fs::path oldest = nameOf(m_File, last);
    if (isThere(oldest)) {
        const fs::path away = m_File.parent_path() / unfinishedName({});
        if (const int error = move(oldest, away))
            return error;
        m_Oldest = away;
    }
    for (int number = last; number > 1; --number) {
        if (const int error = move(nameOf(m_File, number - 1), nameOf(m_File, number)))
            return error;
    }
    return move(m_Newest, nameOf(m_File, 1));
}

// With the rights and the time of the old one, so that it can take its place.
int BackupFiles::copy(const fs::path &to) const
{
    struct stat status
    {
    };
    if (::stat(m_File.c_str(), &status) != 0)
        return errno;
    if (const int error = makeCopy(m_File, to))
        return error;
    const FileDescriptor file(::open(to.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file.isOpen())
        return errno;
    const std::array<timespec, 2> times{status.st_atim, status.st_mtim};
    static_cast<void>(::futimens(file.number(), times.data()));
    takeOverRights(file.number(), status);
    return 0;
}

int BackupFiles::move(const fs::path &from, const fs::path &to)
{
    if (::rename(from.c_str(), to.c_str()) != 0)
        return errno;
    m_Moves.emplace_back(from, to);
    return 0;
}

void BackupFiles::keep()
{
    m_Moves.clear();
    m_Newest.clear();
    if (!m_Oldest.empty())
        ::unlink(m_Oldest.c_str());
    m_Oldest.clear();
}

void BackupFiles::takeBack()
{
    for (; !m_Moves.empty(); m_Moves.pop_back())
        static_cast<void>(::rename(m_Moves.back().second.c_str(), m_Moves.back().first.c_str()));
    if (!m_Newest.empty())
        ::unlink(m_Newest.c_str());
}

} // namespace TAMBO::formats
