// SPDX-License-Identifier: GPL-3.0-or-later
#include "IdentityReport.h"

#include "CanvasFixture.h"

namespace IdentityReportTest {

class IdentityReport : public CanvasFixture
{
protected:
    static QString report(const std::string &first, const std::string &second)
    {
        return identityReport(makeAlignment({first, second}, {"ref", "other"}), 1)
            .value_or(QStringLiteral("none"));
    }
};

TEST_F(IdentityReport, CountsPairsLengthsOverlapAndHangs)
{
    EXPECT_EQ(report("ACDE", "AC-E"),
              QStringLiteral("Percentage identity between 'ref' and 'other':\n"
                             "identicals 3\tdifferent 0\n"
                             "pairs 3: \t  1.00\n"
                             "seq lenghts 4, 3 :  75.00, 100.00\n"
                             "align lenght 4 (with hangs 4) :  75.00 (  75.00 )"));
}

TEST_F(IdentityReport, PairsAreAFractionNotAPercentage)
{
    EXPECT_TRUE(report("AAA", "ACC").contains(QStringLiteral("pairs 3: \t  0.33\n")));
}

TEST_F(IdentityReport, OverlapReachesFromTheFirstToTheLastPair)
{
    const QString text = report("--ACDE", "GG-CD-");
    EXPECT_TRUE(text.contains(QStringLiteral("align lenght 2 (with hangs 6)"))) << qPrintable(text);
}

TEST_F(IdentityReport, ColumnsWhereBothHaveAGapDoNotCount)
{
    const QString text = report("A-C--", "A-D-E");
    EXPECT_TRUE(text.contains(QStringLiteral("identicals 1\tdifferent 1\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("align lenght 2 (with hangs 3) :  50.00 (  33.33 )")))
        << qPrintable(text);
}

TEST_F(IdentityReport, WithoutAPairTheFirstColumnDecides)
{
    EXPECT_EQ(report("A-", "-C"),
              QStringLiteral("Percentage identity between 'ref' and 'other':\n"
                             "identicals 0\tdifferent 0\n"
                             "pairs 0: \t   nan\n"
                             "seq lenghts 1, 1 :   0.00,   0.00\n"
                             "align lenght 1 (with hangs 2) :   0.00 (   0.00 )"));
    EXPECT_EQ(report("-A-", "--C"), QStringLiteral("none"));
}

TEST_F(IdentityReport, FractionsAreRoundedAsTheToolkitDoes)
{
    // Of some of these half a hundredth is left.
    for (const unsigned long of : {3UL, 7UL, 32UL, 64UL}) {
        for (unsigned long same = 1; same <= of; ++same) {
            const QString text =
                report(std::string(of, 'A'), std::string(same, 'A') + std::string(of - same, 'C'));
            const QString share =
                QStringLiteral("%1").arg(100.0 * double(same) / double(of), 6, 'f', 2);
            const QString fraction = QStringLiteral("%1").arg(float(same) / float(of), 6, 'f', 2);
            ASSERT_TRUE(text.endsWith(QStringLiteral(" : %1 ( %1 )").arg(share)))
                << qPrintable(text);
            ASSERT_TRUE(text.contains(QStringLiteral(": \t%1\n").arg(fraction)))
                << qPrintable(text);
        }
    }
}

TEST_F(IdentityReport, NothingIsReportedWhenASequenceIsEmpty)
{
    EXPECT_EQ(report("ACD", "---"), QStringLiteral("none"));
    EXPECT_EQ(report("---", "ACD"), QStringLiteral("none"));
}

TEST_F(IdentityReport, NamesArePrintedAsTheyAre)
{
    const TAMBO::Alignment &alignment = makeAlignment({"A", "A"}, {"50%2", "%1"});
    EXPECT_TRUE(identityReport(alignment, 1)
                    ->startsWith(QStringLiteral("Percentage identity between '50%2' and '%1':\n")));
}

} // namespace IdentityReportTest
