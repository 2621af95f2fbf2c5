// SPDX-License-Identifier: GPL-3.0-or-later
#include "IniFile.h"

#include "Text.h"

#include <algorithm>

namespace TAMBO::services {

namespace {

std::string_view takeLine(std::string_view &text)
{
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

bool isQuoted(std::string_view value)
{
    return value.size() >= 2 && value.front() == '"' && value.back() == '"';
}

std::string unquoted(std::string_view value)
{
    if (!isQuoted(value))
        return std::string(value);
    std::string result;
    value = value.substr(1, value.size() - 2);
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            result += value[i];
            continue;
        }
        ++i;
        result += value[i] == 'n' ? '\n' : value[i];
    }
    return result;
}

std::string quotedIfNeeded(std::string_view value)
{
    const bool plain = trimmed(value) == value && value.find('\n') == std::string_view::npos &&
                       !value.starts_with('"');
    if (plain)
        return std::string(value);
    std::string result = "\"";
    for (const char c : value) {
        if (c == '\n') {
            result += "\\n";
            continue;
        }
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + '"';
}

} // namespace

Result<IniFile> IniFile::parse(std::string_view text, const std::string &fileName)
{
    IniFile file;
    std::string section;
    unsigned long number = 0;
    const auto failure = [&](const char *cause) {
        return Failure{FailureKind::BadInput, cause, {fileName, number}};
    };

    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    while (!text.empty()) {
        const std::string_view raw = takeLine(text);
        const std::string_view line = trimmed(raw);
        ++number;
        if (line.find('\0') != std::string_view::npos)
            return failure("not a text file");
        if (line.empty() || line.front() == '#' || line.front() == ';') {
            file.m_Lines.push_back({std::string(raw), section, {}, {}});
        } else if (raw.front() == ' ' || raw.front() == '\t') {
            if (file.m_Lines.empty() || file.m_Lines.back().key.empty())
                return failure("a continued value without a key above it");
            Line &above = file.m_Lines.back();
            above.raw.append("\n").append(raw);
            above.value.append(above.value.empty() ? "" : " ").append(line);
        } else if (line.front() == '[') {
            if (line.back() != ']' || line.size() < 3)
                return failure("expected [section]");
            section = trimmed(line.substr(1, line.size() - 2));
            file.m_Lines.push_back({std::string(raw), section, {}, {}});
        } else {
            const auto equals = line.find('=');
            if (equals == std::string_view::npos || equals == 0)
                return failure("expected [section] or key = value");
            if (section.empty())
                return failure("a value before the first [section]");
            file.m_Lines.push_back({std::string(raw), section,
                                    std::string(trimmed(line.substr(0, equals))),
                                    unquoted(trimmed(line.substr(equals + 1))), number});
        }
    }
    return file;
}

const IniFile::Line *IniFile::find(std::string_view section, std::string_view key) const
{
    const auto found = std::find_if(m_Lines.rbegin(), m_Lines.rend(), [&](const Line &line) {
        return line.key == key && line.section == section;
    });
    return key.empty() || found == m_Lines.rend() ? nullptr : &*found;
}

std::optional<std::string> IniFile::value(std::string_view section, std::string_view key) const
{
    const Line *line = find(section, key);
    return line == nullptr ? std::nullopt : std::optional(line->value);
}

unsigned long IniFile::lineOf(std::string_view section, std::string_view key) const
{
    const Line *line = find(section, key);
    return line == nullptr ? 0 : line->number;
}

std::vector<std::string> IniFile::sections() const
{
    std::vector<std::string> sections;
    for (const Line &line : m_Lines)
        if (!line.key.empty() && std::ranges::count(sections, line.section) == 0)
            sections.push_back(line.section);
    return sections;
}

std::vector<std::string> IniFile::keys(std::string_view section) const
{
    std::vector<std::string> keys;
    for (const Line &line : m_Lines)
        if (!line.key.empty() && line.section == section && std::ranges::count(keys, line.key) == 0)
            keys.push_back(line.key);
    return keys;
}

void IniFile::setValue(std::string_view section, std::string_view key, std::string_view value)
{
    std::string raw = std::string(key) + " = " + quotedIfNeeded(value);
    Line entry{std::move(raw), std::string(section), std::string(key), std::string(value)};
    const auto same = std::find_if(m_Lines.rbegin(), m_Lines.rend(), [&](const Line &line) {
        return line.key == key && line.section == section;
    });
    if (same != m_Lines.rend()) {
        *same = std::move(entry);
        return;
    }
    // Behind the last entry of the section, or else its heading, so that blank lines and comments
    // in front of the next section stay there.
    auto last = m_Lines.rend();
    for (auto line = m_Lines.rbegin(); line != m_Lines.rend() && last == m_Lines.rend(); ++line)
        if (line->section == section && (!line->key.empty() || line->raw.starts_with('[')))
            last = line;
    if (last == m_Lines.rend()) {
        m_Lines.push_back({"[" + std::string(section) + "]", std::string(section), {}, {}});
        m_Lines.push_back(std::move(entry));
    } else {
        m_Lines.insert(last.base(), std::move(entry));
    }
}

void IniFile::remove(std::string_view section, std::string_view key)
{
    if (key.empty())
        return;
    std::erase_if(m_Lines,
                  [&](const Line &line) { return line.key == key && line.section == section; });
}

std::string IniFile::text() const
{
    std::string text;
    for (const Line &line : m_Lines)
        text.append(line.raw).append("\n");
    return text;
}

} // namespace TAMBO::services
