// SPDX-License-Identifier: GPL-3.0-or-later
#include "MadeAlignment.h"

#include <random>
#include <string>

TAMBO::AlignmentRecord madeAlignment(unsigned long rows, unsigned long columns)
{
    constexpr const char *kLetters = "ARNDCQEGHILKMFPSTWYV";
    std::mt19937 random(rows * 31 + columns);
    TAMBO::AlignmentRecord record;
    record.name = "made";
    for (unsigned long i = 0; i < rows; ++i) {
        std::string text;
        while (text.size() < columns) {
            text.append(1 + random() % 5, '-');
            for (unsigned long count = 1 + random() % 13; count > 0; --count)
                text += kLetters[random() % 20];
        }
        text.resize(columns);
        TAMBO::RowRecord &row = record.rows.emplace_back();
        row.name = "row" + std::to_string(i);
        row.sequence.append(text);
        // As a reader leaves it.
        row.sequence.letters.shrink_to_fit();
    }
    return record;
}
