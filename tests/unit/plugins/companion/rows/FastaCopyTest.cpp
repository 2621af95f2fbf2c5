// SPDX-License-Identifier: GPL-3.0-or-later
#include "FastaCopy.h"
#include "window/CompanionFixture.h"

#include <QClipboard>
#include <QGuiApplication>

namespace FastaCopyTest {

class OnTheClipboard : public AlignmentCompanion
{
protected:
    TAMBO::Alignment &shown(const Texts &rows, const Texts &names = {})
    {
        m_Companion.reset();
        TAMBO::Alignment &made = alignment(rows, "rows", names);
        m_Window = &show(made, {700, 400});
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<Companion>(*m_Served);
        QGuiApplication::clipboard()->setText("before");
        return made;
    }
    static void select(TAMBO::Alignment &alignment, std::initializer_list<unsigned long> rows)
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        for (const unsigned long row : rows)
            alignment.selectInRow(row, {0, alignment.width()});
    }
    [[nodiscard]] static std::string copied()
    {
        return QGuiApplication::clipboard()->text().toStdString();
    }
    [[nodiscard]] std::string told() const
    {
        auto *const bar = m_Window->findChild<QToolBar *>("UnderThePointer");
        return bar->findChild<QLabel *>()->text().toStdString();
    }
    std::string copy(const std::optional<TAMBO::CellBlock> &block = {},
                     std::size_t most = companion::kMostCopied) const
    {
        return companion::copyAsFasta(*m_Served, block, most).toStdString();
    }
};

TEST_F(OnTheClipboard, SelectedRowsComeWithoutColumnsThatWouldBeEmpty)
{
    TAMBO::Alignment &rows = shown({"AC-D", "A-GD", "A--F"}, {"one", "two and more", "three"});
    select(rows, {1, 2});
    m_Companion->copyAsFasta();
    EXPECT_EQ(copied(), ">two and more\nAGD\n>three\nA-F\n");
    EXPECT_EQ(told(), "Copied as FASTA: 2 rows × 3 columns.");
    EXPECT_EQ(history.position(), 0U);
}

TEST_F(OnTheClipboard, ABlockComesWithAllItsColumnsWhateverIsSelected)
{
    select(shown({"AC-D", "A--D", "A--F"}), {2});
    EXPECT_EQ(copy(TAMBO::CellBlock{0, 2, 1, 3}), "Copied as FASTA: 2 rows × 2 columns.");
    EXPECT_EQ(copied(), ">s0\nC-\n>s1\n--\n");
}

TEST_F(OnTheClipboard, TheBlockOfTheCursorIsTaken)
{
    shown({"ACDE", "ACDE"});
    m_Companion->cursor().setBlock({0, 1}, {0, 2});
    m_Companion->copyAsFasta();
    EXPECT_EQ(copied(), ">s0\nCD\n");
}

TEST_F(OnTheClipboard, LongRowsHaveLinesOfSixty)
{
    shown({std::string(125, 'A')});
    copy(TAMBO::CellBlock{0, 1, 0, 125});
    EXPECT_EQ(copied(), ">s0\n" + std::string(60, 'A') + '\n' + std::string(60, 'A') + "\nAAAAA\n");
}

TEST_F(OnTheClipboard, NothingToCopyIsToldAndLeavesTheClipboard)
{
    shown({"AC", "AC"});
    EXPECT_EQ(copy(), "Nothing is copied: there is no block, and no row has selected residues.");
    EXPECT_EQ(copy(TAMBO::CellBlock{2, 4, 0, 2}), "Nothing is copied: there is no block.");
    EXPECT_EQ(copied(), "before");
}

TEST_F(OnTheClipboard, WhatIsTooLargeIsRefusedWithItsSizeAndLeavesTheClipboard)
{
    select(shown({"ACDE", "ACDE"}), {0, 1});
    // The names make it too large, and the cells alone.
    for (const std::size_t most : {std::size_t(15), std::size_t(3)})
        EXPECT_TRUE(copy({}, most).starts_with("Nothing is copied: 2 rows × 4 columns are more "))
            << copy({}, most);
    EXPECT_EQ(copied(), "before");
    EXPECT_EQ(copy({}, 18), "Copied as FASTA: 2 rows × 4 columns.");
}

TEST_F(OnTheClipboard, GivingUpLeavesTheClipboard)
{
    const WithoutMoment atOnce;
    shown(Texts(200, "ACDE"));
    CancelledProgress cancelling(*m_Window);
    EXPECT_EQ(copy(TAMBO::CellBlock{0, 200, 0, 4}), "Nothing is copied: it was cancelled.");
    EXPECT_GE(cancelling.count(), 1);
    EXPECT_EQ(copied(), "before");
}

} // namespace FastaCopyTest
