// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColorPicking.h"

#include "support/ScopedSettings.h"

#include <QApplication>
#include <QColorDialog>
#include <QTimer>

#include <gtest/gtest.h>

namespace ColorPickingTest {

using namespace TAMBO::services;

class ColorPicking : public testing::Test
{
protected:
    ColorPicking()
    {
        for (int i = 0; i < QColorDialog::customCount(); ++i)
            m_Before.push_back(QColorDialog::customColor(i));
    }
    ~ColorPicking() override
    {
        for (int i = 0; i < QColorDialog::customCount(); ++i)
            QColorDialog::setCustomColor(i, m_Before[std::size_t(i)]);
    }
    static std::string kept(const char *key)
    {
        return ConfigStore::instance().value("General", key).value_or("none");
    }
    // Of a dialog that is closed with the color, or cancelled.
    static void close(const QColor &color)
    {
        QColorDialog dialog(color);
        color.isValid() ? dialog.accept() : dialog.reject();
        keepColorsOf(dialog);
    }

    ScopedSettings m_Settings{""};
    std::vector<QColor> m_Before;
};

TEST_F(ColorPicking, ADialogBeginsWithTheColorThatWasPickedLastInAnother)
{
    const auto begin = [](const QColor &otherwise) {
        QColor shown;
        QTimer::singleShot(0, [&shown] {
            auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            shown = dialog->currentColor();
            dialog->reject();
        });
        EXPECT_FALSE(pickColor(otherwise, nullptr, "Color").isValid());
        return shown;
    };
    EXPECT_EQ(begin(Qt::green), QColor(Qt::green));
    close(QColor(0, 0, 255, 40));
    EXPECT_EQ(begin(Qt::green), QColor(Qt::blue)) << "not how transparent";
    close(QColor());
    EXPECT_EQ(begin(Qt::green), QColor(Qt::blue));
}

TEST_F(ColorPicking, TheUsersOwnColorsComeBackInAnotherRun)
{
    QColorDialog::setCustomColor(3, QColor(1, 2, 3));
    QColorDialog::setCustomColor(15, QColor(4, 5, 6));
    close(QColor());
    EXPECT_FALSE(ConfigStore::instance().hasUnsavedChanges());
    for (int i = 0; i < QColorDialog::customCount(); ++i)
        QColorDialog::setCustomColor(i, Qt::white);
    restoreOwnColors();
    EXPECT_EQ(QColorDialog::customColor(3), QColor(1, 2, 3));
    EXPECT_EQ(QColorDialog::customColor(15), QColor(4, 5, 6));
}

TEST_F(ColorPicking, SettingsThatAreNoColorsAreLeftOut)
{
    QColorDialog::setCustomColor(0, Qt::red);
    ConfigStore::instance().setValue("General", "OwnColors", "nonsense #00ff00");
    ConfigStore::instance().setValue("General", "LastColor", "nonsense");
    restoreOwnColors();
    EXPECT_EQ(QColorDialog::customColor(0), QColor(Qt::red));
    EXPECT_EQ(QColorDialog::customColor(1), QColor(Qt::green));
}

} // namespace ColorPickingTest
