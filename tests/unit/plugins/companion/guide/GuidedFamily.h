// SPDX-License-Identifier: GPL-3.0-or-later
// An editor window on a small family with structures, the last row of which has none.
#pragma once

#include "Companion.h"
#include "window/AlignmentWindowFixture.h"

#include "DataMaker.h"
#include "Structure.h"
#include "StructureFits.h"
#include "WorkbenchValues.h"

#include <QKeyEvent>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

class GuidedFamily : public AlignmentWindowFixture
{
protected:
    static constexpr std::size_t kResidues = 24;
    static constexpr unsigned long kGap = 18;

    GuidedFamily() { forget(); }
    // Before the window.
    ~GuidedFamily() override
    {
        m_Companion.reset();
        forget();
    }
    static void forget()
    {
        WorkbenchValues::Remove("companion", "gap-guide");
        WorkbenchValues::Remove("companion", "cell-width");
    }
    // Some Angstrom apart, with a helix from 5 to 12.
    static TAMBO::Peptide &member(int number)
    {
        TAMBO::StructureRecord record;
        record.name = "m" + std::to_string(number);
        TAMBO::ChainRecord &chain = record.chains.emplace_back();
        chain.name = "A";
        for (std::size_t i = 0; i < kResidues; ++i) {
            TAMBO::ResidueRecord &residue = chain.residues.emplace_back();
            residue.typeName = "ALA";
            residue.letter = 'A';
            residue.number = TAMBO::SequenceNumber(int(i) + 1);
            const double turn = 1.75 * double(i) + 0.1 * number;
            residue.atoms.push_back(
                {"CA", "C",
                 TAMBO::Vertex(float(2.3 * std::cos(turn)), float(2.3 * std::sin(turn)),
                               float(1.5 * double(i) + 0.4 * number * number))});
        }
        record.elements.push_back(
            {"H1", 'H', "A", TAMBO::SequenceNumber(5), TAMBO::SequenceNumber(12)});
        return *TAMBO::ObjectFactory::adopt(std::move(record))->chain(0);
    }
    // Each row has gaps in the columns 18 and 19, the last columns are gaps, too.
    TAMBO::Alignment &family(int count = 4)
    {
        std::vector<TAMBO::Compound *> rows;
        {
            const DataPointBase guard(nullptr, Publisher::Add);
            for (int number = 0; number < count; ++number)
                rows.push_back(&member(number));
            rows.push_back(TAMBO::DataMaker::makeSequence("none", std::string(kResidues, 'C')));
            m_Shown = TAMBO::DataMaker::makeAlignment("family", rows);
            m_Shown->insertGapCol(kGap, 2);
            m_Shown->insertGapCol(m_Shown->width(), 2);
        }
        history.clear();
        return *m_Shown;
    }
    void look(TAMBO::Alignment &shown)
    {
        m_Window = &show(shown, {900, 500});
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<companion::Companion>(*m_Served);
        QCoreApplication::processEvents();
    }
    QWidget *cells() { return m_Served->areaWidget(TAMBO::WindowArea::Cells); }
    QPoint middle(unsigned long row, unsigned long col)
    {
        return m_Served->cellRect({row, col}).center();
    }
    companion::GapGuide &guide() { return m_Companion->guide(); }
    void settle()
    {
        do
            QCoreApplication::processEvents();
        while (!guide().isSettled());
        QCoreApplication::processEvents();
    }
    // Presses, and moves the pointer there.
    void hold(unsigned long row, unsigned long from, unsigned long to,
              Qt::MouseButton button = Qt::LeftButton)
    {
        press(cells(), button, middle(row, from));
        move(cells(), button, middle(row, to));
        settle();
    }
    void pressKey(Qt::Key key)
    {
        QWidget *const focus = cells()->parentWidget();
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(focus, &event);
    }
    QStringList told()
    {
        QStringList texts;
        for (const companion::GuideLine &line : guide().lines())
            texts << line.text;
        return texts;
    }
    Texts texts() const
    {
        Texts rows;
        for (unsigned long row = 0; row < m_Shown->height(); ++row)
            rows.push_back(m_Shown->GetSequence(row, false));
        return rows;
    }

    const MessageRecorder m_Quiet;
    TAMBO::Alignment *m_Shown = nullptr;
    ZEP::KALMO2 *m_Window = nullptr;
    TAMBO::AlignmentWindow *m_Served = nullptr;
    std::unique_ptr<companion::Companion> m_Companion;
};
