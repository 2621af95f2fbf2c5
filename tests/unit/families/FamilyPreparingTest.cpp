// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyBench.h"
#include "FileReader.h"
#include "FolderLock.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace FamilyPreparingTest {

namespace fs = std::filesystem;
using namespace TAMBO;
using namespace TAMBO::families;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FamilyPreparing : public FamilyBench
{
protected:
    // As a run leaves it.
    void fakeModel(const std::string &file) const
    {
        write("family/models/" + file + ".pdb", "ATOM\n");
        write("family/runs/" + file + ".json", "{}");
        write("family/runs/" + file + ".log", "said\n");
    }
    [[nodiscard]] std::string failure(const Family &of = smallFamily()) const
    {
        const auto prepared = prepare(of);
        return prepared ? "prepared" : prepared.error().message();
    }
};

TEST_F(FamilyPreparing, EachTargetGetsItsPairAndEachTemplateItsCoordinates)
{
    const auto prepared = prepare();
    ASSERT_TRUE(prepared) << prepared.error().message();
    EXPECT_EQ(prepared.value().asked.size(), 3U);
    const auto pair = readFile(family() / "inputs/a.ali");
    ASSERT_TRUE(pair) << pair.error().message();
    const auto &rows = pair.value().alignments.front().rows;
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].name, "t1");
    EXPECT_EQ(rows[0].sequence.text(), "ACDEFGHIKL");
    EXPECT_EQ(rows[1].name, "a");
    EXPECT_EQ(rows[1].sequence.text(), "ACDEF-HIKM");
    const auto structure = readFile(family() / "templates/t2.pdb");
    ASSERT_TRUE(structure) << structure.error().message();
    const ChainRecord &chain = structure.value().structures.front().chains.front();
    EXPECT_EQ(chain.name, "A");
    ASSERT_EQ(chain.residues.size(), 10U);
    EXPECT_EQ(chain.residues[0].typeName, "TRP");
    EXPECT_EQ(chain.residues[9].number.number(), 10);
    EXPECT_TRUE(fs::is_directory(family() / "models"));
    EXPECT_TRUE(fs::is_directory(family() / "runs"));
}

TEST_F(FamilyPreparing, TheWorkflowIsToldWhatToDo)
{
    ASSERT_TRUE(prepare(smallFamily(), {"", {"b", "a"}}));
    const auto config = nlohmann::json::parse(read("family/config.json"));
    EXPECT_EQ(config["kestram"], "/programs/kestram");
    EXPECT_EQ(config["tambo"], "/programs/tambo");
    EXPECT_EQ(config["memory_mb"], 2000);
    EXPECT_THAT(config["run"], ElementsAre("a", "b"));
    EXPECT_EQ(config["templates"]["a"], "t1");
    EXPECT_EQ(config["templates"]["b"], "t2");
    EXPECT_EQ(read("family/list.tsv"), "a\tt1\nb\tt2\n");
}

TEST_F(FamilyPreparing, ColumnsInWhichNeitherHasALetterAreLeftOut)
{
    Family family = smallFamily();
    ASSERT_TRUE(prepare(family));
    fakeModel("a");
    for (FamilyRow &row : family.rows)
        row.text.insert(5, "---");
    family.rows[4].text[6] = 'W';
    const auto prepared = prepare(family);
    ASSERT_TRUE(prepared);
    EXPECT_TRUE(isThere("family/models/a.pdb"));
    EXPECT_THAT(prepared.value().changed, IsEmpty());
}

TEST_F(FamilyPreparing, AgainWithTheSameNothingIsWrittenAnew)
{
    ASSERT_TRUE(prepare());
    fakeModel("a");
    const auto input = fs::last_write_time(family() / "inputs/a.ali");
    const auto coordinates = fs::last_write_time(family() / "templates/t1.pdb");
    const auto again = prepare();
    ASSERT_TRUE(again);
    EXPECT_THAT(again.value().changed, IsEmpty());
    EXPECT_EQ(fs::last_write_time(family() / "inputs/a.ali"), input);
    EXPECT_EQ(fs::last_write_time(family() / "templates/t1.pdb"), coordinates);
    EXPECT_TRUE(isThere("family/models/a.pdb"));
}

TEST_F(FamilyPreparing, ATargetThatHasChangedLosesItsModelAndThatIsTold)
{
    Family family = smallFamily();
    ASSERT_TRUE(prepare(family));
    fakeModel("a");
    fakeModel("b");
    family.rows[1].text = "ACDEFG-IKM";
    const auto prepared = prepare(family);
    ASSERT_TRUE(prepared);
    EXPECT_THAT(prepared.value().changed, ElementsAre(HasSubstr("\"a\" has changed")));
    for (const char *gone : {"models/a.pdb", "runs/a.json", "runs/a.log"})
        EXPECT_FALSE(isThere(std::string("family/") + gone)) << gone;
    EXPECT_TRUE(isThere("family/models/b.pdb"));
    EXPECT_THAT(read("family/inputs/a.ali"), HasSubstr("ACDEFG-IKM"));
}

