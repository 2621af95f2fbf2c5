// SPDX-License-Identifier: GPL-3.0-or-later
// Writes a synthetic protein alignment as FASTA: rows and columns as asked, three cells in ten
// gaps, the same file for the same numbers.
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>
#include <string>

namespace {

constexpr std::string_view kLetters = "ARNDCQEGHILKMFPSTWYV";
constexpr std::size_t kLineLength = 60;

// Gaps come in runs, and a row follows the family's ancestor in two places of three, so that runs,
// consensus and compression look like those of a real family.
std::string alignedRow(const std::string &ancestor, std::mt19937 &random)
{
    std::uniform_int_distribution<int> percent(0, 99);
    std::uniform_int_distribution<std::size_t> letter(0, kLetters.size() - 1);
    std::string row;
    row.reserve(ancestor.size());
    bool gap = percent(random) < 30;
    for (const char original : ancestor) {
        const int roll = percent(random);
        // A stationary share of 30 % gaps in runs of five on average.
        gap = gap ? roll >= 20 : roll * 7 < 60;
        row += gap ? '-' : percent(random) < 67 ? original : kLetters[letter(random)];
    }
    return row;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::cerr << "usage: make_fasta ROWS COLUMNS FILE\n";
        return 2;
    }
    const unsigned long rows = std::strtoul(argv[1], nullptr, 10);
    const unsigned long columns = std::strtoul(argv[2], nullptr, 10);
    std::mt19937 random(static_cast<std::uint32_t>(rows * 31 + columns));
    std::uniform_int_distribution<std::size_t> letter(0, kLetters.size() - 1);

    std::string ancestor;
    for (unsigned long column = 0; column < columns; ++column)
        ancestor += kLetters[letter(random)];

    std::ofstream file(argv[3]);
    for (unsigned long row = 0; row < rows; ++row) {
        file << ">seq" << row + 1 << '\n';
        const std::string text = alignedRow(ancestor, random);
        for (std::size_t at = 0; at < text.size(); at += kLineLength)
            file << std::string_view(text).substr(at, kLineLength) << '\n';
    }
    file.close();
    return file ? 0 : 1;
}
