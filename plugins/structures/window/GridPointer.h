// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AlignmentWindowObserver.h"

#include <QObject>

#include <cstdint>
#include <memory>
#include <vector>

namespace TAMBO {
class Alignment;
class AlignmentWindow;
class Compound;
} // namespace TAMBO

namespace structures {

// Which residue of a structure the pointer is over in the grid of an alignment.
class GridPointer final : public QObject, public TAMBO::AlignmentWindowObserver
{
    Q_OBJECT

public:
    GridPointer();
    ~GridPointer() override;

    // Rows, ties or objects may be others than before.
    void forget();

    void windowOpened(TAMBO::AlignmentWindow &window) override;
    void windowGoing(TAMBO::AlignmentWindow &window) override;

signals:
    // A child of a chain; null for a cell without such a residue, and when no cell is pointed at.
    void pointed(TAMBO::Compound *chain, std::uint32_t child);

private:
    class Listener;
    struct Residue
    {
        TAMBO::Compound *chain = nullptr;
        std::uint32_t child = 0;

        friend bool operator==(const Residue &, const Residue &) = default;
    };

    void point(const TAMBO::Alignment &alignment, unsigned long row, unsigned long column);
    void show(const Residue &residue);

    std::vector<std::unique_ptr<Listener>> m_Listeners;
    Residue m_Shown;
    // Of the row that was pointed at last.
    const TAMBO::Compound *m_Sequence = nullptr;
    std::vector<Residue> m_Residues;
};

} // namespace structures
