// SPDX-License-Identifier: GPL-3.0-or-later
// A frame around one column of an alignment window: the header numbers residues and not columns, so
// nothing else there tells which one the table means.
#pragma once

#include <CellOverlay.h>

class ColumnFrame final : public TAMBO::CellOverlay
{
public:
    ColumnFrame(TAMBO::AlignmentWindow &window, unsigned long column);

    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;

private:
    unsigned long m_Column;
};
