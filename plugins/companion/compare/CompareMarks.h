// SPDX-License-Identifier: GPL-3.0-or-later
// Marks in an alignment window where it differs from another alignment: lines over columns, and
// dots on residues that stand in another column than most of theirs.
#pragma once

#include "CellOverlay.h"
#include "CompareJob.h"

#include <cstddef>
#include <memory>
#include <optional>

namespace companion {

class CompareMarks : public TAMBO::CellOverlay
{
public:
    // Which of both alignments the window shows.
    enum class Side { Here, There };

    CompareMarks(TAMBO::AlignmentWindow &window, Side side);
    ~CompareMarks() override;

    // Null for none. It is painted while the window shows that alignment as it was compared.
    void setCompared(std::shared_ptr<const Compared> compared, const TAMBO::Alignment *alignment);
    // The stretch that the user has gone to.
    void setPresent(std::optional<std::size_t> stretch);

    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;

private:
    [[nodiscard]] bool isTrueOf(const TAMBO::AlignmentWindow &window) const;
    [[nodiscard]] std::pair<unsigned long, unsigned long> columnsOf(const Stretch &stretch) const;
    void paintHeader(QPainter &painter, const TAMBO::AlignmentWindow &window,
                     const TAMBO::CellBlock &cells) const;
    void paintCells(QPainter &painter, const TAMBO::AlignmentWindow &window,
                    const TAMBO::CellBlock &cells) const;
    void paintRow(QPainter &painter, const TAMBO::AlignmentWindow &window, unsigned long row,
                  const TAMBO::CellBlock &cells) const;
    void repaintAll() const;

    Side m_Side;
    // Compared with the window's one, and not looked into.
    const TAMBO::Alignment *m_Alignment = nullptr;
    std::shared_ptr<const Compared> m_Compared;
    std::optional<std::size_t> m_Present;
};

} // namespace companion
