// SPDX-License-Identifier: GPL-3.0-or-later
// What is said after Color, By Distance, when structures were never superposed.
#include "DistanceAdvice.h"

#include "guide/GuidedFamily.h"
#include "support/LogLines.h"

#include "DataPoint.h"
#include "PositionEdit.h"
#include "Space.h"

#include <QAction>

#include <algorithm>

namespace DistanceAdviceTest {

class AfterByDistance : public GuidedFamily
{
protected:
    QStringList colored()
    {
        const LogLines log;
        const auto actions = m_Window->findChildren<QAction *>();
        const auto entry = std::ranges::find_if(actions, [](const QAction *action) {
            return action->text().remove('&') == "By Distance";
        });
        EXPECT_NE(entry, actions.end());
        (*entry)->trigger();
        // It goes on between events.
        for (int i = 0; i < 50; ++i)
            QCoreApplication::processEvents();
        return log.texts();
    }
};

TEST_F(AfterByDistance, StructuresThatWereNeverSuperposedAreTold)
{
    TAMBO::Alignment &shown = family(4);
    look(shown);
    const double apart = TAMBO::StructureFits::measure(shown, 0, 3).rmsd;
    EXPECT_EQ(colored(),
              QStringList(QStringLiteral("The colors tell little: one structure is not superposed "
                                         "(m3_A lies %1 Å from m0_A, and would lie 0.0 Å from it). "
                                         "Use Tools, Superpose in the workbench")
                              .arg(apart, 0, 'f', 1)));
    {
        const DataPoint<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        TAMBO::StructureFits::superpose(shown, 0, {1, 2, 3});
    }
    EXPECT_EQ(colored(), QStringList());
}

TEST_F(AfterByDistance, OfSeveralTheFarthestIsTheExample)
{
    look(family(6));
    const QStringList lines = colored();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith("The colors tell little: 3 structures are not superposed (m5_A "
                                    "lies "))
        << qPrintable(lines[0]);
}

// Its first residues stand where those of the first one do, all others are folded back.
TEST_F(AfterByDistance, AStructureThatWasSuperposedByAPartIsNot)
{
    constexpr int kPart = 7;
    TAMBO::StructureRecord record;
    record.name = "folded";
    TAMBO::ChainRecord &chain = record.chains.emplace_back();
    chain.name = "A";
    for (int i = 0; i < int(kResidues); ++i) {
        TAMBO::ResidueRecord &residue = chain.residues.emplace_back();
        residue.typeName = "ALA";
        residue.letter = 'A';
        residue.number = TAMBO::SequenceNumber(i + 1);
        const float along = 1.5F * float(i < kPart ? i : 2 * kPart - i);
        const float side = i < kPart ? 1 : -1;
        residue.atoms.push_back({"CA", "C",
                                 TAMBO::Vertex(float(2.3 * std::cos(1.75 * i)),
                                               side * float(2.3 * std::sin(1.75 * i)), along)});
    }
    TAMBO::Structure *folded = nullptr;
    TAMBO::Alignment *pair = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        TAMBO::Peptide &first = member(0);
        folded = TAMBO::ObjectFactory::adopt(std::move(record));
        pair = TAMBO::DataMaker::makeAlignment("pair", {&first, folded->chain(0)});
    }
    const TAMBO::StructureFit fit = TAMBO::StructureFits::measure(*pair, 0, 1);
    ASSERT_GT(fit.rmsd, 2 * fit.coreRmsd + 3) << "as far apart as one that was never superposed";
    look(*pair);
    EXPECT_EQ(colored(), QStringList());
    {
        const DataPoint<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        TAMBO::moveStructures({{folded, TAMBO::Superposition({{{0, 0, 0}, {9, 9, 9}}})}});
    }
    const QStringList lines = colored();
    ASSERT_EQ(lines.size(), 1) << "no part of it is where it belongs";
    EXPECT_TRUE(lines[0].contains("one structure is not superposed (folded_A lies "))
        << qPrintable(lines[0]);
}

TEST_F(AfterByDistance, StructuresThatLieNearEnoughAreNot)
{
    look(family(2));
    EXPECT_EQ(colored(), QStringList());
}

} // namespace DistanceAdviceTest
