// SPDX-License-Identifier: GPL-3.0-or-later
// What a run has brought so far: which targets have ended, who is told, and the table, written not
// oftener than is worth it.
#pragma once

#include "FamilyFolder.h"
#include "RunSettings.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

namespace TAMBO::families {

class RunProgress
{
public:
    // All of the folder are in the table; those to be built are told of.
    RunProgress(const FamilyFolder &folder, std::vector<FamilyTarget> missing, const TellEnd &tell);

    [[nodiscard]] const std::vector<FamilyTarget> &missing() const noexcept { return m_Missing; }

    // One of the missing ones has ended.
    void noteEnd(const FamilyTarget &target);
    // Looks for records that others have written.
    void look();
    // The run is over: those that have not said so have ended, too. What they are now.
    void finish();
    // Of all in the folder.
    [[nodiscard]] const std::vector<ResultRow> &rows() const noexcept { return m_Rows; }
    // The last one of writing the table.
    [[nodiscard]] const Result<void> &tableOutcome() const noexcept { return m_Table; }

private:
    using Clock = std::chrono::steady_clock;

    // By which two states of a record are told apart.
    struct Stamp
    {
        std::uint64_t inode = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;

        friend bool operator==(const Stamp &, const Stamp &) = default;
    };

    [[nodiscard]] static Stamp stampOf(const std::filesystem::path &file);
    void tellOf(const ResultRow &row);
    void writeSometimes();

    const FamilyFolder &m_Folder;
    std::vector<FamilyTarget> m_Missing;
    const TellEnd &m_Tell;
    std::vector<ResultRow> m_Rows;
    // Of each file its row.
    std::unordered_map<std::string, std::size_t> m_Places;
    struct Waiting
    {
        // The record as it was when it was last looked at.
        Stamp stamp;
        // In this run.
        bool hasBegun = false;
    };
    // Those that have not ended.
    std::unordered_map<std::string, Waiting> m_Waiting;
    std::size_t m_Done = 0;
    Clock::time_point m_NextLook;
    Clock::time_point m_NextTable;
    Result<void> m_Table;
};

} // namespace TAMBO::families
