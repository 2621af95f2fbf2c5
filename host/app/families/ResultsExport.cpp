// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResultsExport.h"

#include <QSaveFile>

#include <algorithm>

namespace TAMBO::app {

namespace {

QString csvField(const QString &text)
{
    const bool isPlain = std::ranges::none_of(text, [](QChar character) {
        return character == u',' || character == u'"' || character == u'\n' || character == u'\r';
    });
    return isPlain ? text : u'"' + QString(text).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

} // namespace

TableFormat tableFormatOf(const QString &file)
{
    return file.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive) ? TableFormat::Csv
                                                                      : TableFormat::Tsv;
}

QByteArray tableBytes(const QList<QStringList> &lines, TableFormat format)
{
    const bool isCsv = format == TableFormat::Csv;
    QByteArray bytes;
    for (QStringList fields : lines) {
        if (isCsv)
            std::ranges::transform(fields, fields.begin(), csvField);
        bytes += fields.join(isCsv ? u',' : u'\t').toUtf8() + (isCsv ? "\r\n" : "\n");
    }
    return bytes;
}

Result<void> writeTable(const QString &file, const QList<QStringList> &lines)
{
    QSaveFile table(file);
    const bool isWritten = table.open(QIODevice::WriteOnly) &&
                           table.write(tableBytes(lines, tableFormatOf(file))) >= 0 &&
                           table.commit();
    if (isWritten)
        return {};
    return Failure(FailureKind::System, table.errorString().toStdString(), {file.toStdString()});
}

} // namespace TAMBO::app
