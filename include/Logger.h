// SPDX-License-Identifier: GPL-3.0-or-later
// The log of the workbench: shown in its log dock and written to a file.
#pragma once

#include "Export.h"

#include <QString>

#include <cstddef>
#include <functional>

class TAMBO_API Logger
{
public:
    enum class Severity { Info, Warning, Error };

    static void Write(const char *message);
    static void Write(const QString &message);
    static void Write(const QString &message, Severity severity);

    struct Line
    {
        QString text;
        Severity severity = Severity::Info;
    };
    using LineAt = std::function<Line(std::size_t)>;
    // So many lines, one after the other. Those that neither the list nor the file would still have
    // behind the last one are not asked for, so that a million lines cost as much as some
    // thousands.
    static void WriteLines(std::size_t count, const LineAt &lineAt);
};