TEST_F(FamilyPreparing, ATemplateThatWasMovedAsAWholeKeepsItsModels)
{
    const Family family = smallFamily();
    ASSERT_TRUE(prepare(family));
    fakeModel("a");
    const std::string before = read("family/templates/t1.pdb");
    const auto plan = planModels(family, {});
    const auto prepareMoved = [&](float stretch) {
        return prepareFamily(
            family, plan.value(),
            [&](std::size_t row) -> Result<StructureRecord> {
                StructureRecord structure = structureOf(family.rows[row]);
                for (ResidueRecord &residue : structure.chains[0].residues) {
                    // A quarter of a turn, and away.
                    for (AtomRecord &atom : residue.atoms)
                        atom.position =
                            Vertex(20 - atom.position.y(), atom.position.x() * stretch + 3,
                                   atom.position.z() - 1.5F);
                }
                return structure;
            },
            this->family(), settings);
    };
    const auto moved = prepareMoved(1);
    ASSERT_TRUE(moved);
    EXPECT_THAT(moved.value().changed, IsEmpty());
    EXPECT_THAT(moved.value().remarks, testing::Contains(HasSubstr("\"t1\" was moved as a whole")));
    EXPECT_TRUE(isThere("family/models/a.pdb"));
    EXPECT_EQ(read("family/templates/t1.pdb"), before) << "the models lie on it";
    const auto changed = prepareMoved(1.01F);
    ASSERT_TRUE(changed);
    EXPECT_THAT(changed.value().changed, ElementsAre(HasSubstr("\"a\"")));
    EXPECT_NE(read("family/templates/t1.pdb"), before);
}

TEST_F(FamilyPreparing, ATemplateThatCannotBeWrittenTakesNoModel)
{
    const Family family = smallFamily();
    ASSERT_TRUE(prepare(family));
    fakeModel("a");
    const std::string before = read("family/templates/t1.pdb");
    const auto plan = planModels(family, {});
    const auto prepared = prepareFamily(
        family, plan.value(),
        [&](std::size_t row) -> Result<StructureRecord> {
            StructureRecord structure = structureOf(family.rows[row]);
            structure.chains[0].residues[3].atoms[1].position = Vertex(1234567, 1, 1);
            return structure;
        },
        this->family(), settings);
    ASSERT_FALSE(prepared);
    EXPECT_TRUE(isThere("family/models/a.pdb")) << prepared.error().message();
    EXPECT_EQ(read("family/templates/t1.pdb"), before);
}

TEST_F(FamilyPreparing, ATemplateThatHasMovedTakesTheModelsOnItAlsoThoseNotAskedFor)
{
    const Family family = smallFamily();
    ASSERT_TRUE(prepare(family));
    fakeModel("a");
    fakeModel("b");
    const auto plan = planModels(family, {"t1", {"c"}});
    const auto prepared = prepareFamily(
        family, plan.value(),
        [&](std::size_t row) -> Result<StructureRecord> {
            StructureRecord structure = structureOf(family.rows[row]);
            structure.chains[0].residues[3].atoms[1].position = Vertex(9, 9, 9);
            return structure;
        },
        this->family(), settings);
    ASSERT_TRUE(prepared);
    EXPECT_THAT(prepared.value().changed, ElementsAre(HasSubstr("\"a\"")));
    EXPECT_FALSE(isThere("family/models/a.pdb"));
    EXPECT_TRUE(isThere("family/models/b.pdb"));
}

TEST_F(FamilyPreparing, TargetsOfEarlierCallsStayInTheFolder)
{
    ASSERT_TRUE(prepare(smallFamily(), {"", {"a"}}));
    const auto prepared = prepare(smallFamily(), {"", {"b"}});
    ASSERT_TRUE(prepared);
    EXPECT_EQ(prepared.value().folder.targets().size(), 2U);
    EXPECT_EQ(prepared.value().asked.size(), 1U);
    const auto config = nlohmann::json::parse(read("family/config.json"));
    EXPECT_THAT(config["run"], ElementsAre("b"));
    ASSERT_TRUE(askForAll(prepared.value().folder, settings));
    EXPECT_THAT(nlohmann::json::parse(read("family/config.json"))["run"], ElementsAre("a", "b"));
}

