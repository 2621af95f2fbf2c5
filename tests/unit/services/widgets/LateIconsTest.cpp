// SPDX-License-Identifier: GPL-3.0-or-later
#include "LateIcons.h"

#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleFactory>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace LateIconsTest {

using TAMBO::services::LateIcons;

constexpr QDialogButtonBox::StandardButtons kAll =
    QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply;

// Of a desktop whose buttons have icons, or have none.
class CountingStyle : public QProxyStyle
{
public:
    explicit CountingStyle(bool haveIcons) : QProxyStyle("fusion"), m_HaveIcons(haveIcons) { }

    QIcon standardIcon(StandardPixmap icon, const QStyleOption *option,
                       const QWidget *widget) const override
    {
        ++m_Asked;
        return QProxyStyle::standardIcon(icon, option, widget);
    }
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? int(m_HaveIcons)
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }

    mutable int m_Asked = 0;

private:
    bool m_HaveIcons;
};

class Dialog : public QDialog
{
public:
    Dialog() { (new QVBoxLayout(this))->addWidget(&m_Box); }

    QDialogButtonBox m_Box;
};

class LateIconsTest : public ::testing::Test
{
protected:
    LateIconsTest() : m_Before(QApplication::style()->objectName()) { useStyle(true); }
    ~LateIconsTest() override { QApplication::setStyle(QStyleFactory::create(m_Before)); }

    void useStyle(bool haveIcons)
    {
        m_Style = new CountingStyle(haveIcons);
        QApplication::setStyle(m_Style);
    }

    QString m_Before;
    CountingStyle *m_Style = nullptr;
};

TEST_F(LateIconsTest, ADialogThatNobodySeesLooksForNoIcon)
{
    Dialog dialog;
    (new LateIcons(dialog.m_Box))->add(kAll);
    EXPECT_EQ(m_Style->m_Asked, 0);
    dialog.show();
    EXPECT_EQ(m_Style->m_Asked, 3);
    dialog.hide();
    dialog.show();
    EXPECT_EQ(m_Style->m_Asked, 3) << "once is enough";
}

TEST_F(LateIconsTest, TheDialogLooksAsIfTheBoxHadMadeTheButtons)
{
    Dialog late;
    (new LateIcons(late.m_Box))->add(kAll);
    Dialog usual;
    usual.m_Box.setStandardButtons(kAll);
    EXPECT_EQ(late.sizeHint(), usual.sizeHint());
    EXPECT_EQ(late.grab().toImage(), usual.grab().toImage());
    EXPECT_EQ(late.sizeHint(), usual.sizeHint());
}

TEST_F(LateIconsTest, WhereButtonsHaveNoIconsNoneIsLookedFor)
{
    useStyle(false);
    Dialog late;
    (new LateIcons(late.m_Box))->add(kAll);
    Dialog usual;
    usual.m_Box.setStandardButtons(kAll);
    EXPECT_EQ(late.sizeHint(), usual.sizeHint());
    EXPECT_EQ(late.grab().toImage(), usual.grab().toImage());
    EXPECT_EQ(m_Style->m_Asked, 0);
}

TEST_F(LateIconsTest, OnlyTheButtonsThatAreAskedForAreThere)
{
    Dialog dialog;
    (new LateIcons(dialog.m_Box))->add(QDialogButtonBox::Ok | QDialogButtonBox::Apply);
    EXPECT_NE(dialog.m_Box.button(QDialogButtonBox::Ok), nullptr);
    EXPECT_EQ(dialog.m_Box.button(QDialogButtonBox::Cancel), nullptr);
    EXPECT_NE(dialog.m_Box.button(QDialogButtonBox::Apply), nullptr);
}

TEST_F(LateIconsTest, ButtonsFollowALaterStyleOfTheApplication)
{
    Dialog dialog;
    (new LateIcons(dialog.m_Box))->add(kAll);
    useStyle(false);
    for (const QAbstractButton *button : dialog.m_Box.buttons())
        EXPECT_EQ(button->style(), QApplication::style());
}

} // namespace LateIconsTest
