// SPDX-License-Identifier: GPL-3.0-or-later
#include "Recovery.h"

#include "LoadedWork.h"
#include "StoreReader.h"

#include <QFile>

namespace TAMBO::app {

Result<sessions::LoadedSession> recover(const LeftSession &session, ObjectSpace &space,
                                        History &history, sessions::KeptValues &values)
{
    using sessions::StoreReader;
    SessionFolder::noteAttempt(session);
    auto store = StoreReader::open(QFile::encodeName(session.file).toStdString(),
                                   StoreReader::Kind::LeftBehind);
    if (!store)
        return store.error();
    sessions::SessionLoading loading;
    loading.leftOut = std::uint64_t(session.attempts);
    Result<sessions::LoadedSession> loaded =
        loadWork(*store.value(), space, history, values, loading);
    // The program is still there.
    SessionFolder::forgetAttempts(session.file);
    return loaded;
}

} // namespace TAMBO::app
