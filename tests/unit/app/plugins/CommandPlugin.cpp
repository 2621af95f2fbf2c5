// SPDX-License-Identifier: GPL-3.0-or-later
// A plug-in that adds the command "letters" to the program.
#include <Compound.h>
#include <Export.h>
#include <PluginAnswer.h>
#include <ProgramCommand.h>
#include <Space.h>

#include <vector>

namespace {

bool countLetters(const PluginCall &data)
{
    auto &call = *static_cast<ProgramCommand *>(data.data);
    if (call.arguments.isEmpty()) {
        call.errors->write("letters needs a file\n");
        call.exitStatus = 2;
        return true;
    }
    if (!call.openFile(call.arguments.takeFirst())) {
        call.exitStatus = 1;
        return true;
    }
    std::vector<TAMBO::Compound *> chains;
    TAMBO::GetPeptides(TAMBO::Space::instance(), chains, true);
    std::size_t letters = 0;
    for (const TAMBO::Compound *chain : chains)
        letters += chain->ChildCount();
    call.output->write(QStringLiteral("%1 letters, %2\n")
                           .arg(letters)
                           .arg(call.arguments.join(QStringLiteral(", ")))
                           .toUtf8());
    return true;
}

const PluginAnswer s_Answer(ProgramCommand::kGroup, ProgramCommand::kService, "letters",
                            countLetters);

} // namespace

extern "C" {

TAMBO_API void Execute0() { }

TAMBO_API bool IsDone()
{
    return true;
}

TAMBO_API void Cleanup() { }

} // extern "C"
