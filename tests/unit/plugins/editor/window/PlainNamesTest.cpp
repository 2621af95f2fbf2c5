// SPDX-License-Identifier: GPL-3.0-or-later
// Names with anything in them are shown as they are.
#include "WindowFixture.h"
#include "support/ShownText.h"

#include <QHelpEvent>
#include <QMessageBox>
#include <QToolTip>

namespace PlainNamesTest {

constexpr const char *kMarkup = "a<b>x&lt;  <img src='y'>";

class PlainNames : public WindowFixture
{
protected:
    ~PlainNames() override { QToolTip::hideText(); }

    static QString tipAt(QCanvasView &view, const QPoint &at)
    {
        // The offscreen platform has something to say about raising the tip.
        const MessageRecorder recorder;
        QHelpEvent event(QEvent::ToolTip, at, view.viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(view.viewport(), &event);
        return shownText(QToolTip::text());
    }
    TAMBO::Alignment &marked() { return alignment({"AC", "AD"}, kMarkup, {"first", kMarkup}); }
};

TEST_F(PlainNames, TheToolTipOfACellHoldsTheNameAsItIs)
{
    const WindowParts parts(show(marked(), {700, 400}));
    const int second = parts.cells->height() / 3 + parts.cells->height() / 6;
    EXPECT_EQ(tipAt(*parts.view, {3, second}),
              QStringLiteral("%1\ncolumn 1\nALA (A) 1").arg(kMarkup));
}

TEST_F(PlainNames, TheToolTipOfANameIsTheNameAsItIs)
{
    const WindowParts parts(show(alignment({"AC"}, "ali", {kMarkup}), {700, 400}));
    const QPoint name(parts.nameCanvas->width() * 7 / 8 - 8, parts.nameCanvas->height() / 4);
    EXPECT_EQ(tipAt(*parts.names, name), kMarkup);
}

TEST_F(PlainNames, TheCornerAndItsToolTipHoldTheNameAsItIs)
{
    const WindowParts parts(open(marked()));
    EXPECT_EQ(shownText(parts.corner->toolTip()), kMarkup);
    EXPECT_EQ(parts.corner->text(), kMarkup);
    EXPECT_EQ(parts.corner->textFormat(), Qt::PlainText);
}

TEST_F(PlainNames, TheIdentityBoxHoldsTheNamesAsTheyAre)
{
    const WindowParts parts(show(marked(), {700, 400}));
    DialogDriver dialogs;
    dialogs.expect([](QDialog &dialog) {
        const auto &box = dynamic_cast<QMessageBox &>(dialog);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_TRUE(box.text().startsWith(
            QStringLiteral("Percentage identity between 'first' and '%1':\n").arg(kMarkup)))
            << box.text().toStdString();
        dialog.accept();
    });
    const QPoint name(parts.nameCanvas->width() * 7 / 8 - 8, parts.nameCanvas->height() / 2);
    QTest::mouseClick(parts.names->viewport(), Qt::RightButton, {}, name);
}

TEST_F(PlainNames, ATextWithoutMarkupStaysWhatItIs)
{
    const WindowParts parts(open(alignment({"AC"}, "x > 1 & y")));
    EXPECT_EQ(parts.corner->toolTip(), "x > 1 & y");
}

} // namespace PlainNamesTest
