// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineRun.h"

#include "Engine.h"
#include "HeldSignals.h"

namespace kestram {

using TAMBO::Result;

Result<std::unique_ptr<EngineRun>> EngineRun::begin(const Plan &plan)
{
    std::unique_ptr<EngineRun> run(new EngineRun(plan.command));
    // One that comes in between would leave the folder behind.
    const HeldSignals held;
    Result<std::unique_ptr<RunFolder>> folder = plan.makeFolder();
    if (!folder)
        return folder.error();
    run->m_Folder = std::move(folder).value();
    const auto atEnd = [&made = *run->m_Folder, whenLeft = plan.whenLeft](bool isDone) {
        // First, since who waits for the folder writes a record of its own.
        if (!isDone && whenLeft)
            whenLeft();
        made.remove();
    };
    run->m_Watcher = std::make_unique<Watcher>(EngineWork{plan.command, run->m_Folder->path(),
                                                          plan.engine.parent_path(), atEnd,
                                                          plan.atTimes, plan.pause});
    return run;
}

Result<std::string> EngineRun::build(const ModellingInput &input)
{
    if (Result<void> written = m_Folder->write(kAlignmentFile, fastaText(input)); !written)
        return written.error();
    if (Result<void> written = m_Folder->write(kTemplateFile, pdbText(input)); !written)
        return written.error();
    const Result<int> status = m_Watcher->runEngine();
    if (!status)
        return status.error();
    return builtModel(status.value(), m_Command, m_Folder->path());
}

} // namespace kestram
