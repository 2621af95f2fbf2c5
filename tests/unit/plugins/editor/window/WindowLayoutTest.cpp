// SPDX-License-Identifier: GPL-3.0-or-later
// How the window is put together, what its font decides, and that panels and grid line up.
#include "WindowFixture.h"

#include "QCanvasText.h"

#include <QFontDialog>
#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>

namespace WindowLayoutTest {

class WindowLayout : public WindowFixture
{
protected:
    static int cellWidth(const QFont &font)
    {
        const QFontMetrics metrics(font);
        int widest = 0;
        for (const char letter : std::string("-ABCDEFGHIJKLMNOPQRSTUVWXYZ"))
            widest = std::max(widest, metrics.boundingRect(QLatin1Char(letter)).width());
        return widest + 4;
    }
    static int cellHeight(const QFont &font) { return QFontMetrics(font).lineSpacing(); }

    static QFont font(int points) { return QFont("DejaVu Sans Mono", points); }
    // Rows and columns enough for both scroll bars.
    TAMBO::Alignment &large() { return alignment(Texts(60, std::string(200, 'A')), "large"); }
    static QFont shownFont(const WindowParts &parts)
    {
        for (const QCanvasItem *item : parts.nameCanvas->allItems()) {
            if (const auto *text = dynamic_cast<const QCanvasText *>(item))
                return text->font();
        }
        ADD_FAILURE() << "no names";
        return {};
    }
    // What the window shows of the view's canvas is what the canvas has there: nothing lies over
    // it.
    static void expectUncovered(ZEP::KALMO2 &window, const QCanvasView &view)
    {
        const QImage seen = window.grab().toImage();
        const QRect area(view.viewport()->mapTo(&window, QPoint()), view.viewport()->size());
        QImage wanted(area.size(), seen.format());
        QPainter painter(&wanted);
        painter.translate(-view.contentsX(), -view.contentsY());
        view.canvas()->drawArea({{view.contentsX(), view.contentsY()}, area.size()}, &painter);
        painter.end();
        EXPECT_EQ(seen.copy(area).convertToFormat(QImage::Format_RGB32),
                  wanted.convertToFormat(QImage::Format_RGB32))
            << view.metaObject()->className() << " at " << area.x() << ", " << area.y();
    }
    // The font that the dialog makes of the wanted one.
    QFont chooseFont(ZEP::KALMO2 &window, const QFont &wanted)
    {
        QFont chosen;
        DialogDriver dialogs;
        dialogs.expect([&](QDialog &dialog) {
            auto &fonts = dynamic_cast<QFontDialog &>(dialog);
            EXPECT_EQ(fonts.parentWidget(), &window);
            fonts.setCurrentFont(wanted);
            fonts.accept();
            chosen = fonts.selectedFont();
        });
        window.ChangeFont();
        EXPECT_EQ(chosen.pointSize(), wanted.pointSize());
        return chosen;
    }
};

TEST_F(WindowLayout, TheCanvasesAreChildrenInTheirOrder)
{
    const ZEP::KALMO2 &window = open();
    const WindowParts parts(window);
    ASSERT_NE(parts.headerCanvas, nullptr);
    EXPECT_EQ(parts.view->canvas(), parts.cells);
    EXPECT_EQ(parts.names->canvas(), parts.nameCanvas);
    EXPECT_EQ(parts.header->canvas(), parts.headerCanvas);
}

TEST_F(WindowLayout, TheGridHasNoMarginsAndItsChildrenInOrder)
{
    const ZEP::KALMO2 &window = open();
    const WindowParts parts(window);
    EXPECT_STREQ(window.centralWidget()->metaObject()->className(), "QWidget");
    EXPECT_EQ(parts.grid->rowCount(), 2);
    EXPECT_EQ(parts.grid->columnCount(), 2);
    EXPECT_EQ(parts.grid->contentsMargins(), QMargins());
    EXPECT_EQ(parts.grid->spacing(), 0);
    const auto children =
        window.centralWidget()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    EXPECT_EQ(children, (QList<QWidget *>{parts.corner, parts.view, parts.header, parts.names}));
}

TEST_F(WindowLayout, ThePanelsHaveOneDisabledBar)
{
    const WindowParts parts(open());
    EXPECT_EQ(parts.header->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    EXPECT_FALSE(parts.header->verticalScrollBar()->isEnabled());
    EXPECT_EQ(parts.header->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    EXPECT_EQ(parts.names->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    EXPECT_FALSE(parts.names->horizontalScrollBar()->isEnabled());
    EXPECT_EQ(parts.names->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

TEST_F(WindowLayout, TheBarsOfThePanelsStayDisabledWhateverIsShown)
{
    const WindowParts parts(show(large(), {500, 250}));
    QCoreApplication::processEvents();
    EXPECT_FALSE(parts.header->verticalScrollBar()->isEnabled());
    EXPECT_FALSE(parts.names->horizontalScrollBar()->isEnabled());
}

TEST_F(WindowLayout, TheColouringDialogBelongsToTheWindow)
{
    const ZEP::KALMO2 &window = open();
    const auto dialogs = window.findChildren<ZEP::AcidColor *>();
    ASSERT_EQ(dialogs.size(), 1);
    EXPECT_EQ(dialogs.front()->parent(), &window);
    EXPECT_FALSE(dialogs.front()->isVisible());
}

TEST_F(WindowLayout, TheFontOfTheSettingsMeasuresTheCells)
{
    for (const int points : {8, 20}) {
        setSettings("[KALMO2]\nFont = DejaVu Sans Mono, " + QByteArray::number(points) + "\n");
        const WindowParts parts(open(alignment({"ACDEF"})));
        EXPECT_EQ(parts.cells->width(), 6 * cellWidth(font(points)));
        EXPECT_EQ(parts.cells->height(), 2 * cellHeight(font(points)));
    }
}

TEST_F(WindowLayout, WithoutAUsableFontTheApplicationsIsTaken)
{
    for (const char *settings : {"", "[KALMO2]\nFont =\n"}) {
        setSettings(settings);
        const WindowParts parts(open(alignment({"ACDEF"})));
        EXPECT_EQ(parts.cells->width(), 6 * cellWidth(QFont()));
        EXPECT_EQ(parts.cells->height(), 2 * cellHeight(QFont()));
    }
}

TEST_F(WindowLayout, AProportionalFontIsMeasuredByItsWidestCapital)
{
    setSettings("[KALMO2]\nFont = DejaVu Sans, 13\n");
    const QFont proportional("DejaVu Sans", 13);
    const QFontMetrics metrics(proportional);
    ASSERT_EQ(cellWidth(proportional), metrics.boundingRect(QLatin1Char('W')).width() + 4);
    const WindowParts parts(open());
    EXPECT_EQ(parts.names->minimumWidth(), 8 * cellWidth(proportional));
    EXPECT_EQ(parts.header->minimumHeight(), 4 * metrics.lineSpacing());
}

TEST_F(WindowLayout, ThePanelsAreFixedByTheCells)
{
    const WindowParts parts(open());
    EXPECT_EQ(parts.names->minimumWidth(), 8 * cellWidth(font(11)));
    EXPECT_EQ(parts.names->maximumWidth(), 8 * cellWidth(font(11)));
    EXPECT_EQ(parts.header->minimumHeight(), 4 * cellHeight(font(11)));
    EXPECT_EQ(parts.header->maximumHeight(), 4 * cellHeight(font(11)));
}

TEST_F(WindowLayout, ThePanelsAreExactlyAsLargeAsTheViewBesideItsBars)
{
    // Also when nothing is to be scrolled.
    for (TAMBO::Alignment *shown : {&large(), &alignment({"AC", "DE"})}) {
        const WindowParts parts(show(*shown, {700, 400}));
        EXPECT_EQ(parts.header->visibleWidth(), parts.view->visibleWidth());
        EXPECT_EQ(parts.names->visibleHeight(), parts.view->visibleHeight());
        EXPECT_EQ(parts.names->visibleWidth(), 8 * cellWidth(font(11)));
        EXPECT_EQ(parts.header->visibleHeight(), 4 * cellHeight(font(11)));
        const auto left = [](QWidget *view) { return view->mapToGlobal(QPoint()).x(); };
        const auto top = [](QWidget *view) { return view->mapToGlobal(QPoint()).y(); };
        EXPECT_EQ(left(parts.header->viewport()), left(parts.view->viewport()));
        EXPECT_EQ(top(parts.names->viewport()), top(parts.view->viewport()));
    }
}

TEST_F(WindowLayout, ScrollingTheViewTakesThePanelsAlong)
{
    const WindowParts parts(show(large(), {700, 400}));
    parts.view->setContentsPos(30, 20);
    EXPECT_EQ(parts.header->contentsX(), 30);
    EXPECT_EQ(parts.header->contentsY(), 0);
    EXPECT_EQ(parts.names->contentsX(), 0);
    EXPECT_EQ(parts.names->contentsY(), 20);
    parts.view->horizontalScrollBar()->setValue(parts.view->horizontalScrollBar()->maximum());
    parts.view->verticalScrollBar()->setValue(parts.view->verticalScrollBar()->maximum());
    EXPECT_EQ(parts.header->contentsX(), parts.view->contentsX());
    EXPECT_EQ(parts.names->contentsY(), parts.view->contentsY());
}

TEST_F(WindowLayout, ScrollMovesThePanelsAlone)
{
    ZEP::KALMO2 &window = show(large(), {700, 400});
    const WindowParts parts(window);
    window.scroll(40, 25);
    EXPECT_EQ(parts.header->contentsX(), 40);
    EXPECT_EQ(parts.header->contentsY(), 0);
    EXPECT_EQ(parts.names->contentsX(), 0);
    EXPECT_EQ(parts.names->contentsY(), 25);
    EXPECT_EQ(parts.view->contentsX(), 0);
}

TEST_F(WindowLayout, ALongNameDoesNotWidenTheCorner)
{
    const WindowParts parts(show(alignment({"AC"}, std::string(200, 'n')), {700, 400}));
    EXPECT_EQ(parts.corner->width(), parts.names->width());
    EXPECT_EQ(parts.corner->height(), parts.header->height());
    EXPECT_EQ(parts.corner->text(), QString(200, 'n'));
}

TEST_F(WindowLayout, SetFontOnlyMeasures)
{
    ZEP::KALMO2 &window = open(alignment({"ACDEF"}));
    const WindowParts parts(window);
    const QFont before = window.font();
    BaseWindow &base = window;
    base.setFont(font(30));
    EXPECT_EQ(window.font(), before);
    EXPECT_EQ(parts.names->minimumWidth(), 8 * cellWidth(font(11)));
    EXPECT_EQ(parts.names->maximumWidth(), 8 * cellWidth(font(11)));
    EXPECT_EQ(parts.header->maximumHeight(), 4 * cellHeight(font(11)));
    EXPECT_EQ(parts.cells->width(), 6 * cellWidth(font(11)));
    const MessageRecorder quiet;
    call(window, "ReCreate");
    EXPECT_EQ(parts.cells->width(), 6 * cellWidth(font(30)));
}

TEST_F(WindowLayout, ACancelledFontDialogChangesNothing)
{
    ZEP::KALMO2 &window = open(alignment({"ACDEF"}));
    const WindowParts parts(window);
    const MessageRecorder messages;
    {
        DialogDriver dialogs;
        dialogs.expect([](QDialog &dialog) {
            EXPECT_EQ(dynamic_cast<QFontDialog &>(dialog).currentFont().pointSize(), 11);
            dialog.reject();
        });
        window.ChangeFont();
    }
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_EQ(parts.cells->width(), 6 * cellWidth(font(11)));
    EXPECT_EQ(parts.names->maximumWidth(), 8 * cellWidth(font(11)));
}

TEST_F(WindowLayout, ANewFontRebuildsTheSameAlignment)
{
    ZEP::KALMO2 &window = open(alignment({"ACDEF"}, "mine"));
    const WindowParts parts(window);
    const MessageRecorder messages;
    const QFont chosen = chooseFont(window, font(20));
    EXPECT_EQ(messages.count("Got Alignment 1 by 5"), 1);
    EXPECT_EQ(parts.corner->text(), "mine");
    EXPECT_EQ(parts.cells->width(), 6 * cellWidth(chosen));
    EXPECT_EQ(parts.nameCanvas->width(), 8 * cellWidth(chosen));
    EXPECT_EQ(parts.headerCanvas->height(), 4 * cellHeight(chosen));
    parts.header->SetRange(1, 3);
    for (QCanvas *canvas : {parts.headerCanvas, parts.nameCanvas}) {
        for (const QCanvasItem *item : canvas->allItems()) {
            if (item->rtti() == QCanvasItem::Rtti_Rectangle) {
                EXPECT_EQ(item->boundingRect().width(), 2 * cellWidth(chosen));
            } else {
                EXPECT_EQ(static_cast<const QCanvasText *>(item)->font(), chosen);
            }
        }
    }
}

TEST_F(WindowLayout, ANewFontMovesOnlyTheMaximaOfThePanels)
{
    ZEP::KALMO2 &window = open(alignment({"ACDEF"}));
    const WindowParts parts(window);
    const MessageRecorder quiet;
    const QFont chosen = chooseFont(window, font(20));
    EXPECT_EQ(parts.names->maximumWidth(), 8 * cellWidth(chosen));
    EXPECT_EQ(parts.names->minimumWidth(), 8 * cellWidth(font(11)));
    EXPECT_EQ(parts.header->maximumHeight(), 4 * cellHeight(chosen));
    EXPECT_EQ(parts.header->minimumHeight(), 4 * cellHeight(font(11)));
}

TEST_F(WindowLayout, ALargerFontGivesThePanelsTheirFullSize)
{
    ZEP::KALMO2 &window = show(large(), {900, 600});
    const WindowParts parts(window);
    const MessageRecorder quiet;
    const QFont chosen = chooseFont(window, font(30));
    window.centralWidget()->layout()->activate();
    EXPECT_EQ(parts.names->width(), 8 * cellWidth(chosen));
    EXPECT_EQ(parts.header->height(), 4 * cellHeight(chosen));
}

TEST_F(WindowLayout, NoFontPutsAPanelOverTheRows)
{
    for (const QSize &size : {QSize(700, 400), QSize(1600, 1100)}) {
        ZEP::KALMO2 &window = show(large(), size);
        const WindowParts parts(window);
        const MessageRecorder quiet;
        for (const int points : {8, 2, 11, 30, 5, 120, 72, 3, 11, 10, 120, 2, 20}) {
            SCOPED_TRACE(std::to_string(points) + " points in " + std::to_string(size.width()));
            const QFont chosen = chooseFont(window, font(points));
            QCoreApplication::processEvents();
            window.centralWidget()->layout()->activate();
            QCoreApplication::processEvents();
            for (const QCanvasView *view :
                 std::initializer_list<const QCanvasView *>{parts.view, parts.header, parts.names})
                expectUncovered(window, *view);
            // The first cell can be seen as a whole.
            EXPECT_EQ(parts.view->contentsY(), 0);
            EXPECT_GE(parts.view->visibleHeight(), cellHeight(chosen));
            EXPECT_GE(parts.view->visibleWidth(), cellWidth(chosen));
            EXPECT_EQ(parts.header->visibleWidth(), parts.view->visibleWidth());
            EXPECT_EQ(parts.names->visibleHeight(), parts.view->visibleHeight());
            EXPECT_EQ(parts.names->maximumWidth(), 8 * cellWidth(chosen));
            EXPECT_EQ(parts.names->minimumWidth(), 8 * cellWidth(font(11)));
            EXPECT_EQ(parts.header->maximumHeight(), 4 * cellHeight(chosen));
            EXPECT_EQ(parts.header->minimumHeight(), 4 * cellHeight(font(11)));
        }
    }
}

TEST_F(WindowLayout, TheFontDialogStartsWithTheFontThatIsShown)
{
    for (const char *setting :
         {"DejaVu Sans Mono, 11", "DejaVu Sans Mono,11,-1,5,700,0,0,0,0,0,0,0,0,0,0,1",
          "DejaVu Sans Mono,11,-1,5,400,2,0,0,0,0,0,0,0,0,0,1", "DejaVu Sans, 9", "Monospace, 12",
          "No Such Family, 10"}) {
        SCOPED_TRACE(setting);
        setSettings(QByteArray("[KALMO2]\nFont = ") + setting + '\n');
        ZEP::KALMO2 &window = show(alignment({"ACDEFGHIKLMNPQRSTVWY"}), {700, 400});
        const WindowParts parts(window);
        const QFont before = shownFont(parts);
        const QImage cells = parts.view->viewport()->grab().toImage();
        const MessageRecorder quiet;
        DialogDriver dialogs;
        dialogs.expect([&](QDialog &dialog) {
            const QFontInfo shown(before);
            const QFontInfo start(dynamic_cast<QFontDialog &>(dialog).currentFont());
            EXPECT_EQ(start.family(), shown.family());
            EXPECT_EQ(start.pointSize(), shown.pointSize());
            EXPECT_EQ(start.weight(), shown.weight());
            EXPECT_EQ(start.style(), shown.style());
            dialog.accept();
        });
        window.ChangeFont();
        QCoreApplication::processEvents();
        EXPECT_EQ(parts.view->viewport()->grab().toImage(), cells);
    }
}

TEST_F(WindowLayout, ANewFontShowsTheSameCellsFirst)
{
    ZEP::KALMO2 &window = show(large(), {700, 400});
    const WindowParts parts(window);
    parts.view->setContentsPos(50 * cellWidth(font(11)), 20 * cellHeight(font(11)));
    const MessageRecorder quiet;
    const QFont chosen = chooseFont(window, font(14));
    EXPECT_EQ(parts.view->contentsX(), 50 * cellWidth(chosen));
    EXPECT_EQ(parts.view->contentsY(), 20 * cellHeight(chosen));
    EXPECT_EQ(parts.header->contentsX(), parts.view->contentsX());
    EXPECT_EQ(parts.names->contentsY(), parts.view->contentsY());
}

TEST_F(WindowLayout, ANewFontOnAnEmptyWindowLeavesItEmpty)
{
    ZEP::KALMO2 &window = open();
    const WindowParts parts(window);
    const MessageRecorder messages;
    const QFont chosen = chooseFont(window, font(20));
    EXPECT_TRUE(isEmpty(window));
    EXPECT_EQ(messages.messages(), QStringList());
    EXPECT_EQ(parts.names->maximumWidth(), 8 * cellWidth(chosen));
}

} // namespace WindowLayoutTest
