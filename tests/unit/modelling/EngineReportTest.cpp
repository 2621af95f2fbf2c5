// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineReport.h"

#include "ModellingFolder.h"

#include <gmock/gmock.h>

namespace EngineReportTest {

using kestram::EngineReport;
using kestram::readReport;

using EngineReportTest = ModellingFolder;

TEST_F(EngineReportTest, EachLineIsAWordAndItsValue)
{
    const EngineReport report =
        readReport(write("report.txt", "engine ProMod3 3.2.1, OpenStructure 2.3.1\n"
                                       "residue 29 0.25\nresidue 30 -1e1\nscore -1.5\n"));
    EXPECT_EQ(report.engine, "ProMod3 3.2.1, OpenStructure 2.3.1");
    EXPECT_EQ(report.failure, "");
    EXPECT_EQ(report.score, -1.5);
    EXPECT_THAT(report.residueScores,
                testing::ElementsAre(std::pair(29U, 0.25), std::pair(30U, -10.0)));
}

TEST_F(EngineReportTest, TheLastFailureCounts)
{
    EXPECT_EQ(readReport(write("report.txt", "failure one\nfailure two words\n")).failure,
              "two words");
}

TEST_F(EngineReportTest, WhatCannotBeUnderstoodIsPassedOver)
{
    const EngineReport report = readReport(
        write("report.txt", "\nscore\nscore nan\nscore 1x\nscore inf\nmoon full\nresidue -1 2\n"
                            "residue 3\nresidue 4 x\nresidue x 1\nresidue 5 0.5"));
    EXPECT_FALSE(report.score);
    EXPECT_THAT(report.residueScores, testing::ElementsAre(std::pair(5U, 0.5)));
    EXPECT_EQ(readReport(path() / "none").engine, "");
    EXPECT_EQ(readReport(path()).engine, "");
}

} // namespace EngineReportTest
