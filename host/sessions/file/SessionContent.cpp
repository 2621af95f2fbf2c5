// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionContent.h"

#include "LongWork.h"
#include "StateParts.h"

#include <chrono>
#include <utility>

namespace TAMBO::sessions {

namespace {

// Some milliseconds of the window's thread.
constexpr std::size_t kPartBytes = std::size_t(1) << 20;

} // namespace

SessionOrigin SessionOrigin::now(std::string program)
{
    const auto time = std::chrono::system_clock::now().time_since_epoch();
    return {std::move(program),
            std::chrono::duration_cast<std::chrono::milliseconds>(time).count()};
}

Result<SessionContent> takeSession(const ObjectSpace &space, const History &history,
                                   std::vector<NamedValue> values, const SessionOrigin &origin)
{
    SessionContent content;
    StateParts parts(space, history);
    LongWork work("Saving the session", parts.size(), LongWork::Kind::Reading);
    while (std::optional<StatePart> part = parts.next(kPartBytes)) {
        if (!work.goesOnAt(parts.done()))
            return Failure(FailureKind::Cancelled, {});
        part->content.shrink_to_fit();
        content.parts.push_back(std::move(*part));
    }
    std::erase_if(values, [](const NamedValue &value) {
        return value.name == kMadeBy || value.name == kMadeAt;
    });
    content.values = std::move(values);
    content.values.push_back({kMadeBy, origin.program});
    content.values.push_back({kMadeAt, std::to_string(origin.time)});
    return content;
}

} // namespace TAMBO::sessions
