// SPDX-License-Identifier: GPL-3.0-or-later
// Does again what the records behind a state say, which may be anybody's bytes.
#pragma once

#include "HistoryReplay.h"
#include "Result.h"
#include "SessionEditBytes.h"

#include <cstdint>
#include <string_view>

namespace TAMBO::sessions {

class ChangeLoader
{
public:
    // Both outlive this.
    ChangeLoader(ObjectIndex &index, History &history);

    // The next record. Nothing has been done of one that fails.
    [[nodiscard]] Result<void> read(std::uint32_t kind, std::string_view content);

private:
    // Of the change that comes next.
    ObjectsElsewhere m_Elsewhere;
    HistoryReplay m_Replay;
};

} // namespace TAMBO::sessions
