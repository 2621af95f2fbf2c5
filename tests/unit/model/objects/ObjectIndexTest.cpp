// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/ModelFixture.h"

#include "Atom.h"
#include "Element.h"
#include "ObjectIndex.h"
#include "ObjectReference.h"
#include "ResidueGroup.h"
#include "ValueBytes.h"

#include <cstdint>
#include <limits>

namespace ObjectIndexTest {

using TAMBO::ObjectIndex;
using TAMBO::Peptide;
using TAMBO::ValueReader;
using TAMBO::ValueWriter;

class ObjectIndexTest : public ModelFixture
{
protected:
    // A chain with a ligand and a helix.
    static TAMBO::Structure &makeStructure()
    {
        TAMBO::StructureRecord record;
        record.name = "1abc";
        TAMBO::ChainRecord &chain = record.chains.emplace_back(chainRecord("A", "AGAG"));
        chain.residues.push_back(residueRecord("ATP", 'X', "401", 50));
        chain.residues.back().isAminoAcid = false;
        record.elements.push_back(
            {"H1", 'H', "A", TAMBO::SequenceNumber(1), TAMBO::SequenceNumber(2)});
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }
    static std::string referenceTo(const TAMBO::Compound &object)
    {
        ValueWriter out;
        TAMBO::storeReference(object, out);
        return out.take();
    }
    // Nothing is left over.
    static const TAMBO::Compound *found(const std::string &bytes, const ObjectIndex &index)
    {
        ValueReader in(bytes);
        const TAMBO::Compound *const object = TAMBO::loadReference(in, index);
        EXPECT_TRUE(in.atEnd());
        EXPECT_EQ(object == nullptr, in.failed());
        return object;
    }
};

TEST_F(ObjectIndexTest, ObjectIsFoundByItsNumber)
{
    Peptide &one = peptide("one", "AG");
    Peptide &two = peptide("two", "AG");
    ObjectIndex index;
    index.add(one);
    EXPECT_EQ(index.find(one.identity()), &one);
    EXPECT_EQ(index.find(two.identity()), nullptr);
    EXPECT_EQ(index.find(0), nullptr);
    EXPECT_EQ(index.size(), 1U);
}

TEST_F(ObjectIndexTest, TreeIsFoundWithAllThatHasANumber)
{
    TAMBO::Structure &structure = makeStructure();
    peptide("one", "AG");
    ObjectIndex index;
    index.addTree(space());
    Peptide &chain = *structure.chain(0);
    EXPECT_EQ(index.find(TAMBO::kSpaceIdentity), &space());
    EXPECT_EQ(index.find(TAMBO::identityOf(structure)), &structure);
    EXPECT_EQ(index.find(chain.identity()), &chain);
    ASSERT_EQ(chain.objectCount(), 2U);
    EXPECT_EQ(index.find(TAMBO::identityOf(*chain.object(0))), chain.object(0));
    EXPECT_EQ(index.find(TAMBO::identityOf(*chain.object(1))), chain.object(1));
    EXPECT_EQ(index.size(), 6U);
}

TEST_F(ObjectIndexTest, DestroyedObjectLeavesEveryIndex)
{
    auto one = std::make_unique<Peptide>("one", "AG");
    auto group = std::make_unique<TAMBO::ResidueGroup>(residueRecord("ATP", 'X', "401"));
    const std::uint32_t number = one->identity();
    const std::uint32_t groupNumber = group->identity();
    ObjectIndex first;
    ObjectIndex second;
    for (ObjectIndex *const index : {&first, &second}) {
        index->add(*one);
        index->add(*group);
    }
    one.reset();
    EXPECT_EQ(first.find(number), nullptr);
    EXPECT_EQ(second.find(number), nullptr);
    group.reset();
    EXPECT_EQ(first.find(groupNumber), nullptr);
    EXPECT_EQ(second.size(), 0U);
}

TEST_F(ObjectIndexTest, SpaceHasTheFirstNumber)
{
    EXPECT_EQ(TAMBO::identityOf(space()), TAMBO::kSpaceIdentity);
    EXPECT_GT(peptide("one", "AG").identity(), TAMBO::kSpaceIdentity);
}

TEST_F(ObjectIndexTest, HandlesHaveNoNumber)
{
    EXPECT_EQ(TAMBO::identityOf(*peptide("one", "AG").residue(0)), 0U);
    EXPECT_EQ(TAMBO::identityOf(*makeStructure().chain(0)->atom(0, 0)), 0U);
}

TEST_F(ObjectIndexTest, NumberIsRestoredAndLaterOnesAreHigher)
{
    Peptide first("first", "A");
    const std::uint32_t number = first.identity() + 1000;
    Peptide restored("restored", "A");
    EXPECT_TRUE(restored.restoreIdentity(number));
    EXPECT_EQ(restored.identity(), number);
    const Peptide next("next", "A");
    EXPECT_EQ(next.identity(), number + 1);
    // A lower one does not take the count back.
    Peptide lower("lower", "A");
    EXPECT_TRUE(lower.restoreIdentity(number - 1));
    EXPECT_EQ(Peptide("last", "A").identity(), number + 2);
}

TEST_F(ObjectIndexTest, NumberThatNoObjectCanHaveHadIsNotRestored)
{
    Peptide object("object", "A");
    EXPECT_FALSE(object.restoreIdentity(0));
    EXPECT_FALSE(object.restoreIdentity(TAMBO::kSpaceIdentity));
    EXPECT_FALSE(object.restoreIdentity(std::numeric_limits<std::uint32_t>::max()));
    const std::uint32_t number = object.identity();
    EXPECT_FALSE(object.restoreIdentity(number + 1));
    EXPECT_EQ(object.identity(), number);
}

TEST_F(ObjectIndexTest, EveryObjectIsReferredTo)
{
    TAMBO::Structure &structure = makeStructure();
    Peptide &sequence = peptide("one", "AGA");
    ObjectIndex index;
    index.addTree(space());
    const Peptide &chain = *structure.chain(0);
    const std::vector<const TAMBO::Compound *> objects = {&space(),
                                                          &structure,
                                                          &chain,
                                                          chain.object(0),
                                                          chain.object(1),
                                                          &sequence,
                                                          chain.residue(3),
                                                          sequence.residue(0),
                                                          chain.atom(0, 0),
                                                          chain.atom(3, 1),
                                                          chain.object(0)->Child(1)};
    for (const TAMBO::Compound *const object : objects)
        EXPECT_EQ(found(referenceTo(*object), index), object) << object->GetFQName();
}

TEST_F(ObjectIndexTest, ReferenceToWhatIsNotThereFails)
{
    Peptide &sequence = peptide("one", "AGA");
    ObjectIndex index;
    const std::string whole = referenceTo(sequence);
    const std::string part = referenceTo(*sequence.residue(2));
    EXPECT_EQ(found(whole, index), nullptr);
    EXPECT_EQ(found(part, index), nullptr);
    index.add(sequence);
    EXPECT_EQ(found(part, index), sequence.residue(2));
    EXPECT_EQ(found(part.substr(0, part.size() - 1) + '\3', index), nullptr);
    ValueReader in(whole);
    static_cast<void>(TAMBO::loadReference(in, ObjectIndex()));
    EXPECT_EQ(in.cause(), "it refers to object " + std::to_string(sequence.identity()) +
                              ", which is not there");
}

// Whatever stands there, an object or a failure comes of it.
TEST_F(ObjectIndexTest, DamagedReferenceGivesAnObjectOrAFailure)
{
    TAMBO::Structure &structure = makeStructure();
    ObjectIndex index;
    index.addTree(space());
    const std::string reference = referenceTo(*structure.chain(0)->atom(1, 1));
    std::size_t failures = 0;
    for (std::size_t place = 0; place < reference.size(); ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string damaged = reference;
            damaged[place] = static_cast<char>(byte);
            ValueReader in(damaged);
            const TAMBO::Compound *const object = TAMBO::loadReference(in, index);
            EXPECT_EQ(object == nullptr, in.failed());
            failures += in.failed() ? 1 : 0;
        }
    }
    EXPECT_GT(failures, 1000U);
}

} // namespace ObjectIndexTest
