// SPDX-License-Identifier: GPL-3.0-or-later
// A plug-in that opens nothing.
#include <QtGlobal>

extern "C" {

Q_DECL_EXPORT void Execute0() { }

Q_DECL_EXPORT bool IsDone()
{
    return true;
}

Q_DECL_EXPORT void Cleanup() { }

} // extern "C"
