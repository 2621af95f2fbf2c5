// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of BaseDialog.
#include "BaseDialog.h"
#include "WidgetFactory.h"

#include "support/ScopedSettings.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace BaseDialogContractTest {

class RecordingDialog : public BaseDialog
{
public:
    explicit RecordingDialog(int buttons, QWidget *parent = nullptr, bool vertical = false,
                             bool modal = false, const QString &caption = "Color Residues")
        : BaseDialog(caption, QSize(200, 150), buttons, 3, "No help", vertical, modal, parent,
                     nullptr)
    {
        m_List = WidgetFactory::CreateListbox(this);
        GetTopLevelLayout()->addWidget(m_List, 3);
        m_Controls = StartWidget();
    }

    void Apply() override { m_Calls.emplace_back("Apply"); }
    void Cancel() override
    {
        m_Calls.emplace_back("Cancel");
        BaseDialog::Cancel();
    }

    [[nodiscard]] QPushButton *button(QDialogButtonBox::StandardButton which) const
    {
        return findChild<QDialogButtonBox *>()->button(which);
    }

    std::vector<std::string> m_Calls;
    QListWidget *m_List = nullptr;
    QWidget *m_Controls = nullptr;
};

TEST(BaseDialogContract, ShowsTheButtonsOfTheSum)
{
    const RecordingDialog all(7);
    EXPECT_NE(all.button(QDialogButtonBox::Ok), nullptr);
    EXPECT_NE(all.button(QDialogButtonBox::Cancel), nullptr);
    EXPECT_NE(all.button(QDialogButtonBox::Apply), nullptr);
    const RecordingDialog two(3);
    EXPECT_NE(two.button(QDialogButtonBox::Ok), nullptr);
    EXPECT_NE(two.button(QDialogButtonBox::Cancel), nullptr);
    EXPECT_EQ(two.button(QDialogButtonBox::Apply), nullptr);
    const RecordingDialog none(0);
    EXPECT_EQ(none.button(QDialogButtonBox::Ok), nullptr);
}

TEST(BaseDialogContract, TakesCaptionHelpTextParentAndSpacing)
{
    QWidget parent;
    const RecordingDialog dialog(7, &parent);
    EXPECT_EQ(dialog.windowTitle(), "Color Residues");
    EXPECT_EQ(dialog.whatsThis(), "No help");
    EXPECT_EQ(dialog.parent(), &parent);
    EXPECT_TRUE(dialog.objectName().isEmpty());
    EXPECT_EQ(dialog.GetTopLevelLayout()->spacing(), 3);
    EXPECT_GE(dialog.width(), 200);
    EXPECT_GE(dialog.height(), 150);
}

TEST(BaseDialogContract, IsModalOnlyWhenAskedTo)
{
    QWidget parent;
    EXPECT_FALSE(RecordingDialog(7, &parent, false, false).isModal());
    EXPECT_TRUE(RecordingDialog(3, &parent, false, true).isModal());
}

TEST(BaseDialogContract, ControlsBecomeChildrenOfTheDialogWhichIsTheStartWidget)
{
    const RecordingDialog dialog(7);
    EXPECT_EQ(dialog.m_Controls, &dialog);
    EXPECT_EQ(dialog.m_List->parentWidget(), dialog.m_Controls);
    EXPECT_EQ(dialog.GetTopLevelLayout()->indexOf(dialog.m_List), 0);
    EXPECT_EQ(dialog.GetTopLevelLayout()->stretch(0), 3);
}

TEST(BaseDialogContract, TheButtonsStandBehindTheControls)
{
    RecordingDialog below(7, nullptr, false, false, "below");
    below.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&below));
    EXPECT_GT(below.button(QDialogButtonBox::Ok)->mapTo(&below, QPoint()).y(),
              below.m_List->geometry().bottom());
    RecordingDialog beside(7, nullptr, true, false, "beside");
    beside.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&beside));
    EXPECT_GT(beside.button(QDialogButtonBox::Ok)->mapTo(&beside, QPoint()).x(),
              beside.m_List->geometry().right());
    EXPECT_TRUE(beside.m_List->hasFocus()) << "the tabulator starts at the controls";
}

TEST(BaseDialogContract, OkAppliesAndAccepts)
{
    RecordingDialog dialog(7);
    dialog.show();
    dialog.button(QDialogButtonBox::Ok)->click();
    EXPECT_THAT(dialog.m_Calls, ElementsAre("Apply"));
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
}

TEST(BaseDialogContract, ApplyAppliesAndStays)
{
    RecordingDialog dialog(7);
    dialog.show();
    dialog.button(QDialogButtonBox::Apply)->click();
    dialog.button(QDialogButtonBox::Apply)->click();
    EXPECT_THAT(dialog.m_Calls, ElementsAre("Apply", "Apply"));
    EXPECT_TRUE(dialog.isVisible());
}

TEST(BaseDialogContract, CancelClosesWithoutApplying)
{
    RecordingDialog dialog(7);
    dialog.show();
    dialog.button(QDialogButtonBox::Cancel)->click();
    EXPECT_THAT(dialog.m_Calls, ElementsAre("Cancel"));
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_FALSE(dialog.isVisible());
}

TEST(BaseDialogContract, EscapeAndTheFrameAreCancel)
{
    RecordingDialog dialog(7);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_THAT(dialog.m_Calls, ElementsAre("Cancel"));
    dialog.show();
    dialog.close();
    EXPECT_THAT(dialog.m_Calls, ElementsAre("Cancel", "Cancel"));
    EXPECT_FALSE(dialog.isVisible());
}

TEST(BaseDialogContract, EnterIsOk)
{
    RecordingDialog dialog(3);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_THAT(dialog.m_Calls, ElementsAre("Apply"));
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST(BaseDialogContract, ToolTipsFollowTheSetting)
{
    {
        const ScopedSettings settings("");
        const RecordingDialog dialog(7);
        EXPECT_TRUE(dialog.ShowToolTips());
        EXPECT_FALSE(dialog.button(QDialogButtonBox::Apply)->toolTip().isEmpty());
    }
    {
        const ScopedSettings settings("[General]\nShowToolTips = false\n");
        const RecordingDialog dialog(7);
        EXPECT_FALSE(dialog.ShowToolTips());
        EXPECT_TRUE(dialog.button(QDialogButtonBox::Apply)->toolTip().isEmpty());
    }
    const ScopedSettings settings("[General]\nShowToolTips = nonsense\n");
    EXPECT_TRUE(RecordingDialog(7).ShowToolTips());
}

TEST(BaseDialogContract, SizeComesBackNextTime)
{
    {
        RecordingDialog dialog(3, nullptr, false, false, "Sized");
        dialog.show();
        dialog.resize(432, 321);
        dialog.button(QDialogButtonBox::Ok)->click();
    }
    RecordingDialog again(3, nullptr, false, false, "Sized");
    again.show();
    EXPECT_EQ(again.size(), QSize(432, 321));
}

TEST(BaseDialogContract, AForgottenStartIsMadeUpForWhenTheDialogShows)
{
    BaseDialog dialog("Bare", QSize(100, 50), 7, 3, QString(), false, false, nullptr, "bare");
    EXPECT_EQ(dialog.findChild<QDialogButtonBox *>(), nullptr);
    dialog.show();
    EXPECT_NE(dialog.findChild<QDialogButtonBox *>(), nullptr);
    EXPECT_EQ(dialog.StartWidget(), &dialog);
    EXPECT_EQ(dialog.findChildren<QDialogButtonBox *>().size(), 1);
    EXPECT_EQ(dialog.objectName(), "bare");
}

} // namespace BaseDialogContractTest
