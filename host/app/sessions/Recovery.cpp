// SPDX-License-Identifier: GPL-3.0-or-later
#include "Recovery.h"

#include "ChangeScope.h"
#include "History.h"
#include "LoadedWork.h"
#include "ObjectSpace.h"
#include "StoreReader.h"

#include <QCoreApplication>
#include <QFile>

#include <cstddef>
#include <limits>
#include <numeric>
#include <vector>

namespace TAMBO::app {

namespace {

// Then the state alone is tried, from which the changes led on.
constexpr int kManyAttempts = 3;

struct RecoveryText
{
    Q_DECLARE_TR_FUNCTIONS(TAMBO::app::Recovery)
};

Result<std::unique_ptr<sessions::StoreReader>> openLeft(const LeftSession &session)
{
    return sessions::StoreReader::open(QFile::encodeName(session.file).toStdString(),
                                       sessions::StoreReader::Kind::LeftBehind);
}

QStringList remarksOn(const sessions::LoadedSession &loaded, std::uint64_t leftOut)
{
    QStringList remarks;
    if (loaded.problem)
        remarks << RecoveryText::tr("They are as they were before some of the last changes, which "
                                    "could not be done again: %1")
                       .arg(QString::fromStdString(loaded.problem->message()));
    else if (leftOut > 0)
        remarks << RecoveryText::tr("They are as they were before some of the last changes, which "
                                    "have ended the program.");
    return remarks;
}

// Whatever is locked. Whoever shows objects hears of it while they are still there: changes that
// were done again have told of them.
void emptyWorkbench(ObjectSpace &space, History &history)
{
    std::vector<std::size_t> all(space.objectCount());
    std::iota(all.begin(), all.end(), std::size_t(0));
    ObjectContainer::Objects gone;
    {
        const ChangeScope scope(Publisher::Delete);
        gone = space.takeObjects(all);
    }
    history.clear();
    // The newest first, as Space does it.
    while (!gone.empty())
        gone.pop_back();
    space.reset();
}

} // namespace

Result<sessions::LoadedSession> recover(const LeftSession &session, ObjectSpace &space,
                                        History &history, sessions::KeptValues &values)
{
    SessionFolder::noteAttempt(session);
    const auto store = openLeft(session);
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

Result<WorkAsFiles> saveAsFiles(const LeftSession &session, ObjectSpace &space, History &history,
                                const QString &parent)
{
    SessionFolder::noteAttempt(session);
    const auto attempt = [&]() -> Result<WorkAsFiles> {
        const auto store = openLeft(session);
        if (!store)
            return store.error();
        sessions::SessionLoading loading;
        loading.leftOut = session.attempts < kManyAttempts
                              ? std::uint64_t(session.attempts)
                              : std::numeric_limits<std::uint64_t>::max();
        const auto loaded = sessions::loadSession(*store.value(), space, history, loading);
        if (!loaded)
            return loaded.error();
        Result<WorkAsFiles> files =
            writeAsFiles(space, parent, remarksOn(loaded.value(), loading.leftOut));
        emptyWorkbench(space, history);
        return files;
    };
    Result<WorkAsFiles> files = attempt();
    SessionFolder::takeBackAttempt(session);
    return files;
}

} // namespace TAMBO::app
