// SPDX-License-Identifier: GPL-3.0-or-later
// A window makes its names, marks, consensus letters and numbers when somebody asks for them; none
// can tell that from a window that has made them all.
#include "AlignmentWindowFixture.h"
#include "EagerDisplay.h"

#include "DataMaker.h"

#include <QImage>
#include <QPainter>

#include <random>
#include <tuple>

namespace ItemsOnDemandTest {

// What can be seen of an item from outside.
std::string described(const QCanvasItem *item)
{
    const QRect area = item->boundingRect();
    QString text = QStringLiteral("%1 at (%2, %3, %4) covers %5 x %6 from (%7, %8)")
                       .arg(item->rtti())
                       .arg(item->x())
                       .arg(item->y())
                       .arg(item->z())
                       .arg(area.width())
                       .arg(area.height())
                       .arg(area.x())
                       .arg(area.y());
    if (!item->isVisible())
        text += QStringLiteral(", hidden");
    if (const auto *words = dynamic_cast<const QCanvasText *>(item))
        text += QStringLiteral(" says '%1' in %2, %3, %4")
                    .arg(words->text(), words->color().name(), words->font().key())
                    .arg(words->textFlags());
    if (const auto *box = dynamic_cast<const QCanvasRectangle *>(item))
        text += QStringLiteral(" in %1 and %2")
                    .arg(box->brush().color().name(), box->pen().color().name());
    if (item->rtti() == RowItem::RTTI)
        text += QStringLiteral(", row %1").arg(static_cast<const RowItem *>(item)->getRow());
    if (item->rtti() == ColItem::RTTI)
        text += QStringLiteral(", column %1").arg(static_cast<const ColItem *>(item)->getCol());
    return text.toStdString();
}

std::vector<std::string> described(const QCanvasItemList &items)
{
    std::vector<std::string> texts;
    for (const QCanvasItem *item : items)
        texts.push_back(described(item));
    return texts;
}

QImage areaOf(QCanvas &canvas, const QRect &rect)
{
    QImage image(rect.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.translate(-rect.topLeft());
    canvas.drawArea(rect, &painter);
    return image;
}

class ItemsOnDemand : public AlignmentWindowFixture
{
protected:
    unsigned long any(unsigned long count) { return m_Random() % count; }
    int anyInt(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_Random); }

    TAMBO::Alignment &anyAlignment()
    {
        const unsigned long columns = 1 + any(260);
        Texts rows(1 + any(30));
        Texts names;
        for (std::string &row : rows) {
            // Columns that are all the same, mostly the same and not.
            for (unsigned long col = 0; col < columns; ++col)
                row += col % 3 == 0 ? "ACD--"[any(5)] : col % 3 == 1 ? 'W' : "MMMi-"[any(5)];
            names.push_back(std::string(any(12) == 0 ? 80 : 1 + any(20), "aWi_"[any(4)]));
        }
        TAMBO::Alignment &made = alignment(rows, "any", names);
        TAMBO::Peptide &first = *TAMBO::Peptide::from(made.GetSeq(0));
        const int number = anyInt(-30, 99990);
        for (std::size_t i = 0; i < first.residueCount(); ++i)
            first.setNumber(
                i, TAMBO::SequenceNumber(number + static_cast<int>(i), any(20) == 0 ? 'B' : ' '));
        std::vector<TAMBO::Compound *> residues;
        for (unsigned long col = columns / 3; col < columns / 2; ++col)
            if (TAMBO::Compound *residue = made.getItem(0, col))
                residues.push_back(residue);
        if (residues.size() >= 3)
            TAMBO::DataMaker::makeSSE(made.GetSeq(0), "unk", residues, "HET"[any(3)]);
        made.range({any(columns), any(columns)});
        return made;
    }
    QFont anyFont()
    {
        static const char *const kFamilies[] = {"DejaVu Sans Mono", "DejaVu Sans", "DejaVu Serif"};
        QFont font(kFamilies[any(3)], anyInt(7, 22));
        font.setItalic(any(4) == 0);
        return font;
    }
    QRect anyRect(const QCanvas &canvas)
    {
        return {anyInt(-50, canvas.width()), anyInt(-20, canvas.height()), anyInt(1, 400),
                anyInt(1, 120)};
    }
    void compare(QCanvas &lazy, QCanvas &eager)
    {
        ASSERT_EQ(lazy.size(), eager.size());
        for (int i = 0; i < 6; ++i) {
            const QRect rect = anyRect(eager);
            ASSERT_EQ(described(lazy.collisions(rect)), described(eager.collisions(rect)));
            ASSERT_EQ(described(lazy.collisions(rect.topLeft())),
                      described(eager.collisions(rect.topLeft())));
            ASSERT_EQ(areaOf(lazy, rect), areaOf(eager, rect));
        }
    }

private:
    std::mt19937 m_Random{11};
};

TEST_F(ItemsOnDemand, AreThoseOfAWindowThatHasMadeAll)
{
    const MessageRecorder quiet;
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE(round);
        TAMBO::Alignment &shown = anyAlignment();
        ZEP::KALMO2 &window = open();
        const WindowParts parts(window);
        TAMBO::AlignmentWindow &seen = served(window);
        EagerDisplay eager;
        const auto rebuild = [&] {
            call(window, "ReCreate");
            eager.populate(shown);
        };
        const QFont font = anyFont();
        static_cast<BaseWindow &>(window).setFont(font);
        eager.setFont(font);
        // Eight cells of the first font, until somebody wants another width.
        seen.setNameWidth(150);
        eager.setNameWidth(150);
        window.Populate(&shown);
        eager.populate(shown);
        for (int step = 0; step < 12; ++step) {
            SCOPED_TRACE(testing::Message() << "step " << step);
            const unsigned long row = any(shown.height());
            const unsigned long col = any(shown.width());
            switch (any(9)) {
            case 0: {
                const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
                guard->select({col, std::min(shown.width(), col + 1 + any(3))}, any(3) != 0);
                break;
            }
            case 1: {
                const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
                guard->selectInRow(row, {0, shown.width()});
                break;
            }
            case 2: {
                const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
                guard->insertGap(row, col);
                guard->moveGap(row, col, any(shown.width()), true);
                eager.populate(shown);
                break;
            }
            case 3:
                history.undo();
                rebuild();
                break;
            case 4:
                // As a name that is dragged to another place.
                shown.bubbleRow(row, any(shown.height()));
                window.CreateNumbering();
                eager.createNumbering();
                // A name takes notice when it is painted.
                (void)areaOf(*parts.nameCanvas, parts.nameCanvas->rect());
                (void)areaOf(eager.names, eager.names.rect());
                break;
            case 5: {
                const QSize size(anyInt(1, 40), anyInt(1, 40));
                seen.setCellSize(any(2) == 0 ? size : seen.ownCellSize());
                eager.setCell(seen.cellSize());
                rebuild();
                break;
            }
            case 6:
                shown.range({col, any(shown.width())});
                call(window, "Update");
                window.commUpdate();
                eager.setRange(shown.range().first, shown.range().second);
                break;
            case 7:
                seen.setNameWidth(100 + anyInt(0, 100));
                eager.setNameWidth(seen.nameWidth());
                eager.populateNames(shown.height(), eager.names.height());
                break;
            default: {
                const DataPoint<TAMBO::Compound> guard(nullptr, shown.GetSeq(row));
                TAMBO::Peptide::from(shown.GetSeq(row))
                    ->setNumber(0, TAMBO::SequenceNumber(anyInt(1, 5000)));
                rebuild();
                break;
            }
            }
            compare(*parts.nameCanvas, eager.names);
            compare(*parts.headerCanvas, eager.header);
            ASSERT_FALSE(HasFatalFailure());
        }
        EXPECT_EQ(described(parts.nameCanvas->allItems()), described(eager.names.allItems()));
        EXPECT_EQ(described(parts.headerCanvas->allItems()), described(eager.header.allItems()));
        window.Clear();
    }
}

