// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineLabel.h"

#include <QImage>
#include <QLabel>
#include <QPixmap>

#include <gtest/gtest.h>

#include <memory>

namespace LineLabelTest {

QImage pictureOf(const QString &text, int width)
{
    const std::unique_ptr<QLabel> label(companion::makeLineLabel());
    label->setText(text);
    label->resize(width, label->sizeHint().height());
    return label->grab().toImage();
}

TEST(LineLabel, EndsInAnEllipsisWhereItsTextHasNoRoom)
{
    const QString text = "Neighbor joining, 824 rows · the rows stand in another order";
    const std::unique_ptr<QLabel> label(companion::makeLineLabel());
    label->setText(text);
    const int all = label->sizeHint().width();
    label->resize(all / 2, label->sizeHint().height());
    const QString elided = label->fontMetrics().elidedText(
        text, Qt::ElideRight, label->contentsRect().width(), Qt::TextSingleLine);
    ASSERT_TRUE(elided.endsWith(u'…'));
    EXPECT_EQ(pictureOf(text, all / 2), pictureOf(elided, all / 2));
    EXPECT_EQ(label->text(), text) << "what assistive technology reads";
}

TEST(LineLabel, ShowsAllOfATextThatFits)
{
    const QString text = "Neighbor joining, 824 rows";
    const std::unique_ptr<QLabel> label(companion::makeLineLabel());
    label->setText(text);
    const int all = label->sizeHint().width();
    EXPECT_EQ(pictureOf(text, all).copy(0, 0, all, 10),
              pictureOf(text, 2 * all).copy(0, 0, all, 10));
    EXPECT_NE(pictureOf(text, all), pictureOf("Neighbor joining, 824 row", all));
}

} // namespace LineLabelTest
