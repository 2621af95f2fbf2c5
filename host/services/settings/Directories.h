// SPDX-License-Identifier: GPL-3.0-or-later
// Where the workbench finds what was installed with it and keeps what belongs to the user. All
// without a trailing "/"; none is created by asking for it.
#pragma once

#include <QString>

namespace TAMBO::services {

// The environment variable TAMBO_SHARE_DIR moves the first; TAMBO_USER_DIR moves the others below
// one directory, for a portable installation and for tests.
class Directories
{
public:
    // Icons, colour maps, scales, help, default settings: ../share/tambo beside the program.
    [[nodiscard]] static QString shared();
    // What the program opens when it is needed: ../lib/tambo/parts beside it.
    [[nodiscard]] static QString libraries();
    // The plug-ins that were installed with it: in the folder plugins there.
    [[nodiscard]] static QString plugins();
    // The user's settings, own colour maps and scales.
    [[nodiscard]] static QString config();
    // The log, the places of windows, plug-ins of the user's own.
    [[nodiscard]] static QString data();
    // The work of running workbenches, for the case that one does not come to its end.
    [[nodiscard]] static QString state();
    // Files of running jobs.
    [[nodiscard]] static QString scratch();
};

} // namespace TAMBO::services