TEST_F(ItemsOnDemand, ANameIsTheSameForAllWhoAskInOneEvent)
{
    const MessageRecorder quiet;
    ZEP::KALMO2 &window = open(alignment(Texts(40, "ACDEF")));
    const WindowParts parts(window);
    const QPoint name(60, 12 * parts.cells->lattice().cellHeight() + 3);
    const QCanvasItemList once = parts.nameCanvas->collisions(name);
    ASSERT_EQ(once.size(), 1);
    EXPECT_EQ(parts.nameCanvas->collisions(name), once);
    EXPECT_EQ(parts.nameCanvas->allItems().at(12), once.first());
    call(window, "ReCreate");
    EXPECT_EQ(once.first()->canvas(), nullptr);
    EXPECT_EQ(static_cast<const RowItem *>(once.first())->getRow(), 12U);
}

TEST_F(ItemsOnDemand, APaintedConsensusLetterCanBeRead)
{
    ZEP::KALMO2 &window = show(alignment({"ACDEF", "ACD--", "AW---"}), {500, 300});
    const WindowParts parts(window);
    QCoreApplication::processEvents();
    Texts letters;
    for (const QCanvasItem *item : parts.headerCanvas->allItems())
        if (item->rtti() == IdItem::RTTI)
            letters.push_back(static_cast<const IdItem *>(item)->text().toStdString());
    EXPECT_EQ(letters, (Texts{"A", "c", "d", "", ""}));
}

} // namespace ItemsOnDemandTest
