// SPDX-License-Identifier: GPL-3.0-or-later
// Thousands of random operations, each compared with a plain reference, undone and done again.
#include "FollowedLayout.h"
#include "RecordMaker.h"
#include "ReferenceAlignment.h"
#include "TableChanges.h"
#include "unit/model/AlignmentFixture.h"

#include <numeric>
#include <random>

using TAMBO::Alignment;
using TAMBO::Peptide;

namespace AlignmentPropertyTest {

class AlignmentProperty : public AlignmentFixture
{
protected:
    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random() % limit; }
    bool chance(unsigned oneIn) { return random() % oneIn == 0; }

    std::string randomLetters(std::size_t count)
    {
        // Few letters, so that ties are common; lower case and odd characters happen in files.
        static const std::string letters = "AAAACCCCDDEEKKKKWXa*";
        std::string result;
        while (result.size() < count)
            result += letters[below(letters.size())];
        return result;
    }

    void start(std::size_t rows, std::size_t width, bool isAnnotated)
    {
        m_Reference = {};
        TAMBO::AlignmentTable::Rows made;
        for (std::size_t row = 0; row < rows; ++row) {
            const std::size_t density = below(11);
            std::string text;
            for (std::size_t i = 0; i < width; ++i)
                text += below(10) < density ? 'x' : '-';
            const auto residues = std::size_t(std::ranges::count(text, 'x'));
            Peptide &sequence =
                peptide("p" + std::to_string(m_Peptides.size()), randomLetters(residues));
            m_Peptides.push_back(&sequence);
            ReferenceAlignment::Row reference{&sequence, {}, {}};
            long index = 0;
            for (const char c : text)
                reference.cells.push_back(c == 'x' ? index++ : -1);
            TAMBO::RowLabel label;
            if (isAnnotated && residues > 0 && chance(2)) {
                reference.said = randomLetters(residues);
                label.residueAnnotations = {{"SS", reference.said}};
            }
            m_Reference.rows.push_back(std::move(reference));
            TAMBO::GappedSequence cells;
            cells.append(text);
            made.push_back(std::make_unique<TAMBO::AlignmentRow>(
                sequence, TAMBO::OccupancyRow(std::move(cells.occupancy)), std::move(label)));
        }
        m_Reference.width = width;
        auto owned = TAMBO::AlignmentTable::make("test", std::move(made), width);
        m_Alignment = owned.get();
        if (isAnnotated) {
            m_Reference.lines = {randomLetters(width), randomLetters(width)};
            owned->table().presetAnnotation(std::make_unique<TAMBO::AlignmentAnnotation>(
                std::vector<TAMBO::Annotation>{},
                std::vector<TAMBO::Annotation>{{"SS_cons", m_Reference.lines[0]},
                                               {"RF", m_Reference.lines[1]}}));
        }
        TAMBO::ObjectSpace::get().add(std::move(owned));
        history.clear();
    }

    Peptide *somePeptide()
    {
        if (m_Peptides.empty() || chance(4)) {
            m_Peptides.push_back(&freshPeptide());
            return m_Peptides.back();
        }
        return m_Peptides[below(m_Peptides.size())];
    }
    // Made behind the history's back: it is no part of what is tested.
    Peptide &freshPeptide()
    {
        TAMBO::setEditRecorder(nullptr);
        auto made = std::make_unique<Peptide>("p" + std::to_string(m_Peptides.size()),
                                              randomLetters(below(140)));
        Peptide &result = *made;
        TAMBO::ObjectSpace::get().add(std::move(made));
        TAMBO::setEditRecorder(&history);
        return result;
    }

