// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunProgress.h"

#include <algorithm>
#include <sys/stat.h>
#include <utility>

namespace TAMBO::families {

namespace {

// Of the time that passes, work beside the models takes a tenth at most, and waits at least so
// long.
constexpr std::chrono::milliseconds kLeastPause{500};
constexpr int kShare = 10;

} // namespace

RunProgress::RunProgress(const FamilyFolder &folder, std::vector<FamilyTarget> missing,
                         const TellEnd &tell)
    : m_Folder(folder),
      m_Missing(std::move(missing)),
      m_Tell(tell),
      m_Rows(resultsOf(folder, FolderWork::GoesOn))
{
    for (std::size_t i = 0; i < m_Rows.size(); ++i)
        m_Places[m_Rows[i].target.file] = i;
    for (const FamilyTarget &target : m_Missing)
        m_Waiting[target.file] = {stampOf(folder.recordOf(target)), false};
    m_Table = writeResults(folder, m_Rows);
}

RunProgress::Stamp RunProgress::stampOf(const std::filesystem::path &file)
{
    struct stat state = {};
    if (stat(file.c_str(), &state) != 0)
        return {};
    return {state.st_ino, state.st_mtim.tv_sec, state.st_mtim.tv_nsec};
}

void RunProgress::noteEnd(const FamilyTarget &target)
{
    if (m_Waiting.erase(target.file) == 0)
        return;
    ResultRow &row = m_Rows[m_Places.at(target.file)];
    row = resultOf(m_Folder, target, FolderWork::HasEnded);
    tellOf(row);
    writeSometimes();
}

void RunProgress::look()
{
    const Clock::time_point begin = Clock::now();
    if (begin < m_NextLook)
        return;
    for (const FamilyTarget &target : m_Missing) {
        const auto waiting = m_Waiting.find(target.file);
        if (waiting == m_Waiting.end())
            continue;
        const Stamp stamp = stampOf(m_Folder.recordOf(target));
        // One that has begun may have been killed, and then it says no more.
        if (stamp == waiting->second.stamp && !waiting->second.hasBegun)
            continue;
        waiting->second = {stamp, true};
        ResultRow &row = m_Rows[m_Places.at(target.file)];
        row = resultOf(m_Folder, target, FolderWork::GoesOn);
        if (row.state != TargetState::Running && row.state != TargetState::NotRun) {
            m_Waiting.erase(waiting);
            tellOf(row);
        }
    }
    m_NextLook =
        Clock::now() + std::max<Clock::duration>(kLeastPause, (Clock::now() - begin) * kShare);
    writeSometimes();
}

void RunProgress::finish()
{
    for (const FamilyTarget &target : m_Missing) {
        ResultRow &row = m_Rows[m_Places.at(target.file)];
        const auto waiting = m_Waiting.find(target.file);
        // One that was told of may have been tried again.
        if (waiting != m_Waiting.end() || row.state != TargetState::Ok)
            row = resultOf(m_Folder, target, FolderWork::HasEnded);
        if (waiting == m_Waiting.end())
            continue;
        const bool hasRun = waiting->second.hasBegun ||
                            stampOf(m_Folder.recordOf(target)) != waiting->second.stamp ||
                            row.state == TargetState::Ok;
        m_Waiting.erase(waiting);
        if (hasRun)
            tellOf(row);
    }
    m_Table = writeResults(m_Folder, m_Rows);
}

void RunProgress::tellOf(const ResultRow &row)
{
    ++m_Done;
    m_Tell({row, m_Done, m_Missing.size()});
}

void RunProgress::writeSometimes()
{
    const Clock::time_point begin = Clock::now();
    if (begin < m_NextTable)
        return;
    m_Table = writeResults(m_Folder, m_Rows);
    m_NextTable =
        Clock::now() + std::max<Clock::duration>(kLeastPause, (Clock::now() - begin) * kShare);
}

} // namespace TAMBO::families
