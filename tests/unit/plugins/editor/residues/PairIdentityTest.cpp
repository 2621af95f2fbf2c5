// SPDX-License-Identifier: GPL-3.0-or-later
// The identity of two rows, on its own and beside the editor's report.
#include "PairIdentity.h"

#include "IdentityReport.h"

#include "Alignment.h"
#include "DataAdder.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "RecordMaker.h"
#include "Space.h"

#include <QString>

#include <gtest/gtest.h>

#include <random>

namespace PairIdentityTest {

using namespace TAMBO;

AlignmentRecord recordOf(const std::string &first, const std::string &second)
{
    AlignmentRecord record;
    record.name = "x";
    record.rows.resize(2);
    record.rows[0].name = "ref";
    record.rows[0].sequence.append(first);
    record.rows[1].name = "other";
    record.rows[1].sequence.append(second);
    return record;
}

PairIdentity identityOf(const std::string &first, const std::string &second)
{
    const AlignmentRecord record = recordOf(first, second);
    return PairIdentities(record).compare(0, 1);
}

// Counted as one would with a pencil.
PairIdentity countedOneByOne(const std::string &first, const std::string &second)
{
    PairIdentity result;
    std::size_t firstBoth = 0;
    std::size_t lastBoth = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
        const bool a = first[i] != '-';
        const bool b = second[i] != '-';
        result.firstLength += a ? 1 : 0;
        result.secondLength += b ? 1 : 0;
        result.hangs += a || b ? 1 : 0;
        if (!a || !b)
            continue;
        if (result.identical + result.different == 0)
            firstBoth = i;
        lastBoth = i;
        ++(first[i] == second[i] ? result.identical : result.different);
    }
    for (std::size_t i = firstBoth; i <= lastBoth && i < first.size(); ++i)
        result.overlap += first[i] != '-' || second[i] != '-' ? 1 : 0;
    return result;
}

// As the editor shows it, numbers alone.
QString reportOf(const PairIdentity &pair)
{
    const auto number = [](double value) { return QStringLiteral("%1").arg(value, 6, 'f', 2); };
    const double percent = double(pair.identical) * 100;
    const std::uint64_t pairs = pair.identical + pair.different;
    return QStringLiteral("Percentage identity between 'ref' and 'other':\n"
                          "identicals %1\tdifferent %2\npairs %3: \t%4\n")
               .arg(pair.identical)
               .arg(pair.different)
               .arg(pairs)
               .arg(number(float(pair.identical) / float(pairs))) +
           QStringLiteral(
               "seq lenghts %1, %2 : %3, %4\nalign lenght %5 (with hangs %6) : %7 ( %8 )")
               .arg(pair.firstLength)
               .arg(pair.secondLength)
               .arg(number(percent / double(pair.firstLength)),
                    number(percent / double(pair.secondLength)))
               .arg(pair.overlap)
               .arg(pair.hangs)
               .arg(number(percent / double(pair.overlap)), number(percent / double(pair.hangs)));
}

std::string randomRow(std::mt19937 &random, std::size_t width)
{
    std::string row;
    const unsigned gaps = random() % 100;
    for (std::size_t i = 0; i < width; ++i)
        row += random() % 100 < gaps ? '-' : "ACDaX"[random() % 5];
    return row;
}

TEST(PairIdentity, CountsPairsLengthsOverlapAndHangs)
{
    EXPECT_EQ(identityOf("ACDE", "AC-E"), (PairIdentity{3, 0, 4, 3, 4, 4}));
    EXPECT_EQ(identityOf("--ACDE", "GG-CD-"), (PairIdentity{2, 0, 4, 4, 6, 2}));
    EXPECT_EQ(identityOf("A-C--", "A-D-E"), (PairIdentity{1, 1, 2, 3, 3, 2}));
}

TEST(PairIdentity, CapitalsAndSmallLettersDiffer)
{
    EXPECT_EQ(identityOf("Ac", "AC"), (PairIdentity{1, 1, 2, 2, 2, 2}));
}

TEST(PairIdentity, WithoutAPairTheFirstColumnIsTheOverlap)
{
    EXPECT_EQ(identityOf("A-", "-C"), (PairIdentity{0, 0, 1, 1, 2, 1}));
    EXPECT_EQ(identityOf("-A-", "--C"), (PairIdentity{0, 0, 1, 1, 2, 0}));
    EXPECT_EQ(identityOf("---", "---"), PairIdentity());
}

TEST(PairIdentity, RowsOfAnyWidthAreCounted)
{
    std::mt19937 random(7);
    for (std::size_t width = 1; width < 300; ++width) {
        const std::string first = randomRow(random, width);
        const std::string second = randomRow(random, width);
        EXPECT_EQ(identityOf(first, second), countedOneByOne(first, second)) << first << '\n'
                                                                             << second;
    }
}

TEST(PairIdentity, TheEditorReportsTheSameFigures)
{
    std::mt19937 random(8);
    unsigned reported = 0;
    for (int round = 0; round < 400; ++round) {
        const std::size_t width = 1 + random() % 400;
        const std::string first = randomRow(random, width);
        const std::string second = randomRow(random, width);
        const DataAdder<Space> guard(nullptr, Space::instance());
        const Alignment &alignment = *ObjectFactory::adopt(recordOf(first, second));
        const std::optional<QString> report = identityReport(alignment, 1);
        const PairIdentity pair = identityOf(first, second);
        EXPECT_EQ(report.has_value(),
                  pair.firstLength > 0 && pair.secondLength > 0 && pair.overlap > 0);
        if (!report)
            continue;
        EXPECT_EQ(report->toStdString(), reportOf(pair).toStdString());
        ++reported;
    }
    ObjectSpace::get().reset();
    EXPECT_GT(reported, 300U);
}

} // namespace PairIdentityTest