    // An alignment of some of the same sequences and some others, with its reference.
    Alignment &otherAlignment(ReferenceAlignment &reference)
    {
        TAMBO::setEditRecorder(nullptr);
        std::vector<TAMBO::Compound *> sequences;
        std::vector<Peptide *> peptides;
        for (std::size_t count = below(4); count > 0; --count) {
            peptides.push_back(somePeptide());
            sequences.push_back(peptides.back());
        }
        TAMBO::setEditRecorder(nullptr);
        auto made = TAMBO::AlignmentTable::make("other", TAMBO::AlignmentTable::rowsOf(sequences));
        Alignment &other = *made;
        TAMBO::ObjectSpace::get().add(std::move(made));
        reference.addRows(peptides);
        for (int i = 0; i < 30; ++i)
            changeCells(other, reference);
        TAMBO::setEditRecorder(&history);
        return other;
    }

    // One random operation on both that touches neither the rows' number nor the range. Indices
    // are now and then out of bounds.
    void changeCells(Alignment &alignment, ReferenceAlignment &reference)
    {
        const std::size_t row = below(reference.rows.size() + 1);
        const std::size_t from = below(reference.width + 2);
        const std::size_t to = chance(3) ? below(reference.width + 2)
                                         : from + below(7) - std::min<std::size_t>(from, 3);
        switch (below(10)) {
        case 9: {
            const std::vector<bool> rows = flags(reference.rows.size());
            const bool toLeft = chance(2);
            alignment.pushResidues(rows, Range(from, to), toLeft);
            reference.pushResidues(rows, from, to, toLeft);
            break;
        }
        case 6: {
            const std::size_t count = below(chance(5) ? 90 : 4);
            alignment.insertGaps(row, from, count);
            reference.insertGaps(row, from, count);
            break;
        }
        case 7: {
            const std::size_t count = 1 + below(chance(5) ? 70 : 3);
            alignment.moveGaps(row, from, count, to);
            reference.moveGaps(row, from, count, to);
            break;
        }
        case 8: {
            if (chance(3))
                break;
            const std::vector<bool> columns = flags(reference.width);
            EXPECT_TRUE(alignment.removeColumns(columns));
            reference.removeColumns(columns);
            break;
        }
        case 0:
            alignment.insertGap(row, from);
            reference.insertGap(row, from);
            break;
        case 1:
        case 2:
            alignment.moveGap(row, from, to, true);
            reference.moveGap(row, from, to, true);
            break;
        case 3:
        case 4:
            alignment.moveGap(row, from, to, false);
            reference.moveGap(row, from, to, false);
            break;
        default: {
            const std::size_t count = 1 + below(chance(5) ? 70 : 2);
            if (chance(2)) {
                alignment.insertGapCol(from, count);
                reference.insertColumns(from, count);
            } else {
                const std::size_t end = chance(4) ? below(reference.width + 2) : from + count;
                alignment.remove(Range(from, end));
                reference.removeColumns(from, end);
            }
        }
        }
    }

    // Of some of about so many, now and then of most of them or of more than there are.
    std::vector<bool> flags(std::size_t count)
    {
        const unsigned share = chance(4) ? 8 : 1 + unsigned(below(3));
        std::vector<bool> all(count + (chance(4) ? below(5) : 0) - (chance(4) ? count / 2 : 0));
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = below(10) < share;
        return all;
    }

