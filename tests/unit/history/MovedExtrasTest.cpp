// SPDX-License-Identifier: GPL-3.0-or-later
// What is not in the tree goes along when a structure is moved, and comes back.
#include "HistoryFixture.h"

#include "Atom.h"
#include "ObjectStore.h"
#include "ObjectWriter.h"
#include "PositionEdit.h"
#include "StructureDetails.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

using TAMBO::StructureDetails;
using TAMBO::Superposition;
using TAMBO::Vertex;

namespace MovedExtrasTest {

using Point = TAMBO::Vector<float, 3>;

class MovedExtras : public HistoryFixture
{
protected:
    MovedExtras() { history.clear(); }

    // Each of what is not in the tree stands where an atom of the chain does.
    static TAMBO::Structure &made()
    {
        TAMBO::StructureRecord record;
        record.name = "1new";
        TAMBO::ChainRecord &chain = record.chains.emplace_back();
        chain.name = "A";
        std::vector<Point> model;
        for (int i = 0; i < 20; ++i) {
            const auto x = float(std::cos(i) * 9);
            const auto y = float(std::sin(i) * 7);
            chain.residues.push_back(residueRecord("ALA", 'A', std::to_string(i + 1)));
            chain.residues.back().atoms = {{"CA", "C", Vertex(x, y, float(i))}};
            record.waters.add("A", {Point(x, y, float(i)), 10, 100 + i});
            model.emplace_back(x, y, float(i));
        }
        record.furtherModels = {model, model};
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }

    static Superposition motion(int seed)
    {
        const auto turned = [seed](float x, float y, float z) {
            const double angle = 0.4 + seed;
            return Vertex(float(x * std::cos(angle) - y * std::sin(angle)) + 5,
                          float(x * std::sin(angle) + y * std::cos(angle)) - 11, z + 2);
        };
        return Superposition({{{0, 0, 0}, turned(0, 0, 0)},
                              {{3, 0, 0}, turned(3, 0, 0)},
                              {{0, 4, 0}, turned(0, 4, 0)},
                              {{1, 2, 5}, turned(1, 2, 5)}});
    }

    static std::string bytesOfSpace()
    {
        TAMBO::ObjectStore store(space());
        TAMBO::ObjectWriter out;
        while (store.writeNext(out, std::numeric_limits<std::size_t>::max()))
            ;
        return std::string(out.bytes());
    }

    // How far the atoms are from what stood where they did.
    double distance() const
    {
        const auto atoms = StructureDetails::read(&structure).atoms;
        const auto waters = StructureDetails::waters(&structure);
        EXPECT_EQ(waters.size(), atoms.size());
        double most = 0;
        for (std::size_t i = 0; i < waters.size(); ++i) {
            for (std::size_t k = 0; k < 3; ++k)
                most = std::max(most, double(std::abs(atoms[i].position.coordinates()[k] -
                                                      waters[i].position.coordinates()[k])));
        }
        for (std::size_t model = 0; model < 3; ++model) {
            const std::vector<Vertex> places = StructureDetails::modelPositions(&structure, model);
            EXPECT_EQ(places.size(), atoms.size());
            for (std::size_t i = 0; i < places.size(); ++i) {
                for (std::size_t k = 0; k < 3; ++k)
                    most = std::max(most, double(std::abs(atoms[i].position.coordinates()[k] -
                                                          places[i].coordinates()[k])));
            }
        }
        return most;
    }

    TAMBO::Structure &structure = made();
};

TEST_F(MovedExtras, GoWithTheAtoms)
{
    const Vertex before = StructureDetails::waters(&structure).at(3).position;
    EXPECT_EQ(distance(), 0);
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(TAMBO::moveStructures({{&structure, motion(i)}}));
    EXPECT_LT(distance(), 1e-4);
    EXPECT_GT(std::abs(StructureDetails::waters(&structure).at(3).position.y() - before.y()), 1);
    EXPECT_EQ(history.size(), 5U);
}

TEST_F(MovedExtras, UndoBringsTheSameBytes)
{
    std::vector<std::string> states = {bytesOfSpace()};
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(TAMBO::moveStructures({{&structure, motion(i)}}));
        states.push_back(bytesOfSpace());
        EXPECT_NE(states[std::size_t(i)], states.back());
    }
    for (const std::size_t state : {0, 3, 1, 2, 0}) {
        ASSERT_TRUE(history.goTo(state));
        EXPECT_EQ(bytesOfSpace(), states[state]) << state;
        EXPECT_LT(distance(), 1e-4);
    }
}

TEST_F(MovedExtras, AStepIsCalledAfterTheStructuresAlone)
{
    ASSERT_TRUE(TAMBO::moveStructures({{&structure, motion(1)}}));
    EXPECT_EQ(history.undoLabel(), "superpose 1new");
}

// However many waters there are.
TEST_F(MovedExtras, TakeNoRoomInAStep)
{
    TAMBO::StructureRecord record;
    record.name = "wet";
    record.chains.emplace_back();
    record.chains.back().residues.push_back(residueRecord("ALA", 'A', "1"));
    for (int i = 0; i < 5000; ++i)
        record.waters.add("A", {Point(1, 2, 3), 10, i});
    TAMBO::Structure &wet = *TAMBO::ObjectFactory::adopt(std::move(record));
    const std::size_t before = history.bytes();
    ASSERT_TRUE(TAMBO::moveStructures({{&wet, motion(1)}}));
    EXPECT_LT(history.bytes() - before, 2000U);
}

TEST_F(MovedExtras, ALockedStructureKeepsThemWhereTheyAre)
{
    TAMBO::setObjectLocked(structure, true);
    const std::string before = bytesOfSpace();
    EXPECT_FALSE(TAMBO::moveStructures({{&structure, motion(1)}}));
    EXPECT_EQ(bytesOfSpace(), before);
}

TEST_F(MovedExtras, MovingTakingItBackAndRepeatingItEachGrowTheRevision)
{
    std::uint64_t last = StructureDetails::revision();
    const auto hasGrown = [&last] {
        const std::uint64_t before = std::exchange(last, StructureDetails::revision());
        return last > before;
    };
    ASSERT_TRUE(TAMBO::moveStructures({{&structure, motion(1)}}));
    EXPECT_TRUE(hasGrown());
    for (const std::size_t state : {0, 1}) {
        ASSERT_TRUE(history.goTo(state));
        EXPECT_TRUE(hasGrown()) << state;
    }
}

} // namespace MovedExtrasTest
