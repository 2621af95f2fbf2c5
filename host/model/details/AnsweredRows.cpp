// SPDX-License-Identifier: GPL-3.0-or-later
#include "AnsweredRows.h"

#include "Text.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace TAMBO::realign {

namespace {

constexpr char kNamePrefix = 'r';

std::string_view nextLine(std::string_view &text)
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
        line.remove_suffix(1);
    return line;
}

// The number in a name of ours.
std::optional<std::size_t> numberOf(std::string_view header)
{
    const std::string_view name = header.substr(1, header.find_first_of(" \t") - 1);
    if (name.size() < 2 || name.front() != kNamePrefix)
        return std::nullopt;
    return numberIn<std::size_t>(name.substr(1));
}

} // namespace

char asKnown(char letter) noexcept
{
    constexpr std::string_view kKnown = "ACDEFGHIKLMNPQRSTVWY";
    if (letter >= 'a' && letter <= 'z')
        letter = static_cast<char>(letter - 'a' + 'A');
    return kKnown.find(letter) == std::string_view::npos ? 'X' : letter;
}

bool isAnsweredGap(char c) noexcept
{
    return c == '-' || c == '.';
}

std::string lettersOf(std::string_view answered)
{
    std::string letters;
    for (const char c : answered)
        if (!isAnsweredGap(c))
            letters += asKnown(c);
    return letters;
}

std::string fastaRecord(std::size_t number, std::string_view text)
{
    return '>' + (kNamePrefix + std::to_string(number)) + '\n' + std::string(text) + '\n';
}

Result<std::vector<std::string>> answeredRows(std::string_view answer, std::size_t count)
{
    std::vector<std::optional<std::string>> answered(count);
    std::string *current = nullptr;
    while (!answer.empty()) {
        const std::string_view line = nextLine(answer);
        if (line.starts_with('>')) {
            const auto number = numberOf(line);
            if (!number || *number >= count)
                return Failure{FailureKind::BadInput,
                               "it answered with a sequence that it was not given"};
            if (answered[*number])
                return Failure{FailureKind::BadInput, "it answered with one sequence twice"};
            current = &answered[*number].emplace();
        } else if (current != nullptr) {
            *current += line;
        } else if (!line.empty()) {
            return Failure{FailureKind::BadInput, "its answer is no FASTA"};
        }
    }
    std::vector<std::string> rows;
    for (std::optional<std::string> &row : answered) {
        if (!row)
            return Failure{FailureKind::BadInput, "its answer lacks a sequence"};
        if (!rows.empty() && row->size() != rows.front().size())
            return Failure{FailureKind::BadInput, "the rows of its answer differ in length"};
        rows.push_back(*std::move(row));
    }
    return rows;
}

} // namespace TAMBO::realign