    void changeRows()
    {
        const std::size_t row = below(m_Reference.rows.size() + 1);
        switch (below(8)) {
        case 6: {
            const std::vector<bool> rows = flags(m_Reference.rows.size());
            m_Alignment->removeRows(rows);
            m_Reference.removeRows(rows);
            break;
        }
        case 0:
            m_Alignment->removeRow(row);
            m_Reference.removeRow(row);
            break;
        case 1: {
            const std::size_t to = below(m_Reference.rows.size() + 1);
            m_Alignment->bubbleRow(row, to);
            m_Reference.moveRow(row, to);
            break;
        }
        case 2: {
            std::vector<Peptide *> peptides;
            std::vector<TAMBO::Compound *> sequences;
            for (std::size_t count = chance(20) ? 17 : below(3); count > 0; --count) {
                peptides.push_back(somePeptide());
                sequences.push_back(peptides.back());
            }
            m_Alignment->addRows(sequences);
            m_Reference.addRows(peptides);
            break;
        }
        case 3: {
            Peptide *const sequence = somePeptide();
            TAMBO::removeRowsOf(m_Alignment->table(), *sequence);
            std::erase_if(m_Reference.rows,
                          [&](const auto &other) { return other.sequence == sequence; });
            break;
        }
        case 4:
            replaceColumns();
            break;
        case 5:
            reorderRows();
            break;
        default: {
            ReferenceAlignment reference;
            Alignment &other = otherAlignment(reference);
            m_Alignment->combine(other);
            m_Reference.combine(reference);
            ASSERT_NO_FATAL_FAILURE(expectSame(other, reference));
        }
        }
    }

    void expectPartsAsTheReference()
    {
        // Steps that were done again have brought theirs.
        m_Alignment->range(m_Reference.range);
        for (int i = 0; i < 5; ++i) {
            const std::vector<bool> rows = flags(m_Reference.height());
            const std::vector<bool> columns = flags(m_Reference.width);
            const auto opposite = [](std::vector<bool> all, std::size_t count) {
                all.resize(count);
                all.flip();
                return all;
            };
            ReferenceAlignment reference = m_Reference;
            reference.removeRows(opposite(rows, reference.height()));
            reference.removeColumns(opposite(columns, reference.width));
            // Without a column nothing tells that there are rows.
            if (m_Reference.height() == 0)
                reference.rows.clear();
            const ReferenceAlignment former = m_Reference;
            Alignment *const part = m_Alignment->duplicate(rows, columns, "part");
            ASSERT_NE(part, nullptr);
            ASSERT_EQ(history.last().size(), 1U);
            ASSERT_NO_FATAL_FAILURE(expectSame(*part, reference));
            ASSERT_NO_FATAL_FAILURE(expectSame(*m_Alignment, former));
            history.undo();
            ASSERT_NO_FATAL_FAILURE(expectSame(*m_Alignment, former));
        }
    }

    // Now and then by an order that is none.
    void reorderRows()
    {
        std::vector<unsigned long> order(m_Reference.height());
        std::iota(order.begin(), order.end(), 0);
        std::shuffle(order.begin(), order.end(), random);
        if (!order.empty() && chance(5))
            order[below(order.size())] = below(order.size() + 1);
        if (!order.empty() && chance(20))
            order.pop_back();
        m_Alignment->reorderRows(order);
        m_Reference.reorderRows(order);
    }

    // Deals the residues of some columns out anew.
    void replaceColumns()
    {
        if (m_Reference.width == 0)
            return;
        const std::size_t begin = below(m_Reference.width);
        const std::size_t end =
            begin + 1 + below(std::min<std::size_t>(m_Reference.width - begin, 80));
        const std::size_t count = m_Reference.mostResidues(begin, end) + below(3);
        std::vector<TAMBO::OccupancyRow> cells;
        std::vector<std::vector<char>> isResidue;
        for (const auto &row : m_Reference.rows) {
            std::vector<char> places(count);
            std::fill_n(places.begin(), ReferenceAlignment::residues(row, begin, end), true);
            std::shuffle(places.begin(), places.end(), random);
            std::vector<TAMBO::OccupancyRow::Word> words(count / 64 + 1);
            for (std::size_t i = 0; i < count; ++i)
                words[i / 64] |= TAMBO::OccupancyRow::Word(places[i] != 0) << i % 64;
            cells.emplace_back(std::move(words));
            isResidue.push_back(std::move(places));
        }
        ASSERT_TRUE(TAMBO::replaceColumns(m_Alignment->table(), Range(begin, end), cells, count));
        m_Reference.replaceColumns(begin, end, count, isResidue);
    }

