// SPDX-License-Identifier: GPL-3.0-or-later
// The items of a canvas that are alive only because somebody asked for them: those made for cells
// of the lattice, and handed-out ones that a rebuild threw out. They go when control is back in the
// event loop from which they were asked for; a loop nested in between does not end them.
#pragma once

#include <QObject>

#include <unordered_map>
#include <vector>

class QCanvasItem;

class HandedOutItems : public QObject
{
public:
    // holder: where the canvas keeps this; null as soon as it goes.
    explicit HandedOutItems(HandedOutItems *&holder);
    ~HandedOutItems() override;

    // The item of a cell, by the cell's number; null when there is none.
    [[nodiscard]] QCanvasItem *find(unsigned long cell) const;
    void add(unsigned long cell, QCanvasItem *item);
    // An item that has left its canvas.
    void bury(QCanvasItem *item);
    // All cells' items leave the canvas, but stay alive.
    void buryAll();
    // The item is being deleted by somebody else.
    void disown(const QCanvasItem *item);

private:
    HandedOutItems *&m_Holder;
    std::unordered_map<unsigned long, QCanvasItem *> m_Cells;
    std::vector<QCanvasItem *> m_Buried;
};
