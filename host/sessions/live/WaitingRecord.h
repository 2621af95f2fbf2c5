// SPDX-License-Identifier: GPL-3.0-or-later
// A change as the entries of a store, with the large objects that it brings along, which are handed
// over in slices.
#pragma once

#include "ObjectStore.h"
#include "SessionKinds.h"
#include "StoreRecord.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO::sessions {

class WaitingRecord
{
public:
    // The objects may not change until all entries are there, but for rows of alignments, which are
    // kept. There may be none.
    WaitingRecord(std::vector<const StoredObject *> objects, std::string change)
        : m_Objects(std::move(objects)), m_Change(std::move(change))
    { }

    // The next entry, of about so many bytes; nothing behind the last one.
    [[nodiscard]] std::optional<StoreEntry> next(std::size_t bytes);
    void keepRow(const StoredObject &alignment, std::size_t row)
    {
        m_Objects.keepRow(alignment, row);
    }
    [[nodiscard]] bool keepMove(const StoredObject &alignment, std::size_t from, std::size_t to)
    {
        return m_Objects.keepMove(alignment, from, to);
    }
    [[nodiscard]] bool hasObjects() const noexcept { return m_Objects.size() > 0; }
    [[nodiscard]] bool isBelow(std::size_t bytes) const { return m_Objects.isBelow(bytes); }
    // There is none any more.
    [[nodiscard]] bool isDone() const noexcept { return !m_Change; }

private:
    ObjectStore m_Objects;
    std::optional<std::string> m_Change;
};

// With the time that it is.
[[nodiscard]] Record recordOf(RecordKind kind, std::string content);

} // namespace TAMBO::sessions
