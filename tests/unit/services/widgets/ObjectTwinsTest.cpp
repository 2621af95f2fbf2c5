// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectTwins.h"

#include "Alignment.h"
#include "Compound.h"
#include "DataMaker.h"
#include "ObjectNames.h"
#include "ObjectOrigins.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "support/ShownText.h"

#include <gmock/gmock.h>

#include <map>

using namespace TAMBO::services;
using TAMBO::Compound;
using ::testing::ElementsAre;

namespace ObjectTwinsTest {

class ObjectTwinsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ObjectOrigins::install([this](const Compound &object) { return m_Files[&object]; }, {});
    }
    void TearDown() override
    {
        ObjectOrigins::remove();
        TAMBO::ObjectSpace::get().reset();
    }

    Compound &sequence(const std::string &name, const std::string &letters,
                       const QString &file = {})
    {
        auto &space = TAMBO::ObjectSpace::get();
        space.insertObject(space.objectCount(), std::make_unique<TAMBO::Peptide>(name, letters));
        Compound &made = *space.object(space.objectCount() - 1);
        m_Files[&made] = file;
        return made;
    }
    static std::vector<QString> differences(const ObjectTwins::Objects &objects)
    {
        return ObjectTwins::differences(objects,
                                        [](const Compound &object) { return object.Name(); });
    }

    std::map<const Compound *, QString> m_Files;
};

TEST_F(ObjectTwinsTest, ANameOfOneObjectNeedsNothing)
{
    EXPECT_THAT(differences({&sequence("a", "ACD"), &sequence("b", "ACD")}), ElementsAre("", ""));
    EXPECT_EQ(ObjectTwins::label("a", ""), "a");
}

TEST_F(ObjectTwinsTest, EqualNamesAreToldApartByTheirFiles)
{
    EXPECT_THAT(differences({&sequence("obp", "ACD", "/d/one.pir"), &sequence("other", "A"),
                             &sequence("obp", "ACD", "/d/two.pir"), &sequence("obp", "ACD")}),
                ElementsAre("one.pir", "", "two.pir", "of no file"));
    EXPECT_EQ(ObjectTwins::label("obp", "one.pir"), "obp (one.pir)");
}

TEST_F(ObjectTwinsTest, PluginsGetNamesThatAreToldApart)
{
    EXPECT_THAT(TAMBO::ObjectNames::toldApart({&sequence("obp", "ACD", "/d/one.pir"), nullptr,
                                               &sequence("other", "A"),
                                               &sequence("obp", "ACD", "/d/two.pir")}),
                ElementsAre("obp (one.pir)", "", "other", "obp (two.pir)"));
    EXPECT_TRUE(TAMBO::ObjectNames::toldApart({}).empty());
}

TEST_F(ObjectTwinsTest, FilesOfOneNameAreToldWithTheirFolders)
{
    EXPECT_THAT(
        differences({&sequence("obp", "ACD", "/a/x.pir"), &sequence("obp", "ACD", "/b/x.pir")}),
        ElementsAre("a/x.pir", "b/x.pir"));
    EXPECT_THAT(differences({&sequence("q", "A", "/a/c/x.pir"), &sequence("q", "A", "/b/c/x.pir")}),
                ElementsAre("/a/c/x.pir", "/b/c/x.pir"));
}

TEST_F(ObjectTwinsTest, EqualNamesOfOneFileAreToldApartByTheirLengths)
{
    EXPECT_THAT(
        differences({&sequence("obp", "ACD", "/d/x.pir"), &sequence("obp", "A", "/d/x.pir")}),
        ElementsAre("3 residues", "1 residue"));
}

TEST_F(ObjectTwinsTest, WhatIsEqualInAllIsCounted)
{
    EXPECT_THAT(differences({&sequence("obp", "ACD"), &sequence("obp", "ACD"),
                             &sequence("obp", "A"), &sequence("obp", "A")}),
                ElementsAre("3 residues, no. 1", "3 residues, no. 2", "1 residue, no. 1",
                            "1 residue, no. 2"));
}

TEST_F(ObjectTwinsTest, ASequenceHasTheFileOfTheAlignmentThatItIsARowOf)
{
    Compound &first = sequence("obp", "ACD");
    Compound &second = sequence("obp", "ACD");
    m_Files[TAMBO::DataMaker::makeAlignment("one", {&first})] = "/d/one.pir";
    m_Files[TAMBO::DataMaker::makeAlignment("two", {&second})] = "/d/two.pir";
    EXPECT_THAT(differences({&first, &second}), ElementsAre("one.pir", "two.pir"));
    EXPECT_EQ(ObjectOrigins::fileOf(second), "/d/two.pir");
}

TEST_F(ObjectTwinsTest, TheToolTipNamesTheFile)
{
    EXPECT_EQ(shownText(ObjectTwins::toolTip(sequence("obp", "ACD", "/d/one.pir"), "locked")),
              "obp (locked)\n/d/one.pir");
    EXPECT_EQ(ObjectTwins::toolTip(sequence("obp", "ACD")), "obp");
}

} // namespace ObjectTwinsTest
