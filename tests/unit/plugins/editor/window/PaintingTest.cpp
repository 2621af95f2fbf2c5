// SPDX-License-Identifier: GPL-3.0-or-later
// What of a window is painted anew, and when.
#include "PaintWatch.h"
#include "WindowFixture.h"

#include "DataDelete.h"
#include "DataMaker.h"
#include "Space.h"

namespace PaintingTest {

class Painting : public WindowFixture
{
protected:
    Painting()
        : shown(alignment(Texts(30, std::string(60, 'A')))),
          window(show(shown, {700, 400})),
          parts(window)
    { }

    static void setAllChanged(const WindowParts &parts)
    {
        for (QCanvas *canvas : {parts.cells, parts.nameCanvas, parts.headerCanvas})
            canvas->setAllChanged();
    }

    TAMBO::Alignment &shown;
    ZEP::KALMO2 &window;
    WindowParts parts;
    PaintWatch paints{parts.view, parts.header, parts.names};
};

TEST_F(Painting, EveryViewsUpdatePaintsWhatChangedOnAllThree)
{
    for (QCanvasView *view :
         {static_cast<QCanvasView *>(parts.view), static_cast<QCanvasView *>(parts.header),
          static_cast<QCanvasView *>(parts.names)}) {
        setAllChanged(parts);
        EXPECT_FALSE(paints.isAnythingPainted());
        QMetaObject::invokeMethod(view, "Update");
        EXPECT_EQ(paints.take(), paints.whole());
        QMetaObject::invokeMethod(view, "Update");
        EXPECT_FALSE(paints.isAnythingPainted()) << "nothing has changed since";
    }
}

TEST_F(Painting, TheNumberingMarksAllThreeAndPaintsNone)
{
    window.CreateNumbering();
    EXPECT_FALSE(paints.isAnythingPainted());
    call(window, "Update");
    EXPECT_EQ(paints.take(), paints.whole());
}

TEST_F(Painting, AnUpdateElsewherePaintsAllThree)
{
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        shown.getItem(0, 0)->SetColor(Color(0xff0000U));
    }
    EXPECT_EQ(paints.take(), paints.whole());
}

TEST_F(Painting, AnUpdateOfSomethingElsePaintsAllThreeToo)
{
    TAMBO::Alignment &other = alignment({"ACD"});
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &other);
    }
    EXPECT_EQ(paints.take(), paints.whole());
}

TEST_F(Painting, ADeletionElsewherePaintsAllThree)
{
    TAMBO::Alignment &other = alignment({"ACD"});
    EXPECT_FALSE(paints.isAnythingPainted()) << "an alignment was only added";
    const MessageRecorder quiet;
    {
        const DataDelete<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(&other);
    }
    EXPECT_EQ(paints.take(), paints.whole());
}

TEST_F(Painting, ANewRangeIsLeftToThePanelToPaint)
{
    call(window, "ReRange", number(2UL), number(4UL));
    call(window, "Update");
    EXPECT_FALSE(paints.isAnythingPainted());
}

TEST_F(Painting, ANewFontIsNotShownBeforeTheRebuild)
{
    window.setFont(QFont("DejaVu Sans Mono", 20));
    call(window, "Update");
    EXPECT_FALSE(paints.isAnythingPainted());
}

TEST_F(Painting, AColumnAppendedWithoutAGuardIsPainted)
{
    const MessageRecorder quiet;
    window.AddGapColumn();
    EXPECT_EQ(paints.take().front(), paints.whole().front());
}

TEST_F(Painting, TheCanvasesAreResizedInTheirOrder)
{
    QStringList order;
    const auto note = [&](QCanvas *canvas, const QString &name) {
        QObject::connect(canvas, &QCanvas::resized, &window, [&order, canvas, name] {
            if (!canvas->size().isEmpty())
                order.append(name);
        });
    };
    note(parts.cells, "cells");
    note(parts.nameCanvas, "names");
    note(parts.headerCanvas, "header");
    const MessageRecorder quiet;
    call(window, "ReCreate");
    EXPECT_EQ(order, (QStringList{"names", "cells", "header"}));
}

} // namespace PaintingTest
