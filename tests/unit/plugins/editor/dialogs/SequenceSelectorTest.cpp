// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceSelector.h"

#include "MakingOrder.h"
#include "WindowFixture.h"

#include "Structure.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>

namespace SequenceSelectorTest {

class SequenceSelector : public WindowFixture
{
protected:
    using Compounds = std::vector<TAMBO::Compound *>;

    Compounds candidates(const Texts &names)
    {
        Compounds made;
        for (const std::string &name : names)
            made.push_back(&peptide(name, "ACD"));
        return made;
    }
    static QListWidget &listOf(const ZEP::SequenceSelector &dialog)
    {
        return *dialog.findChild<QListWidget *>();
    }
    static QPushButton *button(const ZEP::SequenceSelector &dialog, const QString &text)
    {
        for (QPushButton *found : dialog.findChildren<QPushButton *>()) {
            if (found->text().remove('&') == text)
                return found;
        }
        return nullptr;
    }
    static QList<int> ticked(const QListWidget &list)
    {
        QList<int> rows;
        for (int row = 0; row < list.count(); ++row) {
            if (list.item(row)->isSelected())
                rows.append(row);
        }
        return rows;
    }
};

TEST_F(SequenceSelector, ListsTheCandidatesInTheirOrder)
{
    const Compounds offered = candidates({"z", "a", "m"});
    Compounds chosen;
    const ZEP::SequenceSelector dialog(offered, chosen, nullptr, "Alignment");
    const QListWidget &list = listOf(dialog);
    ASSERT_EQ(list.count(), 3);
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(list.item(row)->text().toStdString(),
                  offered[static_cast<std::size_t>(row)]->GetFQName());
    EXPECT_EQ(dialog.windowTitle(), "Select Alignment");
    EXPECT_EQ(list.selectionMode(), QAbstractItemView::MultiSelection);
    EXPECT_EQ(list.parentWidget(), &dialog);
    EXPECT_EQ(ticked(list), QList<int>());
}

TEST_F(SequenceSelector, ANameTellsWhereTheObjectStands)
{
    TAMBO::StructureRecord record;
    record.name = "1abc";
    record.chains.push_back({"A", {{"ALA", 'A', TAMBO::SequenceNumber("1"), {}}}});
    const DataPointBase guard(nullptr, Publisher::Add);
    TAMBO::Compound *chain = TAMBO::ObjectFactory::adopt(std::move(record))->Child(0);
    Compounds chosen;
    const Compounds offered{chain};
    const ZEP::SequenceSelector dialog(offered, chosen, nullptr, "x");
    EXPECT_EQ(listOf(dialog).item(0)->text().toStdString(), chain->GetFQName());
    EXPECT_NE(chain->GetFQName(), chain->Name());
}

TEST_F(SequenceSelector, TellsTheBaseOfDialogsWhatItWants)
{
    const ZEP::KALMO2 &parent = open();
    Compounds chosen;
    const Compounds offered = candidates({"a"});
    ZEP::SequenceSelector dialog(offered, chosen, const_cast<ZEP::KALMO2 *>(&parent), "x");
    EXPECT_EQ(dialog.whatsThis(), "No help");
    EXPECT_EQ(dialog.objectName(), "");
    EXPECT_EQ(dialog.parentWidget(), &parent);
    EXPECT_EQ(dialog.GetTopLevelLayout()->spacing(), 3);
    EXPECT_EQ(dialog.findChild<QDialogButtonBox *>()->orientation(), Qt::Horizontal);
    // Nothing but the writing of the choice is its own.
    EXPECT_EQ(ZEP::SequenceSelector::staticMetaObject.methodOffset(),
              ZEP::SequenceSelector::staticMetaObject.methodCount());
}

TEST_F(SequenceSelector, IsMadeInItsFixedOrder)
{
    Compounds chosen;
    const Compounds offered = candidates({"a"});
    MakingOrder order;
    const ZEP::SequenceSelector dialog(offered, chosen, nullptr, "x");
    EXPECT_EQ(order.of(dialog),
              (QStringList{"QListWidget", "QDialogButtonBox", "tool tip of QListWidget"}));
}

TEST_F(SequenceSelector, ChangesNothingOfItsBaseButApply)
{
    expectOnlyApplyIsOverridden<ZEP::SequenceSelector>();
}

TEST_F(SequenceSelector, TheListTakesTheRoomOfTheDialog)
{
    Compounds chosen;
    const Compounds offered = candidates({"a"});
    const ZEP::SequenceSelector dialog(offered, chosen, nullptr, "Alignment");
    EXPECT_EQ(dialog.GetTopLevelLayout()->indexOf(&listOf(dialog)), 0);
    EXPECT_EQ(dialog.GetTopLevelLayout()->stretch(0), 3);
    EXPECT_EQ(dialog.GetTopLevelLayout()->itemAt(0)->alignment(), Qt::Alignment());
}

TEST_F(SequenceSelector, TicksWhatIsChosenAlready)
{
    const Compounds offered = candidates({"a", "b", "c"});
    Compounds chosen{offered[1]};
    const ZEP::SequenceSelector dialog(offered, chosen, nullptr, "x");
    EXPECT_EQ(ticked(listOf(dialog)), QList<int>{1});
}

TEST_F(SequenceSelector, WritesTheTickedOnesInTheOrderOfTheCandidates)
{
    const Compounds offered = candidates({"a", "b", "c"});
    Compounds chosen;
    ZEP::SequenceSelector dialog(offered, chosen, nullptr, "x");
    listOf(dialog).item(2)->setSelected(true);
    listOf(dialog).item(0)->setSelected(true);
    dialog.show();
    button(dialog, "OK")->click();
    EXPECT_EQ(dialog.result(), int(QDialog::Accepted));
    EXPECT_EQ(chosen, (Compounds{offered[0], offered[2]}));
}

TEST_F(SequenceSelector, UntickingRemovesFromTheChoice)
{
    const Compounds offered = candidates({"a", "b", "c"});
    Compounds chosen{offered[0]};
    ZEP::SequenceSelector dialog(offered, chosen, nullptr, "x");
    listOf(dialog).item(0)->setSelected(false);
    listOf(dialog).item(2)->setSelected(true);
    dialog.Ok();
    EXPECT_EQ(chosen, Compounds{offered[2]});
}

TEST_F(SequenceSelector, NothingTickedIsAnEmptyChoice)
{
    const Compounds offered = candidates({"a"});
    Compounds chosen{offered[0]};
    ZEP::SequenceSelector dialog(offered, chosen, nullptr, "x");
    listOf(dialog).clearSelection();
    dialog.Ok();
    EXPECT_TRUE(chosen.empty());
}

TEST_F(SequenceSelector, CancellingLeavesTheChoice)
{
    const Compounds offered = candidates({"a", "b"});
    Compounds chosen{offered[0]};
    ZEP::SequenceSelector dialog(offered, chosen, nullptr, "x");
    listOf(dialog).item(0)->setSelected(false);
    dialog.show();
    button(dialog, "Cancel")->click();
    EXPECT_EQ(dialog.result(), int(QDialog::Rejected));
    EXPECT_EQ(chosen, Compounds{offered[0]});
}

TEST_F(SequenceSelector, EqualNamesAreToldApartByTheirPlace)
{
    const Compounds offered = candidates({"SeqAli", "SeqAli"});
    Compounds chosen;
    ZEP::SequenceSelector dialog(offered, chosen, nullptr, "x");
    listOf(dialog).item(1)->setSelected(true);
    dialog.Ok();
    EXPECT_EQ(chosen, Compounds{offered[1]});
}

TEST_F(SequenceSelector, TheToolTipFollowsTheSettings)
{
    const Compounds offered = candidates({"a"});
    Compounds chosen;
    EXPECT_EQ(listOf(ZEP::SequenceSelector(offered, chosen, nullptr, "x")).toolTip(),
              "Select wanted sequences.");
    setSettings("[General]\nShowToolTips = false\n");
    EXPECT_EQ(listOf(ZEP::SequenceSelector(offered, chosen, nullptr, "x")).toolTip(), "");
}

TEST_F(SequenceSelector, OffersOkAndCancel)
{
    const Compounds offered = candidates({"a"});
    Compounds chosen;
    const ZEP::SequenceSelector dialog(offered, chosen, nullptr, "x");
    EXPECT_NE(button(dialog, "OK"), nullptr);
    EXPECT_NE(button(dialog, "Cancel"), nullptr);
    EXPECT_EQ(button(dialog, "Apply"), nullptr);
    EXPECT_TRUE(dialog.isModal());
}

TEST_F(SequenceSelector, OpensAndClosesManyTimes)
{
    const Compounds offered = candidates({"a", "b"});
    for (int i = 0; i < 100; ++i) {
        Compounds chosen{offered[0]};
        ZEP::SequenceSelector dialog(offered, chosen, nullptr, "x");
        dialog.Ok();
        ASSERT_EQ(chosen, Compounds{offered[0]});
    }
}

} // namespace SequenceSelectorTest
