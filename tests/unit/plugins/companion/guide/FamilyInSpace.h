// SPDX-License-Identifier: GPL-3.0-or-later
// Families whose rows have structures, or some of them, with gaps anywhere; what is known of their
// columns by a plain look at each pair, and the edits that the editor makes when a gap is let go.
#pragma once

#include "unit/model/SuperposeFixture.h"

#include "AlignmentViewObserver.h"
#include "DataPoint.h"
#include "History.h"

#include <cmath>
#include <optional>
#include <random>
#include <string>
#include <vector>

class FamilyInSpace : public SuperposeFixture
{
protected:
    FamilyInSpace() { TAMBO::setEditRecorder(&history); }
    ~FamilyInSpace() override { history.clear(); }

    unsigned below(unsigned long end) { return unsigned(random() % end); }

    // Beside each other by an Angstrom or so, with a helix and two strands that touch.
    TAMBO::Structure &member(const std::string &name, const Points &fold)
    {
        std::normal_distribution<double> noise(0, 1);
        Points points;
        for (const TAMBO::Vertex &point : fold)
            points.emplace_back(point.x() + float(noise(random)), point.y() + float(noise(random)),
                                point.z() + float(noise(random)));
        TAMBO::StructureRecord record;
        record.name = name;
        record.chains.push_back(chainAt("A", points));
        if (points.size() >= 12) {
            const auto number = [](int value) { return TAMBO::SequenceNumber(value); };
            record.elements.push_back({"H1", 'H', "A", number(2), number(5)});
            record.elements.push_back({"E1", 'E', "A", number(7), number(9)});
            record.elements.push_back({"E2", 'E', "A", number(10), number(12)});
        }
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }
    std::string withGaps(std::size_t residues, std::size_t width)
    {
        std::string text(residues, 'A');
        while (text.size() < width)
            text.insert(below(text.size() + 1), 1 + below(3), '-');
        text.resize(width);
        // None is cut off.
        while (std::size_t(std::ranges::count(text, 'A')) < residues)
            text[text.find('-')] = 'A';
        return text;
    }
    // Some rows have no structure, and residues of others no CA atom.
    TAMBO::Alignment &family(std::size_t count, std::size_t residues, std::size_t width)
    {
        const Points fold = randomFold(residues, unsigned(random()));
        std::vector<std::pair<TAMBO::Peptide *, std::string>> rows;
        for (std::size_t i = 0; i < count; ++i) {
            const std::string name = "m" + std::to_string(i);
            const bool hasStructure = i < 2 || below(5) > 0;
            TAMBO::Peptide &sequence = hasStructure ? *member(name, fold).chain(0)
                                                    : peptide(name, std::string(residues, 'A'));
            rows.emplace_back(&sequence, withGaps(residues, width));
        }
        TAMBO::Alignment &made = alignmentOf(rows);
        history.clear();
        return made;
    }

    static std::vector<TAMBO::Vertex> positionsIn(const TAMBO::Alignment &alignment,
                                                  unsigned long col)
    {
        std::vector<TAMBO::Vertex> all;
        for (unsigned long row = 0; row < alignment.height(); ++row) {
            const TAMBO::Compound *const residue = alignment.getItem(row, col);
            if (residue != nullptr && residue->Position().isDefined())
                all.push_back(residue->Position());
        }
        return all;
    }
    // Of a column that has two positions or more.
    static std::optional<double> plainMean(const TAMBO::Alignment &alignment, unsigned long col)
    {
        const std::vector<TAMBO::Vertex> places = positionsIn(alignment, col);
        double sum = 0;
        double pairs = 0;
        for (std::size_t i = 0; i < places.size(); ++i)
            for (std::size_t k = 0; k < i; ++k, ++pairs)
                sum += std::hypot(double(places[i].x()) - places[k].x(),
                                  double(places[i].y()) - places[k].y(),
                                  double(places[i].z()) - places[k].z());
        return places.size() < 2 ? std::nullopt : std::optional(sum / pairs);
    }
    static std::optional<double> plainMean(const TAMBO::Alignment &alignment, unsigned long begin,
                                           unsigned long end)
    {
        double sum = 0;
        double columns = 0;
        for (unsigned long col = begin; col < end; ++col) {
            const std::optional<double> mean = plainMean(alignment, col);
            sum += mean.value_or(0);
            columns += mean ? 1 : 0;
        }
        return columns == 0 ? std::nullopt : std::optional(sum / columns);
    }
    static void expectSame(const std::optional<double> &found,
                           const std::optional<double> &expected)
    {
        ASSERT_EQ(found.has_value(), expected.has_value());
        if (found) {
            EXPECT_NEAR(*found, *expected, 5e-6 * std::max(1.0, *expected));
        }
    }

    TAMBO::GapDrag anyPress(const TAMBO::Alignment &alignment)
    {
        const TAMBO::CellIndex cell{below(alignment.height()), below(alignment.width())};
        const bool isGap = alignment.letterAt(cell.row, cell.col) == '\0';
        // A press with the left button on a residue selects it.
        return {cell, isGap && below(2) == 0 ? Qt::LeftButton : Qt::MiddleButton, cell.col};
    }
    // As the editor does.
    static void letGo(TAMBO::Alignment &alignment, const TAMBO::GapDrag &press,
                      unsigned long column)
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        ASSERT_TRUE(change.m_good);
        if (column != press.from.col)
            alignment.moveGap(press.from.row, press.from.col, column,
                              press.button == Qt::LeftButton);
        else if (press.button == Qt::MiddleButton)
            alignment.insertGap(press.from.row, column);
    }
    static std::vector<std::string> textOf(const TAMBO::Alignment &alignment)
    {
        std::vector<std::string> rows;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            rows.push_back(alignment.GetSequence(row, false));
        return rows;
    }

    TAMBO::History history;
    std::mt19937 random{7};
};
