// SPDX-License-Identifier: GPL-3.0-or-later
// Several shown windows on one alignment, compared by what the screen holds.
#pragma once

#include "Hands.h"
#include "WindowFixture.h"

#include <QScreen>

class SeveralWindows : public WindowFixture
{
protected:
    using Range = TAMBO::Alignment::Range;

    inline static const Texts kRows = {"AC--DEFGHIKLMNP", "ACDEFGHIKLMN---", "WYACDEFGHIKLWYA"};

    // What the screen holds, without any painting that nobody asked for.
    static QImage screenOf(ZEP::KALMO2 &window)
    {
        QCoreApplication::processEvents();
        const WindowParts parts(window);
        const QImage image = window.screen()->grabWindow(window.winId()).toImage();
        const QWidget *central = window.centralWidget();
        return image.copy(QRect(central->mapTo(&window, QPoint()), central->size()));
    }
    ZEP::KALMO2 &another(TAMBO::Alignment &shown) { return show(shown, {700, 400}); }
    ZEP::KALMO2 &anotherEmpty()
    {
        ZEP::KALMO2 &window = open();
        window.resize(700, 400);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        return window;
    }
    static QPoint place(const WindowParts &parts)
    {
        return {parts.view->contentsX(), parts.view->contentsY()};
    }
    static Range rangeOf(const ZEP::KALMO2 &window)
    {
        const WindowParts parts(window);
        return {parts.header->begin(), parts.header->end()};
    }
};
