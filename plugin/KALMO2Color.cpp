// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that set the display colour of residues.
#include "DataPoint.h"
#include "KALMO2.h"
#include "Logger.h"
#include "ResidueLetters.h"
#include "Space.h"

namespace {

void colorByLetter(const TAMBO::Alignment &alignment, const QColor *colors)
{
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        for (unsigned long col = 0; col < alignment.width(); ++col) {
            if (TAMBO::Compound *residue = alignment.getItem(row, col))
                residue->SetColor(Color(colors[ZEP::residueLetterIndex(residue->TypeCode())]));
        }
    }
}

} // namespace

namespace ZEP {

// Alone among the colouring commands it publishes first and repaints afterwards.
void KALMO2::setColor(QColor *colors)
{
    if (m_Data != nullptr && colors != nullptr) {
        const DataPoint<TAMBO::Space> guard(this, TAMBO::Space::instance());
        if (guard.m_good)
            colorByLetter(*m_Data, colors);
    }
    m_Canvas->setAllChanged();
    m_Canvas->update();
}

void KALMO2::setColor()
{
    if (m_Data != nullptr)
        Logger::Write("Color Selected is not available yet.");
}

void KALMO2::colorConserved()
{
    if (m_Data != nullptr)
        Logger::Write("Color Conserved is not available yet.");
}

void KALMO2::colorConservedN()
{
    if (m_Data != nullptr)
        Logger::Write("Color ConservedN is not available yet.");
}

void KALMO2::colorDistance()
{
    if (m_Data != nullptr)
        Logger::Write("Color By Distance is not available yet.");
}

} // namespace ZEP