TEST_F(FamilyPreparing, NamesThatAreNoFileNamesAreMappedAndToldAndStayMapped)
{
    Family family = smallFamily();
    family.rows[0].name = "1abc:A";
    family.rows[1].name = "sp|P1/1-9";
    family.rows[3].name = "SP_P1_1-9";
    const auto prepared = prepare(family);
    ASSERT_TRUE(prepared);
    EXPECT_THAT(prepared.value().mapped, ElementsAre("\"1abc:A\" has the file templates/1abc_A.pdb",
                                                     "\"sp|P1/1-9\" has the files sp_P1_1-9",
                                                     "\"SP_P1_1-9\" has the files SP_P1_1-9_2"));
    EXPECT_THAT(read("family/inputs/sp_P1_1-9.ali"), HasSubstr("sp|P1/1-9"));
    const auto again = prepare(family);
    ASSERT_TRUE(again);
    EXPECT_THAT(again.value().mapped, IsEmpty());
    EXPECT_EQ(again.value().asked[1].file, "SP_P1_1-9_2");
}

TEST_F(FamilyPreparing, RowsOfOneNameAreTargetsOfTheirOwn)
{
    Family family = smallFamily();
    family.rows[3].name = "a";
    family.rows[2].name = "t1";
    const auto prepared = prepare(family);
    ASSERT_TRUE(prepared);
    EXPECT_EQ(prepared.value().asked[1].file, "a_2");
    EXPECT_EQ(prepared.value().asked[1].templateName, "t1 (2)");
    const auto again = prepare(family);
    ASSERT_TRUE(again);
    EXPECT_EQ(again.value().folder.targets().size(), 3U);
    EXPECT_THAT(read("family/inputs/a_2.ali"), HasSubstr("WWDEF-HIKM"));
    EXPECT_THAT(read("family/templates/" + again.value().asked[1].templateFile + ".pdb"),
                HasSubstr("TRP"));
}

TEST_F(FamilyPreparing, ATargetWithoutACommonColumnIsToldAndNotAskedFor)
{
    Family family = smallFamily();
    family.rows[0].text = "ACDEF-----";
    family.rows[4].text = "------AAAA";
    const auto plan = planModels(family, {"t1", {}});
    const auto prepared =
        prepareFamily(family, plan.value(), templatesOf(family), this->family(), settings);
    ASSERT_TRUE(prepared);
    EXPECT_THAT(prepared.value().remarks,
                ElementsAre("\"c\" shares no column with \"t1\", so no model of it can be built"));
    EXPECT_THAT(nlohmann::json::parse(read("family/config.json"))["run"], ElementsAre("a", "b"));
    EXPECT_FALSE(isThere("family/inputs/c.ali"));
}

TEST_F(FamilyPreparing, FilesOfTheWorkflowAreCopiedAndThoseOfTheUserStay)
{
    write("workflow/Snakefile", "first\n");
    write("workflow/slurm/status", "#!/bin/sh\n");
    fs::permissions(path() / "workflow/slurm/status", fs::perms::owner_all);
    settings.workflow = path() / "workflow";
    ASSERT_TRUE(prepare());
    EXPECT_EQ(read("family/Snakefile"), "first\n");
    EXPECT_NE(fs::status(family() / "slurm/status").permissions() & fs::perms::owner_exec,
              fs::perms::none);
    // A newer program brings newer ones.
    write("workflow/Snakefile", "second\n");
    ASSERT_TRUE(prepare());
    EXPECT_EQ(read("family/Snakefile"), "second\n");
    write("family/Snakefile", "mine\n");
    write("workflow/Snakefile", "third\n");
    const auto prepared = prepare();
    ASSERT_TRUE(prepared);
    EXPECT_EQ(read("family/Snakefile"), "mine\n");
    EXPECT_THAT(prepared.value().remarks, ElementsAre("Snakefile stays as you have changed it"));
}

TEST_F(FamilyPreparing, AFolderOfAnotherFamilyOrOfSomethingElseStaysAsItIs)
{
    ASSERT_TRUE(prepare());
    Family other = smallFamily();
    other.name = "kinases";
    const std::string before = read("family/family.json");
    EXPECT_THAT(failure(other), HasSubstr("is the folder of another family, \"globins\""));
    EXPECT_EQ(read("family/family.json"), before);
    fs::remove_all(family());
    write("family/thesis.tex", "all of it");
    EXPECT_THAT(failure(), HasSubstr("holds something else than models of a family"));
    EXPECT_FALSE(isThere("family/inputs"));
    fs::remove_all(family());
    write("family", "a file");
    EXPECT_THAT(failure(), HasSubstr("family: is a file where a folder is needed"));
    EXPECT_EQ(read("family"), "a file");
}

