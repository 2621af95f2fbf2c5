// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileStateBytes.h"

#include "ValueBytes.h"

namespace TAMBO::app {

void writeFileState(const FileState &state, ValueWriter &out)
{
    out.number(state.device);
    out.number(state.inode);
    out.number(state.size);
    out.signedNumber(state.changed);
    if (state.hash)
        out.number(*state.hash);
}

FileState readFileState(ValueReader &in, bool hasHash)
{
    FileState state;
    state.device = in.number();
    state.inode = in.number();
    state.size = in.number();
    state.changed = in.signedNumber();
    if (hasHash)
        state.hash = in.number();
    return state;
}

} // namespace TAMBO::app
