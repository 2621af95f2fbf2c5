// SPDX-License-Identifier: GPL-3.0-or-later
// What is said after Color, By Distance, when structures were never superposed.
#include "DistanceAdvice.h"

#include "guide/GuidedFamily.h"
#include "support/LogLines.h"

#include "DataPoint.h"
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

TEST_F(AfterByDistance, StructuresThatLieNearEnoughAreNot)
{
    look(family(2));
    EXPECT_EQ(colored(), QStringList());
}

} // namespace DistanceAdviceTest
