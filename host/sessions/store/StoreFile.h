// SPDX-License-Identifier: GPL-3.0-or-later
// A store on the disk that is being written.
#pragma once

#include "Database.h"
#include "Statement.h"
#include "StoreRecord.h"

#include <memory>
#include <span>

namespace TAMBO::sessions {

class StoreFile
{
public:
    enum class Kind {
        // Beside the user's work: a transaction is on the disk when it ends, whatever happens to
        // the program or the machine, and no other process gets at the file.
        Live,
        // Written from beginning to end into a new file, which counts when it is complete. Whoever
        // needs it on the disk brings it there.
        Whole
    };

    // A new store, or a live one that goes on. A failure says that the file is somebody's already,
    // or why the system lets us not write.
    [[nodiscard]] static Result<std::unique_ptr<StoreFile>> open(const std::filesystem::path &file,
                                                                 Kind kind);

    // All of them or none.
    [[nodiscard]] Result<void> write(std::span<const StoreEntry> entries);
    [[nodiscard]] bool isInPlace() const noexcept { return m_Database.isInPlace(); }

private:
    explicit StoreFile(Database database);

    [[nodiscard]] Result<void> write(const StoreEntry &entry);
    [[nodiscard]] Result<void> readPlaces();

    Database m_Database;
    Statement m_AddPart;
    Statement m_AddRecord;
    Statement m_PutValue;
    Statement m_PutPlace;
    Statement m_DropParts;
    Statement m_DropNewParts;
    Statement m_DropRecords;
    // Numbers of the next part and record; the first part since the last switch.
    std::int64_t m_NextPart = 1;
    std::int64_t m_NextRecord = 1;
    std::int64_t m_FirstNewPart = 1;
};

} // namespace TAMBO::sessions
