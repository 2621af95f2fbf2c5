// SPDX-License-Identifier: GPL-3.0-or-later
// Distances along the columns of families with structures, against other programs.
#include "ColumnSpread.h"
#include "Companion.h"
#include "FileReader.h"
#include "TrackPainting.h"
#include "Tracks.h"
#include "window/AlignmentWindowFixture.h"

#include "WorkbenchValues.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

namespace DistanceTrackTest {

namespace fs = std::filesystem;

using companion::Companion;
using companion::Track;
using companion::TrackColumn;

struct Family
{
    const char *title;
    const char *file;
};

class DistanceTrack : public AlignmentWindowFixture, public ::testing::WithParamInterface<Family>
{
protected:
    DistanceTrack()
    {
        WorkbenchValues::Remove("companion", "tracks-off");
        WorkbenchValues::Set("companion", "tracks-on", "distance");
    }
    ~DistanceTrack() override
    {
        m_Companion.reset();
        WorkbenchValues::Remove("companion", "tracks-on");
        WorkbenchValues::Remove("companion", "dock-Tracks");
        WorkbenchValues::Remove("companion", "dock-Overview");
    }
    // Alignment and structures, as the workbench opens them.
    static TAMBO::Alignment *family(const fs::path &file)
    {
        auto rows = TAMBO::readFile(file);
        if (!rows)
            return nullptr;
        const DataPointBase guard(nullptr, Publisher::Add);
        for (const TAMBO::RowRecord &row : rows->alignments.front().rows) {
            auto structure = TAMBO::readFile(file.parent_path() / row.link->structure);
            if (!structure)
                return nullptr;
            TAMBO::ObjectFactory::adopt(std::move(structure->structures.front()));
        }
        return TAMBO::ObjectFactory::adopt(std::move(rows->alignments.front()));
    }
    void lookAtAll(TAMBO::Alignment &shown)
    {
        m_Window = &show(shown, {1500, 700});
        m_Companion = std::make_unique<Companion>(served(*m_Window));
        m_Companion->zoom().showAllColumns();
        m_Companion->tracks().toggle();
        settle();
    }
    void settle()
    {
        QCoreApplication::processEvents();
        while (m_Companion->tracks().canvas().isComputing())
            QCoreApplication::processEvents();
    }

    ZEP::KALMO2 *m_Window = nullptr;
    std::unique_ptr<Companion> m_Companion;
};

TEST_P(DistanceTrack, HasTheDistancesThatAnotherProgramAndTheEditorFind)
{
    const fs::path file = fs::path(TEST_DATA_DIR) / "families" / GetParam().file;
    TAMBO::Alignment *const shown = family(file);
    ASSERT_NE(shown, nullptr);
    lookAtAll(*shown);
    std::ifstream table(file.parent_path() / "ca_spread_per_column.tsv");
    std::string line;
    std::getline(table, line);
    unsigned long col = 0;
    for (; std::getline(table, line); ++col) {
        std::vector<std::string> fields;
        std::istringstream cells(line);
        for (std::string field; std::getline(cells, field, '\t');)
            fields.push_back(field);
        const TrackColumn *const found = m_Companion->tracks().canvas().columns().at(col);
        ASSERT_NE(found, nullptr) << col;
        ASSERT_TRUE(found->spread) << col;
        ASSERT_EQ(std::to_string(found->spread->positions), fields.at(1)) << col;
        ASSERT_EQ(found->spread->distance.has_value(), found->spread->positions > 1) << col;
        if (!found->spread->distance)
            continue;
        // Printed with four digits.
        ASSERT_NEAR(*found->spread->distance, std::stod(fields.at(4)), 6e-5) << col;
        std::vector<TAMBO::Vertex> places;
        for (unsigned long row = 0; row < shown->height(); ++row)
            shown->readPositions(row, col, col + 1, places);
        std::erase_if(places, [](const TAMBO::Vertex &place) { return !place.isDefined(); });
        ASSERT_EQ(*found->spread->distance, ZEP::meanDistance(places)) << col;
    }
    EXPECT_EQ(col, shown->width());
}

TEST_P(DistanceTrack, BarsAreAsHighAsTheirDistanceUpToTheEndOfTheScale)
{
    TAMBO::Alignment *const shown = family(fs::path(TEST_DATA_DIR) / "families" / GetParam().file);
    ASSERT_NE(shown, nullptr);
    lookAtAll(*shown);
    const companion::TrackCanvas &canvas = m_Companion->tracks().canvas();
    const QImage picture = pictureOf(&m_Companion->tracks().canvas());
    unsigned long beyond = 0;
    for (unsigned long col = 0; col < shown->width(); ++col) {
        const QRect place = canvas.columnRect(Track::Distance, col);
        const double distance = canvas.columns().at(col)->spread->distance.value_or(0);
        int bar = 0;
        for (int y = place.top(); y <= place.bottom(); ++y)
            bar += picture.pixelColor(place.left(), y) == QColor(Qt::white) ? 0 : 1;
        const double share = std::min(1.0, distance / companion::kMostDistance);
        ASSERT_NEAR(bar, share * place.height(), 1.0) << col;
        const bool isMarked =
            picture.pixelColor(place.topLeft()) != QColor(Qt::white) &&
            picture.pixelColor(place.topLeft()) != companion::trackColor(Track::Distance);
        ASSERT_EQ(isMarked, distance > companion::kMostDistance) << col;
        beyond += isMarked ? 1 : 0;
    }
    EXPECT_GT(beyond, 0U);
}

INSTANTIATE_TEST_SUITE_P(Families, DistanceTrack,
                         ::testing::Values(Family{"G6pd", "g6pd/g6pd_templates.ali"},
                                           Family{"SerineProteases",
                                                  "serine_proteases/serine_proteases.ali"}),
                         [](const auto &info) { return std::string(info.param.title); });

} // namespace DistanceTrackTest
