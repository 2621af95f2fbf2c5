// SPDX-License-Identifier: GPL-3.0-or-later
// The pages about formats say what the table of formats says, no less and no more.
#include "TestFiles.h"
#include "Text.h"
#include "WriteOptions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace TAMBO {
namespace FormatPageTest {

using Cells = std::vector<std::string>;
using Table = std::vector<Cells>;

std::string pageText(const std::string &name)
{
    return formats::bytesOf(std::filesystem::path(SOURCE_DIR) / name);
}

Cells cellsOf(std::string_view line)
{
    Cells cells;
    line.remove_prefix(1);
    while (!line.empty()) {
        const std::size_t end = line.find('|');
        cells.emplace_back(trimmed(line.substr(0, end)));
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return cells;
}

// The rows of the first table behind a title, its head among them.
Table tableBehind(const std::string &page, const std::string &title)
{
    const std::size_t place = page.find('\n' + title + '\n');
    EXPECT_NE(place, std::string::npos) << title;
    Table rows;
    std::string_view rest = std::string_view(page).substr(place + 1);
    while (!rest.empty()) {
        const std::string_view line = takeLine(rest);
        if (line.starts_with("|---"))
            continue;
        if (line.starts_with('|'))
            rows.push_back(cellsOf(line));
        else if (!rows.empty())
            break;
    }
    EXPECT_GT(rows.size(), 1U) << title;
    return rows;
}

// What stands between ` and `.
std::vector<std::string> namesIn(std::string_view cell)
{
    std::vector<std::string> names;
    while (cell.find('`') != std::string_view::npos) {
        cell.remove_prefix(cell.find('`') + 1);
        names.emplace_back(cell.substr(0, cell.find('`')));
        cell.remove_prefix(std::min(cell.find('`') + 1, cell.size()));
    }
    return names;
}

TEST(FormatPage, TellsHowEachFormatThatIsReadIsRecognised)
{
    std::set<std::string> told;
    const Table table = tableBehind(pageText("docs/formats.md"), "## Reading");
    for (std::size_t row = 1; row < table.size(); ++row)
        for (const std::string &name : namesIn(table[row].front()))
            told.insert(name);
    std::set<std::string> known;
    for (const FormatEntry &entry : kFormats)
        if (entry.isRecognised())
            known.emplace(entry.name);
    EXPECT_EQ(told, known);
}

TEST(FormatPage, TellsTheNamesAndEndingsThatAreWritten)
{
    std::vector<std::string> names;
    const Table table = tableBehind(pageText("docs/formats.md"), "## Writing");
    for (std::size_t row = 1; row < table.size(); ++row) {
        const std::vector<std::string> here = namesIn(table[row][0]);
        names.insert(names.end(), here.begin(), here.end());
        std::vector<std::string> endings;
        for (const FormatEntry &entry : kFormats)
            if (entry.name == here.front())
                endings.assign(entry.endings().begin(), entry.endings().end());
        EXPECT_EQ(namesIn(table[row][1]), endings) << here.front();
    }
    const std::vector<std::string_view> known = writeFormatNames();
    EXPECT_EQ(names, std::vector<std::string>(known.begin(), known.end()));
}

// One row for each thing that is not held by all, one column for each format of the kind.
void expectHolds(FormatKind kind, const std::string &title)
{
    Table expected = {{""}};
    for (const FormatEntry &entry : kFormats)
        if (entry.kind == kind)
            expected.front().push_back('`' + std::string(entry.name) + '`');
    for (const ContentEntry &content : kContents) {
        if (content.kind != kind)
            continue;
        Cells &row = expected.emplace_back(Cells{std::string(content.title)});
        for (const FormatEntry &entry : kFormats)
            if (entry.kind == kind)
                row.emplace_back(entry.holds(content.content) ? "yes" : "–");
    }
    EXPECT_EQ(tableBehind(pageText("docs/formats.md"), title), expected);
}

TEST(FormatPage, TellsWhatFilesOfAlignmentsCanHold)
{
    expectHolds(FormatKind::Alignments, "### What a file of alignments can hold");
}

TEST(FormatPage, TellsWhatFilesOfStructuresCanHold)
{
    expectHolds(FormatKind::Structures, "### What a file of structures can hold");
}

TEST(FormatPage, TheFirstPageNamesEveryFormat)
{
    const std::string page = pageText("README.md");
    std::string words;
    for (const std::string_view word : wordsOf(page))
        (words += word) += ' ';
    for (const FormatKind kind : {FormatKind::Structures, FormatKind::Alignments}) {
        const auto isOfKind = [kind](const FormatEntry &entry) { return entry.kind == kind; };
        EXPECT_NE(words.find('(' + formatTitles(isOfKind) + ')'), std::string::npos)
            << formatTitles(isOfKind);
    }
}

} // namespace FormatPageTest
} // namespace TAMBO
