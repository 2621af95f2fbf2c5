// SPDX-License-Identifier: GPL-3.0-or-later
// Which names a press and a release hit, in fonts whose lines are closer than their letters are
// high as well.
#include "WindowFixture.h"

#include <QMouseEvent>

namespace NameHitsTest {

class NameHits : public WindowFixture, public ::testing::WithParamInterface<const char *>
{
protected:
    // The y coordinates count from the top of the first name.
    static void send(Panel &names, QEvent::Type type, int y)
    {
        // On the mark that ends the text.
        const QPoint at(names.contentsWidth() * 7 / 8 - 5, y);
        const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, at, names.viewport()->mapToGlobal(at), Qt::LeftButton, held,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(names.viewport(), &event);
    }
    static std::vector<bool> selectedRows(const TAMBO::Alignment &shown)
    {
        std::vector<bool> rows;
        for (unsigned long row = 0; row < shown.height(); ++row)
            rows.push_back(shown.isRowSelected(row));
        return rows;
    }
    static Texts namesOf(const TAMBO::Alignment &shown)
    {
        Texts names;
        for (unsigned long row = 0; row < shown.height(); ++row)
            names.push_back(shown.GetSeqName(row));
        return names;
    }
};

TEST_P(NameHits, AtEveryHeightAClickHitsTheNameOfThatCellAlone)
{
    setSettings(QByteArray("[KALMO2]\nFont = ") + GetParam() + "\n");
    TAMBO::Alignment &shown = alignment({"ACD", "ACD", "ACD"});
    Panel &names = *WindowParts(show(shown, {900, 600})).names;
    const int cell = names.contentsHeight() / 4;
    ASSERT_GT(names.visibleHeight(), 4 * cell);
    for (int y = 0; y < 4 * cell; ++y) {
        std::vector<bool> expected = selectedRows(shown);
        if (y < 3 * cell)
            expected[std::size_t(y / cell)].flip();
        send(names, QEvent::MouseButtonPress, y);
        EXPECT_EQ(selectedRows(shown), expected) << y;
        send(names, QEvent::MouseButtonRelease, y);
        EXPECT_EQ(namesOf(shown), (Texts{"s0", "s1", "s2"})) << y;
    }
}

TEST_P(NameHits, AtEveryHeightARowIsDroppedOnTheNameOfThatCellAlone)
{
    setSettings(QByteArray("[KALMO2]\nFont = ") + GetParam() + "\n");
    TAMBO::Alignment &shown = alignment({"ACD", "ACD", "ACD"});
    Panel &names = *WindowParts(show(shown, {900, 600})).names;
    const int cell = names.contentsHeight() / 4;
    ASSERT_GT(names.visibleHeight(), 3 * cell);
    for (int y = 0; y < 3 * cell; ++y) {
        const Texts before = namesOf(shown);
        Texts expected = before;
        expected.erase(expected.begin());
        expected.insert(expected.begin() + y / cell, before.front());
        send(names, QEvent::MouseButtonPress, cell / 2);
        send(names, QEvent::MouseButtonRelease, y);
        EXPECT_EQ(namesOf(shown), expected) << y;
    }
}

INSTANTIATE_TEST_SUITE_P(Fonts, NameHits,
                         testing::Values("DejaVu Sans Mono, 11", "Nimbus Sans Narrow, 11",
                                         "Nimbus Sans Narrow, 24", "P052, 24"),
                         [](const auto &info) {
                             std::string name = info.param;
                             std::erase_if(name, [](char c) { return c == ' ' || c == ','; });
                             return name;
                         });

} // namespace NameHitsTest
