// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever an honest aligner does, residues keep their order, and the rest stays as it was.
#include "RealignCommand.h"

#include "AppFixture.h"
#include "support/ScopedSettings.h"

#include <QFile>

#include <algorithm>
#include <random>

namespace RealignPropertyTest {

using TAMBO::Alignment;
using TAMBO::app::RealignCommand;
using Texts = std::vector<std::string>;

// Copies its input with gaps strewn in, rows of one length.
constexpr const char *kStrewer = R"(#!/usr/bin/env python3
import random, sys
random.seed(int(sys.argv[2]))
rows = []
for line in open(sys.argv[1]):
    if line.startswith('>'):
        rows.append([line.strip(), ''])
    else:
        rows[-1][1] += line.strip()
width = max(len(row[1]) for row in rows) + random.randint(0, 9)
random.shuffle(rows)
for name, letters in rows:
    places = set(random.sample(range(width), len(letters)))
    letters = iter(letters)
    print(name)
    print(''.join(next(letters) if i in places else '-' for i in range(width)))
)";

class RealignProperty : public RecordedFixture, public testing::WithParamInterface<unsigned>
{
protected:
    Texts randomRows()
    {
        constexpr std::string_view kLetters = "ACDEFGHIKLMNPQRSTVWYXBZUacd";
        const std::size_t width = number(2, 60);
        Texts rows(number(2, 8));
        for (std::string &row : rows) {
            for (std::size_t col = 0; col < width; ++col)
                row += number(0, 2) == 0 ? '-' : kLetters[number(0, kLetters.size() - 1)];
            row[number(0, width - 1)] = 'A';
        }
        return rows;
    }
    std::size_t number(std::size_t least, std::size_t most)
    {
        return std::uniform_int_distribution<std::size_t>(least, most)(m_Random);
    }
    static std::string withoutGaps(std::string text)
    {
        std::erase(text, '-');
        return text;
    }
    void realignAndCheck(const QByteArray &command)
    {
        const ScopedSettings settings("[Realign]\nAligner = " + command + '\n');
        const Texts before = randomRows();
        Alignment &ali = alignment("random", before);
        const std::size_t width = before.front().size();
        const std::size_t begin = number(0, width - 2);
        const std::size_t end = number(begin + 2, width);
        ali.range({begin, end});
        m_History.clear();
        ASSERT_TRUE(RealignCommand(nullptr, false).run(ali));
        const Texts after = rowsOf(ali);
        const std::size_t newEnd = after.front().size() - (width - end);
        for (std::size_t row = 0; row < before.size(); ++row) {
            EXPECT_EQ(after[row].substr(0, begin), before[row].substr(0, begin));
            EXPECT_EQ(after[row].substr(newEnd), before[row].substr(end));
            EXPECT_EQ(withoutGaps(after[row]), withoutGaps(before[row]));
        }
        while (m_History.canUndo())
            ASSERT_TRUE(m_History.undo());
        EXPECT_EQ(rowsOf(ali), before);
    }

    std::mt19937 m_Random{GetParam()};
};

TEST_P(RealignProperty, StrewnGapsMoveNoResidueOutOfItsPlace)
{
    const QString path = write("strewer", kStrewer);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner);
    realignAndCheck(path.toUtf8() + " {input} " + QByteArray::number(GetParam()));
}

TEST_P(RealignProperty, MafftMovesNoResidueOutOfItsPlace)
{
    realignAndCheck("mafft --amino --auto --anysymbol --quiet {input}");
}

INSTANTIATE_TEST_SUITE_P(Seeds, RealignProperty, testing::Range(1U, 13U));

} // namespace RealignPropertyTest
