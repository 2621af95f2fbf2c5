// SPDX-License-Identifier: GPL-3.0-or-later
#include "Logger.h"

#include "LogBook.h"
#include "Text.h"

#include <QStringDecoder>

using TAMBO::services::LogBook;

namespace {

// Callers hand over UTF-8 or, where a program's output is passed on, Latin-1.
QString decoded(QByteArrayView message)
{
    // Stateless: a character that the end cuts off is an error too.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(message);
    return decoder.hasError() ? QString::fromLatin1(message) : text;
}

// A program may have said more than anybody reads; the middle is not even decoded.
QString decodedEnds(QByteArrayView message)
{
    qsizetype begin = LogBook::kLongest / 2;
    qsizetype end = message.size() - LogBook::kLongest / 2;
    for (int i = 0; i < 3 && TAMBO::isContinuation(message[begin]); ++i)
        --begin;
    for (int i = 0; i < 3 && TAMBO::isContinuation(message[end]); ++i)
        ++end;
    return decoded(message.first(begin)) + LogBook::leftOut(end - begin) +
           decoded(message.sliced(end));
}

} // namespace

void Logger::Write(const char *message)
{
    if (message == nullptr)
        return;
    const QByteArrayView text(message);
    // The note of what is left out takes some room, too.
    constexpr qsizetype kRoom = 1000;
    Write(text.size() > LogBook::kLongest + kRoom ? decodedEnds(text) : decoded(text),
          Severity::Info);
}

void Logger::Write(const QString &message)
{
    Write(message, Severity::Info);
}

void Logger::Write(const QString &message, Severity severity)
{
    LogBook::instance().write(message, severity);
}

void Logger::WriteLines(std::size_t count, const LineAt &lineAt)
{
    LogBook::instance().write(count, lineAt);
}
