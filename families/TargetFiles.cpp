// SPDX-License-Identifier: GPL-3.0-or-later
#include "TargetFiles.h"

#include "Text.h"

#include <algorithm>

namespace TAMBO::families {

namespace {

// With endings, and what is put before and behind a name while a file is written.
constexpr std::size_t kLongest = 160;

bool isFileLetter(char character)
{
    return isLetter(character) || isDigit(character) || character == '.' || character == '_' ||
           character == '-';
}

std::string fileWord(const std::string &row)
{
    std::string word = row.substr(0, kLongest);
    for (char &character : word) {
        if (!isFileLetter(character))
            character = '_';
    }
    if (word.empty())
        return "row";
    if (word.front() == '.' || word.front() == '-')
        word.front() = '_';
    if (word.back() == '.')
        word.back() = '_';
    return word;
}

} // namespace

bool isFileWord(std::string_view name)
{
    constexpr std::size_t kSuffix = 20;
    return !name.empty() && name.size() <= kLongest + kSuffix && name.front() != '.' &&
           name.front() != '-' && std::ranges::all_of(name, isFileLetter);
}

void TargetFiles::take(const std::string &file)
{
    m_Taken.insert(lowerCase(file));
}

std::string TargetFiles::add(const std::string &row)
{
    const std::string word = fileWord(row);
    std::string file = word;
    int &number = m_Numbers.try_emplace(lowerCase(word), 1).first->second;
    while (!m_Taken.insert(lowerCase(file)).second)
        file = word + '_' + std::to_string(++number);
    return file;
}

} // namespace TAMBO::families