    void changeRangeOrSelection()
    {
        const std::size_t begin = below(m_Reference.width + 1);
        const Range range(begin, begin + below(m_Reference.width + 1 - begin));
        if (chance(2)) {
            m_Alignment->range(range);
            m_Reference.range = range;
        } else if (chance(3)) {
            Peptide *const sequence = somePeptide();
            if (sequence->residueCount() > 0)
                sequence->setSelected(below(sequence->residueCount()), chance(2));
        } else {
            m_Alignment->select(range, chance(2));
        }
    }

    void operate()
    {
        const std::size_t kind = below(20);
        if (kind < 3 && m_Reference.rows.size() < 40)
            changeRows();
        else if (kind < 6)
            changeRangeOrSelection();
        else
            changeCells(*m_Alignment, m_Reference);
    }

    static void expectSame(const Alignment &alignment, const ReferenceAlignment &reference)
    {
        ASSERT_EQ(alignment.width(), reference.width);
        ASSERT_EQ(alignment.height(), reference.height());
        ASSERT_EQ(alignment.range(), reference.range);
        ASSERT_NO_FATAL_FAILURE(expectSameAnnotation(alignment, reference));
        const auto columns = alignment.columns();
        ASSERT_EQ(columns.size(), reference.width);
        for (std::size_t row = 0; row < reference.height(); ++row) {
            const ReferenceAlignment::Row &expected = reference.rows[row];
            ASSERT_EQ(alignment.GetSeq(row), expected.sequence);
            ASSERT_EQ(alignment.GetSeqName(row), expected.sequence->Name());
            ASSERT_EQ(alignment.isRowSelected(row), reference.isRowSelected(row));
            std::vector<TAMBO::AlignmentCell> cells;
            alignment.readRow(row, 0, reference.width, cells);
            ASSERT_EQ(cells.size(), reference.width);
            std::string text;
            std::string letters;
            for (std::size_t col = 0; col < reference.width; ++col) {
                const long index = expected.cells[col];
                const char letter = reference.letter(row, col);
                ASSERT_EQ(alignment.letterAt(row, col), letter) << row << ", " << col;
                ASSERT_EQ(cells[col].letter, letter);
                TAMBO::Compound *const residue =
                    index < 0 ? nullptr : expected.sequence->residue(std::size_t(index));
                ASSERT_EQ(alignment.getItem(row, col), residue);
                ASSERT_EQ(columns[col][row], residue);
                if (residue != nullptr) {
                    ASSERT_EQ(cells[col].color, residue->GetColor());
                    letters += letter;
                }
                text += letter == '\0' ? '-' : letter;
            }
            ASSERT_EQ(alignment.GetSequence(row, false), text);
            ASSERT_EQ(alignment.GetSequence(row, true), letters);
        }
        for (std::size_t col = 0; col < reference.width; ++col) {
            std::vector<char> letters;
            alignment.readColumn(col, letters);
            ASSERT_EQ(letters.size(), reference.height());
            for (std::size_t row = 0; row < letters.size(); ++row)
                ASSERT_EQ(letters[row], reference.letter(row, col));
            const TAMBO::AlignmentMajority majority = alignment.majority(col);
            ASSERT_EQ(std::pair(majority.letter, majority.count), reference.majority(col))
                << "column " << col;
            ASSERT_EQ(alignment.isColumnSelected(col), reference.isColumnSelected(col))
                << "column " << col;
        }
    }

    static void expectSameAnnotation(const Alignment &alignment,
                                     const ReferenceAlignment &reference)
    {
        const TAMBO::AlignmentRecord record = TAMBO::makeRecord(alignment);
        ASSERT_EQ(record.columnAnnotations.size(), reference.lines.size());
        for (std::size_t line = 0; line < reference.lines.size(); ++line)
            ASSERT_EQ(record.columnAnnotations[line].text, reference.lines[line]);
        for (std::size_t row = 0; row < reference.rows.size(); ++row) {
            std::string said;
            for (const TAMBO::Annotation &annotation : record.rows[row].residueAnnotations)
                said += annotation.text;
            const ReferenceAlignment::Row &expected = reference.rows[row];
            ASSERT_EQ(said, expected.said.empty() ? std::string() : reference.saidOf(expected));
        }
    }

