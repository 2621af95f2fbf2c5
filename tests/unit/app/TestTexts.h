// SPDX-License-Identifier: GPL-3.0-or-later
// Small files for tests.
#pragma once

#include <QByteArray>

#include <string>
#include <vector>

// One chain A of alanines and glycines with CA atoms, numbered from 1.
inline QByteArray pdbText(const std::string &letters)
{
    QByteArray text;
    int number = 1;
    for (const char letter : letters) {
        text += QByteArray("ATOM  %1  CA  %2 A%3    %4   0.000   0.000  1.00  0.00           C\n")
                    .replace("%1", QByteArray::number(number).rightJustified(5))
                    .replace("%2", letter == 'A' ? "ALA" : "GLY")
                    .replace("%3", QByteArray::number(number).rightJustified(4))
                    .replace("%4", QByteArray::number(number * 3.8, 'f', 3).rightJustified(8));
        ++number;
    }
    return text + "END\n";
}

// Two rows "AG-" and "A-G"; the first ones name the structures.
inline QByteArray pirNaming(const std::vector<std::string> &structures)
{
    QByteArray text;
    for (std::size_t row = 0; row < std::max<std::size_t>(2, structures.size()); ++row) {
        text += ">P1;row" + QByteArray::number(int(row)) + "\n";
        text += row < structures.size()
                    ? "structureX:" + QByteArray::fromStdString(structures[row]) + ":1:A:2:A::::\n"
                    : QByteArray("sequence:row:::::::0.00: 0.00\n");
        text += row % 2 == 0 ? "AG-*\n" : "A-G*\n";
    }
    return text;
}
