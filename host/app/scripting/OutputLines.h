// SPDX-License-Identifier: GPL-3.0-or-later
// What scripts write, as lines: it comes in parts of any size, and much faster than it can be
// shown.
#pragma once

#include <QString>
#include <QStringDecoder>

#include <cstddef>
#include <deque>
#include <string_view>

namespace TAMBO::app {

enum class LineKind {
    Output,
    Error,
    // What the user has typed.
    Input,
    // What the workbench says of a run.
    Notice
};

struct OutputLine
{
    QString text;
    LineKind kind = LineKind::Output;

    bool operator==(const OutputLine &) const = default;
};

class OutputLines
{
public:
    // Longer ones are broken: what shows them lays out a line in one go.
    static constexpr qsizetype kLongest = 8192;

    // Of more lines than these between two looks the first are left out.
    explicit OutputLines(std::size_t most) : m_Most(most) { }

    // UTF-8, of which a character may come in two parts. "\r" begins the line anew, as on a
    // terminal, whose colors are left out.
    void write(std::string_view text, LineKind kind);
    // Lines of their own, below what is there.
    void addLines(const QString &text, LineKind kind);

    struct News
    {
        // The first line takes the place of the last one that was taken before.
        bool replacesLast = false;
        std::deque<OutputLine> lines;
    };
    // What has come since it was asked last.
    [[nodiscard]] News take();
    [[nodiscard]] bool hasNews() const noexcept { return m_IsNews || !m_Complete.empty(); }
    // The line that has not ended is forgotten: what comes begins a new one.
    void breakLine();

private:
    void add(QStringView text, LineKind kind);
    void endLine();

    std::size_t m_Most;
    std::deque<OutputLine> m_Complete;
    OutputLine m_Open;
    // Whether there is a line that has not ended; it may be empty still.
    bool m_HasOpen = false;
    // It has more than when it was taken.
    bool m_IsNews = false;
    // The open line, or the first complete one, has been taken before as far as it was.
    bool m_WasTaken = false;
    // The next text begins the line anew.
    bool m_HasReturned = false;
    QStringDecoder m_OutputText{QStringDecoder::Utf8};
    QStringDecoder m_ErrorText{QStringDecoder::Utf8};
};

} // namespace TAMBO::app
