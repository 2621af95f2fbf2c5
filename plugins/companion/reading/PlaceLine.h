// SPDX-License-Identifier: GPL-3.0-or-later
// A line at the lower edge of an alignment window: what is under the pointer, or at the cell cursor
// when that has moved last; and what commands have to say.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"
#include "CellPlaces.h"

#include <QPoint>
#include <QString>

#include <optional>

class QLabel;

namespace companion {

class PlaceLine : public TAMBO::AlignmentViewObserver, public TAMBO::CellEventFilter
{
public:
    explicit PlaceLine(TAMBO::AlignmentWindow &window);
    ~PlaceLine() override;

    // Where the cell cursor is, until the pointer moves again; or no longer.
    void setCursor(const std::optional<TAMBO::CellIndex> &cell);

    // What has come of a command, or why nothing has: until the pointer is over another cell, or
    // the cell cursor moves.
    void tell(const QString &message);
    [[nodiscard]] QString text() const;

    void alignmentShown() override;
    void layoutRebuilt() override;
    void scrolled() override;
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    // Looks again at what is at the place where the pointer was last.
    void show();
    [[nodiscard]] std::optional<TAMBO::CellIndex> cell() const;

    QLabel *m_Text;
    std::optional<QPoint> m_Place;
    std::optional<TAMBO::CellIndex> m_Cursor;
    // Empty when the place is shown.
    QString m_Message;
    std::optional<TAMBO::CellIndex> m_CellOfMessage;
};

} // namespace companion