TEST_F(FamilyPreparing, AFamilyOfTheSameNameInAnotherFileIsAnotherOneUnlessItsTargetsAreThere)
{
    write("one/globins.ali", "");
    write("two/globins.ali", "");
    Family one = smallFamily();
    one.source = path() / "one/globins.ali";
    ASSERT_TRUE(prepare(one));
    Family two = smallFamily();
    two.source = path() / "two/globins.ali";
    // A copy.
    EXPECT_EQ(failure(two), "prepared");
    fs::remove_all(family());
    ASSERT_TRUE(prepare(one));
    for (FamilyRow &row : two.rows)
        row.name += "x";
    EXPECT_THAT(failure(two), HasSubstr("is the folder of another family, \"globins\" of " +
                                        one.source.string()));
    // The file was moved, and other targets are asked for.
    fs::remove(one.source);
    EXPECT_EQ(failure(two), "prepared");
}

TEST_F(FamilyPreparing, AFolderAtWorkIsLeftAlone)
{
    ASSERT_TRUE(prepare());
    const auto lock = FolderLock::take(family());
    ASSERT_TRUE(lock);
    EXPECT_THAT(failure(), HasSubstr("another run is at work in this folder"));
}

TEST_F(FamilyPreparing, AFolderThatAnotherCallHasTakenMeanwhileStays)
{
    const Family family = smallFamily();
    const auto plan = planModels(family, {});
    // The other call is quicker: all of its work is done when this one is refused.
    fs::create_directory(this->family());
    const auto lock = FolderLock::take(this->family());
    ASSERT_TRUE(lock);
    write("family/models-of-the-other", "x");
    EXPECT_NE(failure(), "prepared");
    EXPECT_TRUE(isThere("family/models-of-the-other"));
}

TEST_F(FamilyPreparing, AnEmptyFolderInWhichACallHasComeToNothingIsAsGoodAsNew)
{
    fs::create_directory(family());
    write("family/.lock", "");
    EXPECT_EQ(failure(), "prepared");
}

TEST_F(FamilyPreparing, ATemplateThatFailsLeavesNoFolderBehind)
{
    const Family family = smallFamily();
    const auto plan = planModels(family, {});
    const auto prepared = prepareFamily(
        family, plan.value(),
        [](std::size_t) -> Result<StructureRecord> {
            return Failure{FailureKind::Refused, "no coordinates", {"t1"}};
        },
        this->family(), settings);
    ASSERT_FALSE(prepared);
    EXPECT_EQ(prepared.error().message(), "t1: no coordinates");
    EXPECT_FALSE(isThere("family"));
}

TEST_F(FamilyPreparing, AFullDiskIsOneMessageAndLeavesNoFolderBehind)
{
    {
        const FullDisk disk(300);
        EXPECT_THAT(failure(), HasSubstr("cannot be written: File too large"));
    }
    EXPECT_FALSE(isThere("family"));
    EXPECT_EQ(failure(), "prepared");
}

TEST_F(FamilyPreparing, AFullDiskInAFolderThatWasThereTakesNothingAndGoesOnLater)
{
    ASSERT_TRUE(prepare(smallFamily(), {"", {"a"}}));
    fakeModel("a");
    const std::string before = read("family/family.json");
    {
        const FullDisk disk(before.size() + 1);
        EXPECT_THAT(failure(), HasSubstr("cannot be written: File too large"));
    }
    EXPECT_TRUE(isThere("family/models/a.pdb"));
    EXPECT_EQ(read("family/family.json"), before);
    const auto prepared = prepare();
    ASSERT_TRUE(prepared);
    EXPECT_THAT(prepared.value().changed, IsEmpty());
    for (const auto &entry : fs::recursive_directory_iterator(family()))
        EXPECT_NE(entry.path().extension(), ".part") << entry.path();
}

TEST_F(FamilyPreparing, OneThatWasKilledWhilePreparingIsFinishedByTheNext)
{
    ASSERT_TRUE(prepare());
    // As at the start: the folder is claimed, and some files are there.
    FamilyFolder claimed(family(), "globins", "globins.ali");
    ASSERT_TRUE(claimed.save());
    fs::remove(family() / "inputs/b.ali");
    fs::remove(family() / "config.json");
    const auto prepared = prepare();
    ASSERT_TRUE(prepared);
    EXPECT_TRUE(isThere("family/inputs/b.ali"));
    EXPECT_TRUE(isThere("family/config.json"));
    EXPECT_EQ(prepared.value().folder.targets().size(), 3U);
}

} // namespace FamilyPreparingTest
