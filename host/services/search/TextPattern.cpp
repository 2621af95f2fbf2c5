// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextPattern.h"

#include <algorithm>
#include <chrono>

namespace TAMBO::services {

namespace {

using EngineAnswer = ExpressionEngine::Answer;

constexpr std::size_t kFirst = 64;
constexpr std::size_t kLargest = std::size_t(1) << 30;

bool isPlain(QChar character)
{
    constexpr QLatin1String kSpecial("\\^$.[|()?*+{");
    return character.unicode() > 0 && character.unicode() < 0x80 && !kSpecial.contains(character);
}

// Most searches are for plain residues, and text is found much faster than an expression is tried.
std::optional<std::string> plainText(const QString &text)
{
    if (text.isEmpty() || !std::all_of(text.begin(), text.end(), isPlain))
        return std::nullopt;
    return text.toStdString();
}

} // namespace

TextPattern::TextPattern(const QString &text)
    : m_Plain(plainText(text)), m_Engine(std::make_unique<ExpressionEngine>(text)), m_Slice(kFirst)
{ }

TextPattern::~TextPattern() = default;

void TextPattern::findPlain(const std::string &row, const Visitor &visit) const
{
    for (std::size_t at = row.find(*m_Plain); at != std::string::npos;
         at = row.find(*m_Plain, at + m_Plain->size()))
        visit(at, m_Plain->size());
}

TextPattern::Outcome TextPattern::forEachMatch(const std::string &row, const Visitor &visit,
                                               const std::atomic<bool> &isCancelled)
{
    if (m_Plain) {
        findPlain(row, visit);
        return {};
    }
    if (!validity())
        return {};
    const QString text = QString::fromLatin1(row.data(), qsizetype(row.size()));
    // A match may begin behind the last column, where it is empty.
    const std::size_t end = row.size();
    for (std::size_t first = 0; first <= end;) {
        if (isCancelled)
            return {End::Cancelled, first, {}};
        const bool isSliced = m_Engine->canBeSliced();
        const std::size_t last = isSliced ? std::min(end, first + m_Slice - 1) : end;
        EngineAnswer answer = findInTime(text, first, last);
        if (answer == EngineAnswer::TooCostly) {
            if (isSliced && last > first) {
                m_Slice = (last - first + 1) / 2;
                continue;
            }
            answer = m_Engine->findPatiently(text, first, last, isCancelled);
        }
        if (answer == EngineAnswer::Cancelled)
            return {End::Cancelled, first, {}};
        if (answer == EngineAnswer::TooCostly)
            return {End::GaveUp, first, m_Engine->reason()};
        if (answer == EngineAnswer::NoMatch) {
            first = last + 1;
            continue;
        }
        if (m_Engine->end() <= m_Engine->begin())
            return {End::EmptyMatch, m_Engine->begin(), {}};
        visit(m_Engine->begin(), m_Engine->end() - m_Engine->begin());
        first = m_Engine->end();
    }
    return {};
}

// Between two slices the search can be cancelled, so that none may take long; many small ones would
// cost more than the search itself.
ExpressionEngine::Answer TextPattern::findInTime(const QString &text, std::size_t first,
                                                 std::size_t last)
{
    using namespace std::chrono_literals;
    constexpr auto kShort = 2ms;
    constexpr auto kLong = 20ms;
    const auto begin = std::chrono::steady_clock::now();
    const EngineAnswer answer = m_Engine->findFast(text, first, last);
    const auto taken = std::chrono::steady_clock::now() - begin;
    if (taken < kShort)
        m_Slice = std::min(2 * m_Slice, kLargest);
    else if (taken > kLong)
        m_Slice = std::max<std::size_t>(m_Slice / 2, 1);
    return answer;
}

} // namespace TAMBO::services
