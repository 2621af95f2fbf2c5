// SPDX-License-Identifier: GPL-3.0-or-later
// Structures that were kept superposed when the program was killed, and another that goes on.
#include "Refit.h"

#include "unit/sessions/live/LiveFixture.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "DataPoint.h"
#include "StructureFits.h"

#include <cmath>

namespace RefitKilledTest {

using TAMBO::StructureFits;

class RefitKilled : public LiveFixture
{
protected:
    RefitKilled() : LiveFixture(5) { }

    // A spiral that another number makes wider.
    static TAMBO::Structure &spiral(const std::string &name, double radius)
    {
        TAMBO::StructureRecord record;
        record.name = name;
        record.chains.push_back(chainRecord("A", std::string(20, 'A')));
        for (std::size_t i = 0; i < 20; ++i) {
            const double turn = 1.7 * double(i) + radius;
            for (TAMBO::AtomRecord &atom : record.chains[0].residues[i].atoms)
                atom.position = {float(radius * std::cos(turn)), float(radius * std::sin(turn)),
                                 float(1.5 * double(i) * radius / 3)};
        }
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }
    static TAMBO::Alignment &alignmentOf(const std::vector<TAMBO::Structure *> &structures)
    {
        TAMBO::AlignmentTable::Rows rows;
        for (TAMBO::Structure *structure : structures)
            rows.push_back(std::make_unique<TAMBO::AlignmentRow>(*structure->chain(0),
                                                                 TAMBO::OccupancyRow::filled(20)));
        return static_cast<TAMBO::Alignment &>(
            space().add(TAMBO::AlignmentTable::make("family", std::move(rows), 24)));
    }
    static TAMBO::Alignment &onlyAlignment()
    {
        for (TAMBO::Compound *object : space())
            if (auto *const alignment = dynamic_cast<TAMBO::Alignment *>(object))
                return *alignment;
        throw std::runtime_error("there is none");
    }
    static void insertGap(TAMBO::Alignment &alignment, unsigned long row, unsigned long col)
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        ASSERT_TRUE(change.m_good);
        alignment.insertGap(row, col);
    }

    companion::Refit refit;
};

TEST_F(RefitKilled, EveryStateComesBackAndItGoesOn)
{
    TAMBO::Alignment &alignment =
        alignmentOf({&spiral("one", 2.3), &spiral("two", 2.6), &spiral("three", 3)});
    beginSession(std::size_t(1) << 20);
    ASSERT_TRUE(companion::setRefitted(alignment, true));
    ASSERT_NO_FATAL_FAILURE(insertGap(alignment, 1, 7));
    ASSERT_NO_FATAL_FAILURE(insertGap(alignment, 0, 3));
    ASSERT_NO_FATAL_FAILURE(insertGap(alignment, 2, 12));
    history.undo();
    session->finish();
    const Entries kept = entries;
    endSession();
    const std::string portrait = lastingPortrait();
    const std::vector<std::string> states = allStates(true);
    const std::size_t fits = refit.fits();
    EXPECT_GT(fits, 3U);
    ASSERT_NO_FATAL_FAILURE(beginAgain(kept));
    EXPECT_EQ(lastingPortrait(), portrait);
    EXPECT_EQ(allStates(true), states);
    EXPECT_EQ(refit.fits(), fits) << "to load it moves nothing anew";

    TAMBO::Alignment &again = onlyAlignment();
    EXPECT_TRUE(companion::isRefitted(again));
    ASSERT_NO_FATAL_FAILURE(insertGap(again, 1, 15));
    EXPECT_FALSE(StructureFits::superpose(again, 0, {1, 2})[0].hasMoved)
        << "it lies where it belongs";
    EXPECT_GT(refit.fits(), fits);
}

} // namespace RefitKilledTest
