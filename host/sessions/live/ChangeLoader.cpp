// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChangeLoader.h"

#include "SessionKinds.h"

#include <memory>
#include <string>

namespace TAMBO::sessions {

ChangeLoader::ChangeLoader(ObjectIndex &index, History &history)
    : m_Elsewhere(index), m_Replay(history, [this, &index](std::string_view bytes) {
          return std::make_unique<SessionEditReader>(bytes, index, m_Elsewhere);
      })
{ }

Result<void> ChangeLoader::read(std::uint32_t kind, std::string_view content)
{
    switch (static_cast<RecordKind>(kind)) {
    case RecordKind::Objects:
        m_Elsewhere.add(content);
        return {};
    case RecordKind::Change: {
        Result<void> done = m_Replay.replay(content);
        m_Elsewhere.clear();
        return done;
    }
    }
    return Failure(FailureKind::BadInput,
                   "the session has a record of an unknown kind (" + std::to_string(kind) + ')');
}

} // namespace TAMBO::sessions
