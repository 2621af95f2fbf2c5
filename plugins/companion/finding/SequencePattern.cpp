// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequencePattern.h"

#include "Texts.h"

#include <algorithm>

namespace companion {

namespace {

constexpr std::uint32_t kNoLetter = 1U << 26;
constexpr std::uint32_t kAnyLetter = kNoLetter * 2 - 1;
// Of a pattern, in letters: more is no pattern, and would be sought for minutes.
constexpr int kLongest = 10'000;

std::uint32_t bitOf(char letter) noexcept
{
    const char small = static_cast<char>(letter | 0x20);
    return small >= 'a' && small <= 'z' ? 1U << (small - 'a') : kNoLetter;
}

// Takes a pattern of PROSITE apart, element by element.
class PrositeReader
{
public:
    explicit PrositeReader(const QString &text) : m_Text(text) { }

    struct Element
    {
        std::uint32_t letters = 0;
        int least = 1;
        int most = 1;
    };

    [[nodiscard]] bool read()
    {
        isAtBegin = take(u'<');
        while (m_Place < m_Text.size()) {
            if (!elements.empty() && !take(u'-'))
                return fail(tr("expected \"-\""));
            if (!readElement())
                return false;
            isAtEnd = take(u'>');
            if (take(u'.') || isAtEnd)
                break;
        }
        take(u'.');
        if (m_Place < m_Text.size())
            return fail(tr("nothing may follow the end"));
        return !elements.empty() || fail(tr("expected a letter"));
    }

    std::vector<Element> elements;
    bool isAtBegin = false;
    bool isAtEnd = false;
    QString mistake;

private:
    [[nodiscard]] QChar next() const
    {
        return m_Place < m_Text.size() ? m_Text.at(m_Place) : QChar();
    }
    bool take(QChar wanted)
    {
        const bool isThere = next() == wanted && m_Place < m_Text.size();
        m_Place += isThere ? 1 : 0;
        return isThere;
    }
    bool fail(const QString &cause)
    {
        mistake = tr("Character %1: %2.").arg(m_Place + 1).arg(cause);
        return false;
    }
    bool readElement()
    {
        Element element;
        if (take(u'x') || take(u'X'))
            element.letters = kAnyLetter;
        else if (take(u'['))
            return readLetters(u']', element.letters) && readRepetition(element);
        else if (take(u'{'))
            return readLetters(u'}', element.letters) &&
                   (element.letters ^= kAnyLetter, readRepetition(element));
        else if (!readLetter(element.letters))
            return fail(tr("expected a letter, x, [ or {"));
        return readRepetition(element);
    }
    bool readLetter(std::uint32_t &letters)
    {
        const char letter = next().toLatin1();
        if (bitOf(letter) == kNoLetter)
            return false;
        letters |= bitOf(letter);
        ++m_Place;
        return true;
    }
    bool readLetters(QChar end, std::uint32_t &letters)
    {
        while (!take(end)) {
            if (!readLetter(letters))
                return fail(tr("expected a letter or \"%1\"").arg(end));
        }
        return letters != 0 || fail(tr("expected a letter"));
    }
    bool readNumber(int &number)
    {
        const qsizetype begin = m_Place;
        while (next().isDigit())
            ++m_Place;
        bool isNumber = false;
        number = m_Text.mid(begin, m_Place - begin).toInt(&isNumber);
        return isNumber && number <= kLongest;
    }
    bool readRepetition(Element &element)
    {
        if (take(u'(')) {
            if (!readNumber(element.least))
                return fail(tr("expected a number of letters"));
            element.most = element.least;
            if (take(u',') && !readNumber(element.most))
                return fail(tr("expected a number of letters"));
            if (!take(u')'))
                return fail(tr("expected \")\""));
            if (element.most < element.least || element.most == 0)
                return fail(tr("the second number is smaller than the first, or 0"));
        }
        elements.push_back(element);
        return true;
    }

