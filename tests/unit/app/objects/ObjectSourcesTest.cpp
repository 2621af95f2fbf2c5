// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectSources.h"

#include "AppFixture.h"
#include "DataMaker.h"

#include <optional>

namespace ObjectSourcesTest {

using namespace TAMBO;
using app::ObjectSources;

class ObjectSourcesTest : public RecordedFixture
{
};

TEST_F(ObjectSourcesTest, AnObjectAtTheAddressOfOneThatIsGoneHasNoFile)
{
    ObjectSources sources;
    std::optional<Structure> place;
    sources.set(place.emplace("first"), "/data/first.pdb");
    EXPECT_EQ(sources.fileOf(*place), "/data/first.pdb");
    const Structure &second = place.emplace("second");
    EXPECT_TRUE(sources.fileOf(second).empty());
}

TEST_F(ObjectSourcesTest, WhatUndoBringsBackHasItsFileAgain)
{
    ObjectSources sources;
    Structure &loaded = structure("1abc", "A", "ACD");
    Alignment &family = alignment("family", {"AC-D"});
    sources.set(loaded, "/data/1abc.pdb");
    sources.set(family, "/data/family.ali");
    DataMaker::Destroy(&loaded);
    DataMaker::Destroy(&family);
    m_History.undo();
    m_History.undo();
    ASSERT_EQ(loaded.Parent(), Space::instance());
    EXPECT_EQ(sources.fileOf(*loaded.chain(0)), "/data/1abc.pdb");
    EXPECT_EQ(sources.fileOf(family), "/data/family.ali");
}

} // namespace ObjectSourcesTest
