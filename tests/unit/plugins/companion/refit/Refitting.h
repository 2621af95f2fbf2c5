// SPDX-License-Identifier: GPL-3.0-or-later
// Structures that follow the edits of their alignment.
#pragma once

#include "FitsText.h"
#include "Refit.h"

#include "guide/FamilyInSpace.h"

#include "ObjectOperations.h"
#include "PluginValues.h"

#include <string>
#include <utility>
#include <vector>

class Refitting : public FamilyInSpace
{
protected:
    // Structures that lie apart, and one sequence without any between them.
    TAMBO::Alignment &apart(std::size_t count = 3)
    {
        const Points fold = randomFold(30, 11);
        std::vector<std::pair<TAMBO::Peptide *, std::string>> rows;
        for (std::size_t i = 0; i < count; ++i) {
            Points points = turned(fold, unsigned(i) + 1);
            std::normal_distribution<double> noise(0, 0.5);
            for (TAMBO::Vertex &point : points)
                point = {point.x() + float(noise(random)), point.y() + float(noise(random)),
                         point.z() + float(noise(random))};
            structures.push_back(&structureAt("s" + std::to_string(i), points));
            rows.emplace_back(structures.back()->chain(0), withGaps(30, 36));
            if (i == 0)
                rows.emplace_back(&peptide("none", std::string(30, 'A')), withGaps(30, 36));
        }
        TAMBO::Alignment &made = alignmentOf(rows);
        history.clear();
        return made;
    }
    [[nodiscard]] std::vector<std::vector<std::uint32_t>> bits() const
    {
        std::vector<std::vector<std::uint32_t>> all;
        for (const TAMBO::Structure *structure : structures)
            all.push_back(bitsOf(*structure));
        return all;
    }
    void slide(TAMBO::Alignment &alignment, unsigned long row, unsigned long residue,
               unsigned long count = 1)
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        ASSERT_TRUE(change.m_good);
        for (; count > 0; --count)
            alignment.insertGap(row, alignment.columnOfResidue(row, residue));
    }
    // Away from where it was.
    void moveByHand(std::size_t structure)
    {
        TAMBO::moveStructures(
            {{structures[structure], TAMBO::Superposition({{{0, 0, 0}, {5, 5, 5}}})}});
    }
    static void setValue(TAMBO::Alignment &alignment)
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        ASSERT_TRUE(change.m_good);
        EXPECT_TRUE(PluginValues::Set(&alignment, "another", "key", "value"));
    }
    // Each structure lies as near to the first as a superposition of the two brings it.
    static void expectSuperposed(const TAMBO::Alignment &alignment)
    {
        const auto rows = TAMBO::StructureFits::rows(alignment);
        ASSERT_GT(rows.size(), 1U);
        for (std::size_t i = 1; i < rows.size(); ++i) {
            const auto plan = planSuperposition(alignment, {rows[0].row, rows[i].row});
            ASSERT_TRUE(plan);
            EXPECT_NEAR(plan.value().moves[0].rmsdBefore, plan.value().moves[0].rmsdAfter, 1e-4)
                << i;
            EXPECT_EQ(TAMBO::StructureFits::measure(alignment, rows[0].row, rows[i].row).pairs,
                      plan.value().columns);
        }
    }
    static companion::FitsFound found(const TAMBO::Alignment &alignment)
    {
        companion::FitsFound fits;
        fits.begin(TAMBO::StructureFits::lastChoice(alignment));
        while (fits.goOn(alignment, std::chrono::microseconds(0))) {
        }
        return fits;
    }
    static QString lineOf(const TAMBO::Alignment &alignment)
    {
        const companion::FitsFound fits = found(alignment);
        return fitsText(alignment, fits, {alignment, fits});
    }
    static void choose(TAMBO::Alignment &alignment, const TAMBO::FitChoice &choice)
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
        TAMBO::StructureFits::keepChoice(alignment, choice);
    }
    // The second half of the second structure is elsewhere, its first half as in the first one.
    TAMBO::Alignment &hinged()
    {
        Points fold = randomFold(40, 5);
        structures = {&structureAt("fixed", fold)};
        const Points far = turned(Points(fold.begin() + 24, fold.end()), 8);
        std::ranges::copy(far, fold.begin() + 24);
        structures.push_back(&structureAt("moving", turned(fold, 9)));
        TAMBO::Alignment &made =
            alignmentOf({{structures[0]->chain(0), std::string(40, 'A') + "--"},
                         {structures[1]->chain(0), std::string(40, 'A') + "--"}});
        history.clear();
        return made;
    }

    std::vector<TAMBO::Structure *> structures;
    companion::Refit refit;
};
