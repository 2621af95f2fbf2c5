// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResultsLook.h"

#include "FolderLock.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;
using families::FamilyFolder;
using families::FolderWork;
using families::TargetState;

constexpr std::int64_t kNanoseconds = 1'000'000'000;

} // namespace

ResultsLook::Stamp ResultsLook::stampOf(const fs::path &file)
{
    struct stat status = {};
    if (stat(file.c_str(), &status) != 0)
        return {};
    return {status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec,
            std::uint64_t(status.st_size), std::uint64_t(status.st_ino)};
}

ResultsLook::Stamps ResultsLook::stampsIn(const fs::path &folder)
{
    Stamps stamps;
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir(folder.c_str()), &closedir);
    if (entries == nullptr)
        return stamps;
    while (const dirent *const entry = readdir(entries.get())) {
        struct stat status = {};
        if (entry->d_name[0] == '.' ||
            fstatat(dirfd(entries.get()), entry->d_name, &status, 0) != 0)
            continue;
        stamps[entry->d_name] = {status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec,
                                 std::uint64_t(status.st_size), std::uint64_t(status.st_ino)};
    }
    return stamps;
}

void ResultsLook::readList(News &news)
{
    const Stamp now = stampOf(m_Path / FamilyFolder::kListName);
    if (m_Folder != nullptr && now == m_List)
        return;
    Result<FamilyFolder> folder = FamilyFolder::open(m_Path);
    if (!folder) {
        news.failure = folder.error();
        return;
    }
    m_List = now;
    const auto &targets = folder->targets();
    // Further targets come behind those that are there.
    news.isOtherList =
        m_Folder != nullptr &&
        (targets.size() < m_Folder->targets().size() ||
         !std::equal(m_Folder->targets().begin(), m_Folder->targets().end(), targets.begin(),
                     [](const auto &a, const auto &b) { return a.file == b.file; }));
    m_Folder = std::make_shared<const FamilyFolder>(std::move(folder).value());
    news.folder = m_Folder;
    m_Places.clear();
    for (std::size_t i = 0; i < m_Folder->targets().size(); ++i)
        m_Places[m_Folder->targets()[i].file] = i;
    m_IsRunning.assign(m_Folder->targets().size(), false);
}

void ResultsLook::noteChanges(const Stamps &before, const Stamps &now,
                              std::vector<bool> &isChanged) const
{
    const auto note = [&](const std::string &file) {
        const auto place = m_Places.find(file.substr(0, file.rfind('.')));
        if (place != m_Places.end())
            isChanged[place->second] = true;
    };
    for (const auto &[file, stamp] : now) {
        const auto found = before.find(file);
        if (found == before.end() || !(found->second == stamp))
            note(file);
    }
    for (const auto &[file, stamp] : before) {
        if (!now.contains(file))
            note(file);
    }
}

ResultsLook::News ResultsLook::look()
{
    News news;
    readList(news);
    if (m_Folder == nullptr)
        return news;
    news.isAtWork = families::FolderLock::isTaken(m_Path);
    // What has changed, before it is read: what changes meanwhile is seen at the next look.
    Stamps records = stampsIn(m_Path / "runs");
    Stamps models = stampsIn(m_Path / "models");
    std::vector<bool> isChanged(m_Folder->targets().size(), news.folder != nullptr);
    noteChanges(m_Records, records, isChanged);
    noteChanges(m_Models, models, isChanged);
    m_Records = std::move(records);
    m_Models = std::move(models);
    const bool isOtherWork = news.isAtWork != m_WasAtWork;
    m_WasAtWork = news.isAtWork;
    const FolderWork work = news.isAtWork ? FolderWork::GoesOn : FolderWork::AsLocked;
    for (std::size_t i = 0; i < isChanged.size(); ++i) {
        if (!isChanged[i] && !m_IsRunning[i] && !isOtherWork)
            continue;
        families::ResultRow row = families::resultOf(*m_Folder, m_Folder->targets()[i], work);
        m_IsRunning[i] = row.state == TargetState::Running;
        news.rows.emplace_back(i, std::move(row));
    }
    return news;
}

} // namespace TAMBO::app
