// SPDX-License-Identifier: GPL-3.0-or-later
// What was typed into the console, in this run of the program and in earlier ones.
#pragma once

#include <QString>
#include <QStringList>

namespace TAMBO::app {

class ConsoleHistory
{
public:
    // So many are kept between runs of the program.
    static constexpr int kMost = 1000;

    // In a file, which is read when somebody asks for the first time; several workbenches add to
    // it. Only its owner can read it.
    explicit ConsoleHistory(QString file) : m_File(std::move(file)) { }

    [[nodiscard]] static QString standardFile();

    // Not what was typed just before.
    void add(const QString &source);
    // The one before or after the present one that begins with the text; what was being typed comes
    // after the last one. Nothing is at the ends.
    [[nodiscard]] const QString *earlier(const QString &typed);
    [[nodiscard]] const QString *later();
    // What is shown has been changed: it is no entry any more.
    void leave() { m_Place = -1; }

private:
    void read();
    void writeAgain() const;

    QString m_File;
    bool m_IsRead = false;
    QStringList m_Entries;
    // Of the entry that is shown; -1 when none is.
    qsizetype m_Place = -1;
    QString m_Typed;
};

} // namespace TAMBO::app
