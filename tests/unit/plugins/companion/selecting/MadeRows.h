// SPDX-License-Identifier: GPL-3.0-or-later
// Random alignments, and the plain way to what is measured of them.
#pragma once

#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "DataMaker.h"

#include <random>
#include <string>
#include <vector>

class MadeRows : public ModelFixture
{
protected:
    // Rows that are not alike in which columns they have gaps, some columns without any residue.
    TAMBO::Alignment &made(unsigned seed, unsigned long rows, unsigned long columns)
    {
        m_Random.seed(seed);
        std::string shape;
        for (unsigned long col = 0; col < columns; ++col)
            shape += char('0' + below(10));
        m_Texts.clear();
        for (unsigned long row = 0; row < rows; ++row) {
            std::string text;
            for (unsigned long col = 0; col < columns; ++col)
                text += below(9) < unsigned(shape[col] - '0') ? '-' : "ACDacWX"[below(7)];
            // So that it has as many columns.
            text.back() = 'A';
            m_Texts.push_back(text);
        }
        return alignmentOfTexts();
    }
    unsigned below(unsigned limit) { return unsigned(m_Random() % limit); }

    std::vector<std::string> m_Texts;

private:
    TAMBO::Alignment &alignmentOfTexts()
    {
        std::vector<TAMBO::Compound *> sequences;
        for (const std::string &text : m_Texts) {
            std::string letters = text;
            std::erase(letters, '-');
            sequences.push_back(
                TAMBO::DataMaker::makeSequence("row" + std::to_string(sequences.size()), letters));
        }
        TAMBO::Alignment &alignment = *TAMBO::DataMaker::makeAlignment("rows", sequences);
        for (unsigned long row = 0; row < m_Texts.size(); ++row)
            for (unsigned long col = 0; col < m_Texts[row].size(); ++col)
                if (m_Texts[row][col] == '-')
                    alignment.insertGap(row, col);
        return alignment;
    }

    std::mt19937 m_Random;
};
