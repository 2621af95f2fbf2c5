// SPDX-License-Identifier: GPL-3.0-or-later
// A table of texts as a file for other programs.
#pragma once

#include "Result.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace TAMBO::app {

enum class TableFormat {
    // As results.tsv.
    Tsv,
    // With commas; fields with commas, quotes or breaks in quotes, as RFC 4180 has it.
    Csv
};

// By the ending of the file's name.
[[nodiscard]] TableFormat tableFormatOf(const QString &file);
// In UTF-8.
[[nodiscard]] QByteArray tableBytes(const QList<QStringList> &lines, TableFormat format);
// The file is complete, or as it was.
[[nodiscard]] Result<void> writeTable(const QString &file, const QList<QStringList> &lines);

} // namespace TAMBO::app
