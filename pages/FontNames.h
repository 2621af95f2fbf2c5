// SPDX-License-Identifier: GPL-3.0-or-later
// Gives every font of a PostScript file a name of its own, while the file is written.
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QSet>

namespace Pages {

// The writer makes two fonts of one that has letters outside of Latin, and calls both the same.
// Interpreters take them for one, and lose the text of the second. Its pages refer to fonts in
// another way, so the name is free.
class FontNames
{
public:
    explicit FontNames(QIODevice &target) : m_Target(target) { }

    // False when the target did not take something.
    [[nodiscard]] bool write(const QByteArray &bytes);
    // Hands on the last line, if it has no end.
    [[nodiscard]] bool finish();

private:
    [[nodiscard]] QByteArray renamed(QByteArray line);
    [[nodiscard]] bool handOn(const QByteArray &bytes);

    QIODevice &m_Target;
    QSet<QByteArray> m_Names;
    // Of the lines before the first page, what has no end yet.
    QByteArray m_Line;
    bool m_IsSetupOver = false;
};

} // namespace Pages
