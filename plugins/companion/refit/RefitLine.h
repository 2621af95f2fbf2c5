// SPDX-License-Identifier: GPL-3.0-or-later
// A line at the lower edge of an alignment window, while the structures are kept superposed: how
// well they lie on each other.
#pragma once

#include "AlignmentViewObserver.h"
#include "Disputes.h"
#include "Subscriber.h"

#include <QPointer>
#include <QTimer>

#include <cstdint>
#include <optional>

class QLabel;
class QToolBar;

namespace companion {

class RefitLine : public TAMBO::AlignmentViewObserver, public Subscriber
{
public:
    explicit RefitLine(TAMBO::AlignmentWindow &window);
    ~RefitLine() override;

    // Of the alignment that is shown, as one step. What came of it, to be told; empty without an
    // alignment.
    QString toggle();
    [[nodiscard]] bool isShown() const;
    [[nodiscard]] QString text() const;
    // Everything is known that the line is to say.
    [[nodiscard]] bool isSettled() const noexcept { return !m_Next.isActive(); }

    void alignmentShown() override;
    void layoutRebuilt() override;
    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

private:
    struct State
    {
        const TAMBO::Alignment *alignment = nullptr;
        std::uint64_t layout = 0;
        std::uint64_t structures = 0;
        TAMBO::FitChoice choice;

        friend bool operator==(const State &, const State &) = default;
    };

    [[nodiscard]] State state() const;
    // Begins anew when something is not as it was.
    void look();
    void goOn();

    QPointer<QToolBar> m_Bar;
    QPointer<QLabel> m_Text;
    QTimer m_Next;
    // Of what is shown; nothing while it is off.
    std::optional<State> m_State;
    FitsFound m_Found;
    // Once all is found.
    std::optional<Disputes> m_Disputes;
};

} // namespace companion