    const QString &m_Text;
    qsizetype m_Place = 0;
};

QString classOf(std::uint32_t letters)
{
    if (letters == kAnyLetter)
        return QStringLiteral(".");
    QString text = (letters & kNoLetter) != 0 ? QStringLiteral("[^") : QStringLiteral("[");
    for (int i = 0; i < 26; ++i) {
        const bool isIn = (letters >> i & 1) != 0;
        if (isIn != ((letters & kNoLetter) != 0))
            text += QChar(u'A' + i);
    }
    return text + u']';
}

} // namespace

SequencePattern::SequencePattern(const QString &text, PatternLanguage language, unsigned mismatches)
    : m_Mismatches(mismatches)
{
    if (text.size() > kLongest)
        m_Mistake = tr("The pattern is longer than %1 characters.").arg(kLongest);
    else if (language == PatternLanguage::Plain)
        readPlain(text);
    else if (language == PatternLanguage::Prosite)
        readProsite(text.simplified().remove(u' '));
    else
        addExpression(text);
    const bool hasOneLength = !m_Places.empty();
    if (isGood() && mismatches > 0 && !hasOneLength)
        m_Mistake = tr("Only patterns of one length may have mismatches.");
    else if (isGood() && mismatches > 0 && mismatches >= m_Places.size())
        m_Mistake = tr("With %1 mismatches everything would match.").arg(mismatches);
}

void SequencePattern::readPlain(const QString &text)
{
    for (const QChar character : text)
        m_Places.push_back(bitOf(character.toLatin1()));
    m_Expression.setPattern(QRegularExpression::escape(text));
    m_Expression.setPatternOptions(QRegularExpression::CaseInsensitiveOption);
}

void SequencePattern::readProsite(const QString &text)
{
    PrositeReader reader(text);
    if (!reader.read()) {
        m_Mistake = reader.mistake;
        return;
    }
    m_IsAtBegin = reader.isAtBegin;
    m_IsAtEnd = reader.isAtEnd;
    QString expression = m_IsAtBegin ? QStringLiteral("^") : QString();
    bool hasOneLength = true;
    std::size_t length = 0;
    for (const PrositeReader::Element &element : reader.elements) {
        hasOneLength = hasOneLength && element.least == element.most;
        length += static_cast<std::size_t>(element.most);
        expression += classOf(element.letters) +
                      QStringLiteral("{%1,%2}").arg(element.least).arg(element.most);
    }
    if (length > kLongest) {
        m_Mistake = tr("The pattern is longer than %1 letters.").arg(kLongest);
        return;
    }
    if (m_IsAtEnd)
        expression += u'$';
    addExpression(expression);
    if (!hasOneLength)
        return;
    for (const PrositeReader::Element &element : reader.elements)
        m_Places.insert(m_Places.end(), static_cast<std::size_t>(element.most), element.letters);
}

void SequencePattern::addExpression(const QString &expression)
{
    m_Expression.setPattern(expression);
    m_Expression.setPatternOptions(QRegularExpression::CaseInsensitiveOption);
    if (!m_Expression.isValid())
        m_Mistake = tr("Character %1: %2.")
                        .arg(m_Expression.patternErrorOffset() + 1)
                        .arg(m_Expression.errorString());
}

std::vector<Match> SequencePattern::matchesIn(std::string_view letters) const
{
    std::vector<Match> found;
    if (!isGood())
        return found;
    if (m_Places.empty()) {
        if (m_Expression.pattern().isEmpty())
            return found;
        const QString text = QString::fromLatin1(letters.data(), qsizetype(letters.size()));
        for (auto matches = m_Expression.globalMatch(text); matches.hasNext();) {
            const QRegularExpressionMatch match = matches.next();
            if (match.capturedLength() > 0)
                found.push_back(
                    {std::size_t(match.capturedStart()), std::size_t(match.capturedEnd())});
        }
        return found;
    }
    const std::size_t length = m_Places.size();
    if (letters.size() < length)
        return found;
    const std::size_t last = letters.size() - length;
    const std::size_t first = m_IsAtEnd ? last : 0;
    const std::size_t end = m_IsAtBegin ? 0 : last;
    for (std::size_t begin = first; begin <= end; ++begin) {
        unsigned others = 0;
        for (std::size_t i = 0; i < length && others <= m_Mismatches; ++i)
            others += (m_Places[i] & bitOf(letters[begin + i])) == 0 ? 1 : 0;
        if (others <= m_Mismatches)
            found.push_back({begin, begin + length});
    }
    return found;
}

bool SequencePattern::isIn(const QString &name) const
{
    return isGood() && !m_Expression.pattern().isEmpty() && m_Expression.match(name).hasMatch();
}

} // namespace companion
