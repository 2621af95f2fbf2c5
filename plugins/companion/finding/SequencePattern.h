// SPDX-License-Identifier: GPL-3.0-or-later
// What one looks for in names or in sequences.
#pragma once

#include <QRegularExpression>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace companion {

enum class PatternLanguage {
    // As it stands, large or small.
    Plain,
    // A regular expression of the toolkit.
    Expression,
    // As in the PROSITE database: letters, x, [ABC], {ABC}, repetitions (n) and (n,m), parted by
    // "-",
    // "<" and ">" for the ends of the sequence (Sigrist and others, Brief Bioinform 3:265, 2002).
    Prosite
};

// [begin, end), in letters.
struct Match
{
    std::size_t begin = 0;
    std::size_t end = 0;

    friend bool operator==(const Match &, const Match &) = default;
};

// Letters are compared whether large or small.
class SequencePattern
{
public:
    // mismatches: of letters that may be others, for patterns of one length.
    SequencePattern(const QString &text, PatternLanguage language, unsigned mismatches = 0);

    // What is wrong with it, and where, for people; empty when nothing is. Then it has no matches.
    [[nodiscard]] const QString &mistake() const noexcept { return m_Mistake; }
    [[nodiscard]] bool isGood() const noexcept { return m_Mistake.isEmpty(); }
    // All matches in a sequence without gaps, from its beginning on. Those of one length may
    // overlap, others begin behind the one before; empty ones are left out.
    [[nodiscard]] std::vector<Match> matchesIn(std::string_view letters) const;
    [[nodiscard]] bool isIn(const QString &name) const;

private:
    // A bit for each letter that may stand there, 0 for A; bit 26 for what is no letter.
    using Letters = std::uint32_t;

    void readPlain(const QString &text);
    void readProsite(const QString &text);
    void addExpression(const QString &expression);

    QString m_Mistake;
    unsigned m_Mismatches;
    // Of one length; else empty.
    std::vector<Letters> m_Places;
    bool m_IsAtBegin = false;
    bool m_IsAtEnd = false;
    QRegularExpression m_Expression;
};

} // namespace companion
