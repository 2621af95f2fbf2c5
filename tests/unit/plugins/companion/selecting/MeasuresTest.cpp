// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measures.h"

#include "ColumnScores.h"
#include "MadeRows.h"

#include <algorithm>
#include <cctype>

namespace MeasuresTest {

using companion::IdentityOf;
using companion::Measure;

class Measures : public MadeRows
{
protected:
    static const std::vector<double> &all(Measure &measure)
    {
        EXPECT_FALSE(measure.goOn(std::chrono::hours(1)));
        EXPECT_TRUE(measure.isDone());
        EXPECT_EQ(measure.percent(), 100);
        return measure.values();
    }
    // As the page says it, letter by letter.
    double identity(const std::string &a, const std::string &b, IdentityOf compared) const
    {
        double identical = 0;
        double aligned = 0;
        for (std::size_t col = 0; col < a.size(); ++col) {
            aligned += a[col] != '-' && b[col] != '-' ? 1 : 0;
            identical += a[col] != '-' && std::toupper(a[col]) == std::toupper(b[col]) ? 1 : 0;
        }
        const auto residues = [](const std::string &row) {
            return double(row.size()) - double(std::ranges::count(row, '-'));
        };
        const double of = compared == IdentityOf::AlignedPairs ? aligned
                          : compared == IdentityOf::ShorterSequence
                              ? std::min(residues(a), residues(b))
                              : double(a.size());
        return of == 0 ? 0 : identical / of;
    }
};

TEST_F(Measures, RowIdentitiesAreThoseOfThePlainCount)
{
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const TAMBO::Alignment &alignment = made(seed, 20, 90);
        ASSERT_EQ(alignment.width(), 90U);
        for (const IdentityOf compared :
             {IdentityOf::AlignedPairs, IdentityOf::ShorterSequence, IdentityOf::AlignmentLength}) {
            const unsigned long reference = below(20);
            companion::RowIdentities measure(alignment, reference, compared);
            EXPECT_TRUE(measure.isOfRows());
            ASSERT_EQ(all(measure).size(), 20U);
            for (unsigned long row = 0; row < 20; ++row)
                EXPECT_NEAR(measure.values()[row],
                            identity(m_Texts[reference], m_Texts[row], compared), 1e-12);
        }
    }
}

TEST_F(Measures, ColumnValuesAreThoseOfEachColumnByItself)
{
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const TAMBO::Alignment &alignment = made(seed, 30, 70);
        companion::ColumnValues gaps(alignment, companion::ColumnValue::Gaps);
        companion::ColumnValues conserved(alignment, companion::ColumnValue::Conservation);
        EXPECT_FALSE(gaps.isOfRows());
        ASSERT_EQ(all(gaps).size(), 70U);
        ASSERT_EQ(all(conserved).size(), 70U);
        for (unsigned long col = 0; col < 70; ++col) {
            std::vector<char> letters;
            double count = 0;
            for (const std::string &row : m_Texts) {
                letters.push_back(row[col]);
                count += row[col] == '-' ? 1 : 0;
            }
            EXPECT_NEAR(gaps.values()[col], count / 30, 1e-12);
            EXPECT_NEAR(conserved.values()[col],
                        companion::conservation(companion::ColumnCounts(letters)), 1e-12);
        }
    }
}

TEST_F(Measures, NamesThatMatchAreOne)
{
    const TAMBO::Alignment &alignment = made(1, 12, 5);
    companion::NameMatches measure(
        alignment, companion::NamePattern("row1*", companion::NameLanguage::Wildcard));
    const std::vector<double> &values = all(measure);
    ASSERT_EQ(values.size(), 12U);
    for (std::size_t row = 0; row < 12; ++row)
        EXPECT_EQ(values[row], row == 1 || row >= 10 ? 1 : 0) << row;
}

TEST_F(Measures, InSmallPartsAreThoseOfOneGo)
{
    const TAMBO::Alignment &alignment = made(2, 25, 40);
    companion::ColumnValues parts(alignment, companion::ColumnValue::Conservation);
    companion::ColumnValues whole(alignment, companion::ColumnValue::Conservation);
    std::size_t slices = 1;
    int percent = 0;
    // A part is a row, or a column.
    while (parts.goOn(std::chrono::microseconds(0))) {
        EXPECT_GE(parts.percent(), percent);
        percent = parts.percent();
        ++slices;
    }
    EXPECT_EQ(slices, 65U);
    EXPECT_EQ(parts.values(), all(whole));
}

} // namespace MeasuresTest
