// SPDX-License-Identifier: GPL-3.0-or-later
// A line above the cells of an alignment window, over each column below the threshold.
#pragma once

#include <CellOverlay.h>

class StatisticsModel;

class OccupancyMarks final : public TAMBO::CellOverlay
{
public:
    // The model is that of the window's alignment, and has to outlive the marks.
    OccupancyMarks(TAMBO::AlignmentWindow &window, const StatisticsModel &model);

    // After the model has changed.
    void refresh() const;

    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;

private:
    const StatisticsModel &m_Model;
};
