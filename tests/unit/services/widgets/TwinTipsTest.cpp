// SPDX-License-Identifier: GPL-3.0-or-later
#include "TwinTips.h"

#include "Alignment.h"
#include "DataMaker.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "WidgetFactory.h"

#include <QListWidget>

#include <gtest/gtest.h>

namespace TwinTipsTest {

class TwinTipsTest : public ::testing::Test
{
protected:
    void TearDown() override { TAMBO::ObjectSpace::get().reset(); }

    static void alignment(const std::string &name, const std::string &letters)
    {
        auto &space = TAMBO::ObjectSpace::get();
        // A sequence of the alignment's name is no row of a list of alignments.
        space.insertObject(0, std::make_unique<TAMBO::Peptide>(name, letters));
        TAMBO::DataMaker::makeAlignment(name, {space.object(0)});
    }
    static std::unique_ptr<QListWidget> list(const QStringList &names)
    {
        std::unique_ptr<QListWidget> list(WidgetFactory::CreateListbox(nullptr));
        list->addItems(names);
        list->setToolTip("Choose.");
        list->show();
        return list;
    }
};

TEST_F(TwinTipsTest, RowsThatReadAlikeHaveToolTipsThatDoNot)
{
    alignment("obp", "ACD");
    alignment("obp", "ACDEF");
    alignment("other", "A");
    const auto box = list({"obp", "obp", "other"});
    EXPECT_EQ(box->item(0)->toolTip(), "obp (1 × 3)");
    EXPECT_EQ(box->item(1)->toolTip(), "obp (1 × 5)");
    EXPECT_EQ(box->item(2)->toolTip(), "") << "the list's own";
    EXPECT_EQ(box->item(0)->text(), "obp");
}

TEST_F(TwinTipsTest, WhatCannotBeToldIsLeftAlone)
{
    alignment("obp", "ACD");
    const auto box = list({"obp", "obp", "obp", "x", "x"});
    for (int row = 0; row < box->count(); ++row)
        EXPECT_EQ(box->item(row)->toolTip(), "") << row;
}

} // namespace TwinTipsTest
