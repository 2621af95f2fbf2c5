// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageFile.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>

namespace Pages {

namespace {

bool isPostScript(const QString &name)
{
    return name.endsWith(QStringLiteral(".ps"), Qt::CaseInsensitive);
}

QString cannotWrite(const QString &target, const QString &reason)
{
    return QStringLiteral("%1 was not written: %2").arg(target, reason);
}

} // namespace

QString writePageFile(const QString &pdf, const PageFile &file)
{
    QSaveFile target(file.target);
    if (!target.open(QIODevice::WriteOnly))
        return cannotWrite(file.target, target.errorString());
    QFile source(pdf);
    if (!isCompletePdf(pdf) || !source.open(QIODevice::ReadOnly))
        return cannotWrite(file.target,
                           QStringLiteral("the pages broke off; is there room on the disk?"));
    const QByteArray bytes = source.readAll();
    QString error;
    if (isPostScript(file.target))
        error = writePostScript(bytes, file.title, file.progress, target);
    else
        target.write(bytes);
    // What is written last is not looked at when the file is closed.
    if (!target.flush() || target.error() != QFileDevice::NoError)
        error = target.errorString();
    if (!error.isEmpty()) {
        target.cancelWriting();
        return cannotWrite(file.target, error);
    }
    return target.commit() ? QString() : cannotWrite(file.target, target.errorString());
}

bool isCompletePdf(const QString &pdf)
{
    QFile file(pdf);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    constexpr qint64 kTail = 32;
    file.seek(std::max<qint64>(0, file.size() - kTail));
    return file.readAll().trimmed().endsWith("%%EOF");
}

} // namespace Pages
