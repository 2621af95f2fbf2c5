// SPDX-License-Identifier: GPL-3.0-or-later
#include "WaitingRecord.h"

#include "ObjectWriter.h"

#include <chrono>

namespace TAMBO::sessions {

std::optional<StoreEntry> WaitingRecord::next(std::size_t bytes)
{
    ObjectWriter out;
    if (m_Objects.writeNext(out, bytes))
        return StoreEntry(recordOf(RecordKind::Objects, out.take()));
    if (!m_Change)
        return std::nullopt;
    StoreEntry entry(recordOf(RecordKind::Change, std::move(*m_Change)));
    m_Change.reset();
    return entry;
}

Record recordOf(RecordKind kind, std::string content)
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const std::int64_t time = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
    return {static_cast<std::uint32_t>(kind), time, {}, std::move(content)};
}

} // namespace TAMBO::sessions
