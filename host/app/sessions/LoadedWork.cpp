// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoadedWork.h"

#include "ChangeScope.h"
#include "KeptValues.h"
#include "Logger.h"
#include "ObjectIndex.h"

#include <QString>

namespace TAMBO::app {

Result<sessions::LoadedSession> loadWork(sessions::StoreReader &store, ObjectSpace &space,
                                         History &history, sessions::KeptValues &values,
                                         const sessions::SessionLoading &options)
{
    ObjectIndex index;
    Result<sessions::LoadedSession> loaded =
        sessions::loadSession(store, space, history, index, options);
    if (!loaded)
        return loaded;
    loadValues(store, index, values);
    return loaded;
}

void loadValues(sessions::StoreReader &store, const ObjectIndex &index,
                sessions::KeptValues &values)
{
    // Whoever shows objects.
    {
        const ChangeScope scope(Publisher::Add);
    }
    for (const Failure &failure : values.load(store, index))
        Logger::Write(QString::fromStdString(failure.message()), Logger::Severity::Warning);
}

} // namespace TAMBO::app
