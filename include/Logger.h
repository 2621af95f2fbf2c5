// SPDX-License-Identifier: GPL-3.0-or-later
// The log of the workbench: shown in its log dock and written to a file.
#pragma once

#include "Export.h"

#include <QString>

class TAMBO_API Logger
{
public:
    enum class Severity { Info, Warning, Error };

    static void Write(const char *message);
    static void Write(const QString &message);
    static void Write(const QString &message, Severity severity);
};
