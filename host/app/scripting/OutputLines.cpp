// SPDX-License-Identifier: GPL-3.0-or-later
#include "OutputLines.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

// Colors and movements of a terminal, and titles for its window.
QString withoutEscapes(QString text)
{
    static const QRegularExpression escapes(
        QStringLiteral("\x1b(\\[[0-9;?]*[ -/]*[@-~]|\\][^\x07\x1b]*(\x07|\x1b\\\\)|[@-Z])"));
    return text.contains(u'\x1b') ? text.remove(escapes) : text;
}

} // namespace

void OutputLines::write(std::string_view text, LineKind kind)
{
    QStringDecoder &decoder = kind == LineKind::Error ? m_ErrorText : m_OutputText;
    const QString decoded =
        withoutEscapes(decoder.decode(QByteArrayView(text.data(), qsizetype(text.size()))));
    qsizetype from = 0;
    while (from < decoded.size()) {
        const qsizetype end = decoded.indexOf(u'\n', from);
        add(QStringView(decoded).mid(from, end < 0 ? -1 : end - from), kind);
        if (end < 0)
            break;
        // An empty line has a kind as well.
        if (!m_HasOpen)
            m_Open.kind = kind;
        m_HasOpen = true;
        endLine();
        from = end + 1;
    }
}

void OutputLines::addLines(const QString &text, LineKind kind)
{
    breakLine();
    for (const QStringView line : QStringView(text).split(u'\n')) {
        add(line, kind);
        m_Open.kind = kind;
        m_HasOpen = true;
        endLine();
    }
}

void OutputLines::add(QStringView text, LineKind kind)
{
    if (text.isEmpty())
        return;
    // What is written to the two places is told apart, by lines.
    if (m_HasOpen && m_Open.kind != kind)
        endLine();
    for (qsizetype from = 0; from <= text.size();) {
        const qsizetype found = text.indexOf(u'\r', from);
        const qsizetype end = found < 0 ? text.size() : found;
        QStringView part = text.mid(from, end - from);
        while (!part.isEmpty()) {
            if (std::exchange(m_HasReturned, false))
                m_Open.text.clear();
            const qsizetype room = kLongest - m_Open.text.size();
            m_Open.text += part.first(std::min(room, part.size()));
            part = part.sliced(std::min(room, part.size()));
            m_Open.kind = kind;
            m_HasOpen = true;
            m_IsNews = true;
            if (!part.isEmpty())
                endLine();
        }
        m_HasReturned = m_HasReturned || found >= 0;
        from = end + 1;
    }
}

void OutputLines::endLine()
{
    m_Complete.push_back(std::exchange(m_Open, {}));
    m_HasOpen = false;
    m_IsNews = false;
    m_HasReturned = false;
    if (m_Complete.size() > m_Most) {
        m_Complete.pop_front();
        m_WasTaken = false;
    }
}

void OutputLines::breakLine()
{
    if (m_HasOpen)
        endLine();
    m_HasReturned = false;
}

OutputLines::News OutputLines::take()
{
    News news{m_WasTaken && hasNews(), std::exchange(m_Complete, {})};
    if (m_IsNews)
        news.lines.push_back(m_Open);
    // When the line that was taken before has just ended, nothing of the next one has been.
    if (m_IsNews)
        m_WasTaken = true;
    else if (!news.lines.empty())
        m_WasTaken = false;
    m_IsNews = false;
    return news;
}

} // namespace TAMBO::app
