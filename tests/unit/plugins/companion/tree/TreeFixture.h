// SPDX-License-Identifier: GPL-3.0-or-later
// A real editor window with a tree of its rows.
#pragma once

#include "Companion.h"
#include "Newick.h"
#include "TreeView.h"
#include "window/AlignmentWindowFixture.h"

#include "WorkbenchValues.h"

#include <QDeadlineTimer>
#include <QMessageBox>
#include <QTemporaryDir>

#include <memory>

class TreeFixture : public AlignmentWindowFixture
{
protected:
    // Two families, whose rows take turns.
    static inline const Texts kRows = {"ACDEFGHIKL", "WYTSRQPNML", "ACDEFGHIKV",
                                       "WYTSRQPNMI", "ACDEFGHTTV", "WYTSRQPAAA"};

    TreeFixture() { WorkbenchValues::Remove("companion", "cell-width"); }
    // Before the window.
    ~TreeFixture() override { m_Companion.reset(); }

    void look(TAMBO::Alignment &shown, const QSize &size = {900, 500})
    {
        m_Companion.reset();
        m_Rows = &shown;
        m_Window = &show(shown, size);
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<companion::Companion>(*m_Served);
    }
    void lookAtTree(const Texts &rows, const Texts &names = {})
    {
        look(alignment(rows, "family", names));
        dock().toggle();
        settle();
    }
    companion::TreeDock &dock() { return m_Companion->tree(); }
    companion::TreeView &view() { return dock().view(); }
    const companion::ShownTree &shown() { return dock().shown(); }

    // All that has happened has been told, and nothing is being computed any more.
    void settle()
    {
        const QDeadlineTimer late(std::chrono::minutes(2));
        do
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        while ((dock().isComputing() || dock().isLooking()) && !late.hasExpired());
        QCoreApplication::processEvents();
        EXPECT_FALSE(late.hasExpired());
    }
    template <typename Change> void edit(Change change)
    {
        {
            const DataPoint<TAMBO::Alignment> guard(nullptr, m_Rows);
            ASSERT_TRUE(guard.m_good);
            change(*m_Rows);
        }
        settle();
    }
    static std::string text(const QString &text) { return text.toStdString(); }
    std::string state() { return text(dock().stateText()); }
    Texts names()
    {
        Texts found;
        for (unsigned long row = 0; row < m_Rows->height(); ++row)
            found.push_back(m_Rows->GetSeqName(row));
        return found;
    }
    // The one that is open is closed.
    std::string takeComplaint()
    {
        auto *const box = m_Window->findChild<QMessageBox *>();
        if (box == nullptr)
            return {};
        const std::string said = text(box->text());
        delete box;
        return said;
    }
    std::vector<unsigned long> selectedRows()
    {
        std::vector<unsigned long> rows;
        for (unsigned long row = 0; row < m_Rows->height(); ++row)
            if (m_Rows->isRowSelected(row))
                rows.push_back(row);
        return rows;
    }
    // The clade that has these rows and no others.
    std::size_t clade(const std::vector<unsigned long> &rows)
    {
        for (std::size_t i = 0; i < shown().nodes().size(); ++i) {
            const companion::ShownNode &each = shown().nodes()[i];
            std::vector<unsigned long> found(shown().rows().begin() +
                                                 std::ptrdiff_t(each.firstLeaf),
                                             shown().rows().begin() + std::ptrdiff_t(each.leafEnd));
            std::ranges::sort(found);
            if (found == rows)
                return i;
        }
        ADD_FAILURE() << "no such clade";
        return 0;
    }
    QPoint placeOf(std::size_t shownNode)
    {
        const companion::TreeSight sight = view().sight();
        const companion::ShownNode &each = shown().nodes()[shownNode];
        return {int(sight.x(each.depth)), int(sight.y(each.line))};
    }
    void clickOn(std::size_t shownNode, Qt::KeyboardModifiers keys = {})
    {
        mouse(view().viewport(), QEvent::MouseButtonPress, Qt::LeftButton, placeOf(shownNode),
              Qt::LeftButton, keys);
        mouse(view().viewport(), QEvent::MouseButtonRelease, Qt::LeftButton, placeOf(shownNode),
              Qt::NoButton, keys);
        settle();
    }
    void doubleClickOn(std::size_t shownNode)
    {
        mouse(view().viewport(), QEvent::MouseButtonDblClick, Qt::LeftButton, placeOf(shownNode),
              Qt::LeftButton);
        settle();
    }
    void key(int key, Qt::KeyboardModifiers keys = {})
    {
        QKeyEvent event(QEvent::KeyPress, key, keys);
        QCoreApplication::sendEvent(&view(), &event);
        settle();
    }
    // Where the middle of a row is, seen from the tree.
    int heightOfRow(unsigned long row)
    {
        const QRect cell = m_Served->cellRect({row, 0});
        const QWidget *const cells = m_Served->areaWidget(TAMBO::WindowArea::Cells);
        return view().viewport()->mapFromGlobal(cells->mapToGlobal(cell.center())).y();
    }

    TAMBO::Alignment *m_Rows = nullptr;
    ZEP::KALMO2 *m_Window = nullptr;
    TAMBO::AlignmentWindow *m_Served = nullptr;
    std::unique_ptr<companion::Companion> m_Companion;
};