    void walk(std::size_t rows, std::size_t width, int operations, bool isAnnotated)
    {
        start(rows, width, isAnnotated);
        ASSERT_NO_FATAL_FAILURE(expectSame(*m_Alignment, m_Reference));
        FollowedLayout followed(*m_Alignment);
        const auto follow = [&followed] {
            followed.follow();
            ASSERT_EQ(followed.difference(), "");
        };
        // What there was before and after each step.
        std::vector<std::pair<ReferenceAlignment, ReferenceAlignment>> steps;
        for (int i = 0; i < operations; ++i) {
            const ReferenceAlignment before = m_Reference;
            const unsigned long revision = m_Alignment->layoutRevision();
            ASSERT_NO_FATAL_FAILURE(operate());
            ASSERT_NO_FATAL_FAILURE(expectSame(*m_Alignment, m_Reference));
            ASSERT_NO_FATAL_FAILURE(follow());
            const bool isChanged =
                before.rows != m_Reference.rows || before.width != m_Reference.width;
            if (isChanged) {
                ASSERT_EQ(history.undoCount(), steps.size() + 1) << "a change is one step";
                ASSERT_GT(m_Alignment->layoutRevision(), revision);
            }
            if (history.undoCount() > steps.size()) {
                steps.emplace_back(before, m_Reference);
                ASSERT_EQ(history.undoCount(), steps.size());
            }
        }
        for (int round = 0; round < 2; ++round) {
            for (std::size_t i = steps.size(); i > 0; --i) {
                // The range moves along with the cells; where the user has set another one since,
                // it only has to be one that the alignment has.
                m_Alignment->range(steps[i - 1].second.range);
                const unsigned long revision = m_Alignment->layoutRevision();
                history.undo();
                ASSERT_NO_FATAL_FAILURE(expectSame(*m_Alignment, steps[i - 1].first));
                ASSERT_NO_FATAL_FAILURE(follow());
                ASSERT_GT(m_Alignment->layoutRevision(), revision);
            }
            for (const auto &[before, after] : steps) {
                m_Alignment->range(before.range);
                history.redo();
                ASSERT_NO_FATAL_FAILURE(expectSame(*m_Alignment, after));
                ASSERT_NO_FATAL_FAILURE(follow());
            }
        }
        ASSERT_NO_FATAL_FAILURE(expectPartsAsTheReference());
        for (const std::string &line : log)
            EXPECT_TRUE(line.starts_with("Combined \"other\" into \"test\"")) << line;
    }

    std::mt19937 random;
    Alignment *m_Alignment = nullptr;
    ReferenceAlignment m_Reference;
    std::vector<Peptide *> m_Peptides;
};

class AlignmentPropertyAtWidth : public AlignmentProperty,
                                 public ::testing::WithParamInterface<std::size_t>
{
};

TEST_P(AlignmentPropertyAtWidth, EveryOperationAgreesWithTheReferenceAndIsUndoneAndRedone)
{
    for (unsigned seed = 1; seed <= 4; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        random.seed(seed * 1000 + unsigned(GetParam()));
        ASSERT_NO_FATAL_FAILURE(walk(1 + below(6), GetParam(), 120, seed % 2 == 0));
        history.clear();
        TAMBO::ObjectSpace::get().reset();
        m_Peptides.clear();
    }
}

INSTANTIATE_TEST_SUITE_P(Widths, AlignmentPropertyAtWidth,
                         ::testing::Values(0, 1, 2, 7, 63, 64, 65, 127, 128, 129, 255, 256, 257));

} // namespace AlignmentPropertyTest
