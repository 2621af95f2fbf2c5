// SPDX-License-Identifier: GPL-3.0-or-later
// Adds a command to the program: how many letters the sequences of files have.
#include <Compound.h>
#include <Export.h>
#include <PluginAnswer.h>
#include <ProgramCommand.h>
#include <Space.h>

#include <QByteArray>

#include <vector>

namespace {

bool countLetters(const PluginCall &data)
{
    auto &call = *static_cast<ProgramCommand *>(data.data);
    if (call.arguments.isEmpty()) {
        call.errors->write("tambo: letters needs a file\n");
        call.exitStatus = 2;
        return true;
    }
    for (const QString &file : call.arguments) {
        if (!call.openFile(file)) {
            call.exitStatus = 1;
            return true;
        }
    }
    std::vector<TAMBO::Compound *> chains;
    TAMBO::GetPeptides(TAMBO::Space::instance(), chains, true);
    std::size_t letters = 0;
    for (const TAMBO::Compound *chain : chains)
        letters += chain->ChildCount();
    call.output->write(QByteArray::number(qulonglong(letters)) + '\n');
    return true;
}

const PluginAnswer s_Letters(ProgramCommand::kGroup, ProgramCommand::kService, "letters",
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
