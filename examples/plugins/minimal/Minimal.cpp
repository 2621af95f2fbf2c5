// SPDX-License-Identifier: GPL-3.0-or-later
// Colours every chain of the workbench red, in one undoable step, when it is run.
#include <Color.h>
#include <Compound.h>
#include <DataPoint.h>
#include <Export.h>
#include <Logger.h>
#include <Space.h>

#include <vector>

extern "C" {

TAMBO_API void Execute0()
{
    TAMBO::Space *space = TAMBO::Space::instance();
    std::vector<TAMBO::Compound *> chains;
    TAMBO::GetPeptides(space, chains, true);
    DataPoint<TAMBO::Space> change(nullptr, space);
    if (!change.m_good)
        return;
    for (TAMBO::Compound *chain : chains)
        chain->SetColor(Color(0xff0000U));
    Logger::Write(QString("Minimal: %1 chains are red").arg(chains.size()));
}

TAMBO_API bool IsDone()
{
    return true;
}

TAMBO_API void Cleanup() { }

} // extern "C"
