// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureExport.h"

#include "MadeStructure.h"
#include "PictureDialog.h"
#include "StructureWindow.h"
#include "support/ScopedSettings.h"
#include "unit/model/ModelFixture.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QSpinBox>
#include <QTemporaryDir>

namespace PictureExportTest {

using namespace structures;

class PictureExportOfAWindow : public ModelFixture
{
protected:
    PictureExportOfAWindow() { m_Window->resize(700, 500); }
    ~PictureExportOfAWindow() override { m_Window->close(false); }

    [[nodiscard]] QString in(const char *name) const { return m_Folder.filePath(name); }

    ScopedSettings m_Settings{""};
    QTemporaryDir m_Folder;
    TAMBO::Compound *m_Structure = MadeStructure::make("1abc");
    StructureWindow *m_Window = [] {
        StructureWindow::open();
        return StructureWindow::opened().back();
    }();
    PictureExport m_Pictures{*m_Window, m_Window->scene(), m_Window->view(),
                             [this] { return m_Window->scene().palette(Coloring::Chain); }};
};

TEST_F(PictureExportOfAWindow, HasTheSizeThatWasAskedForAndItsGround)
{
    ASSERT_EQ(m_Pictures.write(in("a.png"), {320, 200}, false), "");
    const QImage picture(in("a.png"));
    EXPECT_EQ(picture.size(), QSize(320, 200));
    EXPECT_EQ(picture.pixel(0, 0), 0xffffffffU);
}

TEST_F(PictureExportOfAWindow, ATransparentGroundHasNoColor)
{
    ASSERT_EQ(m_Pictures.write(in("a.png"), {320, 200}, true), "");
    const QImage picture(in("a.png"));
    EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);
    bool hasShape = false;
    for (int x = 0; x < picture.width(); ++x)
        hasShape = hasShape || qAlpha(picture.pixel(x, picture.height() / 2)) == 255;
    EXPECT_TRUE(hasShape);
}

TEST_F(PictureExportOfAWindow, OneThatIsMadeInStripsIsWhole)
{
    // Beyond what the renderer keeps samples of.
    ASSERT_EQ(m_Pictures.write(in("a.png"), {3000, 2200}, false), "");
    const QImage large = QImage(in("a.png"));
    ASSERT_EQ(large.size(), QSize(3000, 2200));
    ASSERT_EQ(m_Pictures.write(in("b.png"), {300, 220}, false), "");
    const QImage small(in("b.png"));
    const QImage shrunk =
        large.scaled(small.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    int different = 0;
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x)
            different += std::abs(qGray(small.pixel(x, y)) - qGray(shrunk.pixel(x, y))) > 96;
    EXPECT_LT(different, small.width() * small.height() / 50);
}

TEST_F(PictureExportOfAWindow, AFailureHasItsCauseAndLeavesNothing)
{
    EXPECT_EQ(m_Pictures.write(in("none/a.png"), {32, 20}, false), "No such file or directory");
    EXPECT_FALSE(QFileInfo::exists(in("none")));
    EXPECT_EQ(m_Pictures.write(in("a.doc"), {32, 20}, false),
              "a picture's name ends in .png, .jpg or another format of pictures");
    EXPECT_FALSE(QFileInfo::exists(in("a.doc")));
}

TEST_F(PictureExportOfAWindow, TheDialogKeepsTheShape)
{
    const PictureDialog dialog({600, 400}, m_Window);
    EXPECT_EQ(dialog.size(), QSize(1200, 800));
    EXPECT_FALSE(dialog.isTransparent());
    auto *const width = dialog.findChild<QSpinBox *>("PictureWidth");
    auto *const height = dialog.findChild<QSpinBox *>("PictureHeight");
    width->setValue(3000);
    EXPECT_EQ(dialog.size(), QSize(3000, 2000));
    height->setValue(100);
    EXPECT_EQ(dialog.size(), QSize(150, 100));
    width->setValue(PictureDialog::kMost);
    EXPECT_EQ(dialog.size(), QSize(20000, 13333));
    dialog.findChild<QCheckBox *>()->setChecked(true);
    EXPECT_TRUE(dialog.isTransparent());
}

} // namespace PictureExportTest
