// SPDX-License-Identifier: GPL-3.0-or-later
// Alignments with all that makes coloring and selecting of many residues hard.
#pragma once

#include "unit/model/AlignmentFixture.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

class AlignmentColors : public AlignmentFixture
{
protected:
    using Colors = std::vector<Color>;
    using Flags = std::vector<bool>;

    // Of every residue of every sequence.
    Colors colors() const
    {
        Colors all;
        for (TAMBO::Peptide *sequence : m_All)
            for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                all.push_back(sequence->ownColor(i));
        return all;
    }
    Flags flags() const
    {
        Flags all;
        for (TAMBO::Peptide *sequence : m_All)
            for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                all.push_back(sequence->isSelected(i));
        return all;
    }
    // What change does, found out and taken back.
    Colors colorsAfter(const std::function<void()> &change)
    {
        const std::size_t before = history.undoCount();
        {
            const TAMBO::ChangeScope scope;
            change();
        }
        Colors after = colors();
        while (history.undoCount() > before)
            history.undo();
        return after;
    }
    static void forEachCell(const TAMBO::Alignment &alignment,
                            const std::function<void(TAMBO::Compound &, unsigned long)> &visit)
    {
        for (unsigned long row = 0; row < alignment.height(); ++row) {
            for (unsigned long col = 0; col < alignment.width(); ++col) {
                if (TAMBO::Compound *const residue = alignment.getItem(row, col))
                    visit(*residue, col);
            }
        }
    }
    void expectAs(const std::function<void()> &expected, const std::function<void()> &actual)
    {
        const Colors before = colors();
        const Colors after = colorsAfter(expected);
        ASSERT_EQ(colors(), before);
        const std::size_t steps = history.undoCount();
        actual();
        ASSERT_EQ(colors(), after);
        ASSERT_EQ(history.undoCount(), steps + (after == before ? 0 : 1));
        if (after == before)
            return;
        history.undo();
        ASSERT_EQ(colors(), before);
        history.redo();
        ASSERT_EQ(colors(), after);
    }

    // Sequences with letters few enough to meet, one of them tied to two chains by residues of its
    // own and of other letters, some of them in two rows, columns taken out.
    TAMBO::Alignment &mixedAlignment(unsigned seed, std::size_t width)
    {
        m_Random.seed(seed);
        std::vector<std::pair<TAMBO::Peptide *, std::string>> rows;
        for (int i = 0; i < 4; ++i) {
            const std::string text = randomText(width);
            std::string letters = text;
            std::erase(letters, '-');
            m_All.push_back(&peptide("r" + std::to_string(i), letters));
            rows.emplace_back(m_All.back(), text);
        }
        TAMBO::Peptide &tied = *m_All.front();
        const std::size_t count = tied.residueCount();
        TAMBO::Peptide &same = peptide("same", std::string(tied.letters()));
        std::string turned(tied.letters());
        for (char &letter : turned)
            letter = letter == 'A' ? 'C' : letter;
        TAMBO::Peptide &other = peptide("other", turned);
        tied.tie(count / 8, same, count / 8, count / 4);
        tied.tie(count / 2, other, count / 2, count / 4);
        m_All.insert(m_All.end(), {&same, &other});
        rows.push_back(rows[1]);
        rows.back().second = "--" + rows.back().second;
        rows.emplace_back(&same, std::string(same.letters()));
        TAMBO::Alignment &made = alignmentOf(rows);
        made.remove({made.width() / 3, made.width() / 3 + 1 + below(5)});
        made.remove(made.width() / 2);
        history.clear();
        return made;
    }
    // A chain of which some residues have a CA atom.
    TAMBO::Peptide &chain(const std::string &letters)
    {
        TAMBO::ChainRecord record;
        for (const char letter : letters) {
            TAMBO::ResidueRecord &residue = record.residues.emplace_back();
            residue.letter = letter;
            residue.atoms.push_back({"N", "N", TAMBO::Vertex(1, 2, 3)});
            if (below(5) != 0)
                residue.atoms.push_back({"CA", "C", TAMBO::Vertex(float(below(100)), 5, 6)});
        }
        auto made = std::make_unique<TAMBO::Peptide>(std::move(record));
        TAMBO::Peptide &result = *made;
        TAMBO::ObjectSpace::get().add(std::move(made));
        m_All.push_back(&result);
        return result;
    }
    // Rows of chains, of a sequence without coordinates and of one that is tied to a chain; with
    // doubles a chain stands in two rows, and the one of the tied sequence in a row of its own.
    TAMBO::Alignment &alignmentOfChains(unsigned seed, std::size_t width, bool hasDoubles)
    {
        m_Random.seed(seed);
        const auto lettersOf = [](std::string text) {
            std::erase(text, '-');
            return text;
        };
        std::vector<std::pair<TAMBO::Peptide *, std::string>> rows;
        for (int i = 0; i < 3; ++i) {
            const std::string text = randomText(width);
            rows.emplace_back(&chain(lettersOf(text)), text);
        }
        const std::string text = randomText(width);
        m_All.push_back(&peptide("free", lettersOf(text)));
        rows.emplace_back(m_All.back(), text);
        TAMBO::Peptide &tied = peptide("tied", lettersOf(text));
        TAMBO::Peptide &owner = chain(lettersOf(text));
        tied.tie(tied.residueCount() / 8, owner, 0, tied.residueCount() / 2);
        m_All.push_back(&tied);
        rows.emplace_back(&tied, text);
        if (hasDoubles) {
            rows.emplace_back(rows[1].first, "--" + rows[1].second);
            rows.emplace_back(&owner, std::string(owner.letters()));
        }
        return alignmentOf(rows);
    }
    void colorSome(std::size_t different)
    {
        for (TAMBO::Peptide *sequence : m_All)
            for (std::size_t i = 0; i < sequence->residueCount(); i += 1 + below(6))
                sequence->setColor(i, Color(unsigned(below(different)) * 991U + 1U));
        history.clear();
    }
    void selectSome()
    {
        for (TAMBO::Peptide *sequence : m_All)
            for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                sequence->setSelected(i, below(3) == 0);
    }
    std::vector<char> someLetters(std::size_t count)
    {
        std::vector<char> letters;
        for (std::size_t i = 0; i < count; ++i)
            letters.push_back("AAC-X\0\0W"[below(8)]);
        return letters;
    }
    std::size_t below(std::size_t limit) { return m_Random() % limit; }

    std::vector<TAMBO::Peptide *> m_All;

private:
    std::string randomText(std::size_t width)
    {
        std::string text;
        for (std::size_t i = 0; i < width; ++i)
            text += "AAACCDW-X-"[below(10)];
        text += 'A';
        return text;
    }

    std::mt19937 m_Random;
};
