// SPDX-License-Identifier: GPL-3.0-or-later
#include "Logger.h"

#include "LogBook.h"

#include <QStringDecoder>

using TAMBO::services::LogBook;

namespace {

// Callers hand over UTF-8 or, where a program's output is passed on, Latin-1.
QString decoded(const char *message)
{
    // Stateless: a character that the end cuts off is an error too.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(message);
    return decoder.hasError() ? QString::fromLatin1(message) : text;
}

} // namespace

void Logger::Write(const char *message)
{
    if (message != nullptr)
        Write(decoded(message), Severity::Info);
}

void Logger::Write(const QString &message)
{
    Write(message, Severity::Info);
}

void Logger::Write(const QString &message, Severity severity)
{
    LogBook::instance().write(message, severity);
}
