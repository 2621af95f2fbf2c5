// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellReader.h"

#include "FormatText.h"

namespace TAMBO::formats {

std::size_t appendCells(std::string_view text, RowBuilder &row)
{
    std::size_t done = 0;
    for (;;) {
        // Names have blanks behind them, each of which would be found by looking at 64 characters.
        while (done < text.size() && text[done] == ' ')
            ++done;
        done += row.append(text.substr(done));
        if (done == text.size())
            return done;
        const char character = text[done];
        if (character == '*')
            row.appendStop();
        else if (character == '_')
            row.appendGap();
        else if (character == '?')
            row.appendLetter('X');
        else if (character == '\n' || !isBlank(character))
            return done;
        ++done;
    }
}

// The line is found to end where its residues do, without looking for the end first.
char readCells(TextReader &reader, RowBuilder &row)
{
    for (;;) {
        const std::string_view text = reader.ahead();
        const std::size_t count = appendCells(text, row);
        const char stop = count < text.size() ? text[count] : '\n';
        reader.skip(count);
        if (count < text.size() || !reader.fill())
            return stop;
    }
}

} // namespace TAMBO::formats
