// SPDX-License-Identifier: GPL-3.0-or-later
// After Color, By Distance of an alignment window: whether the structures were ever superposed, for
// the colors tell nothing before.
#pragma once

#include "AlignmentViewObserver.h"
#include "FitsFound.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <cstdint>
#include <functional>

namespace companion {

class DistanceAdvice : public QObject, public TAMBO::AlignmentViewObserver
{
public:
    // tell: called when there is something to say, some events after the command.
    DistanceAdvice(TAMBO::AlignmentWindow &window, std::function<void(const QString &)> tell);
    ~DistanceAdvice() override;

    // Looks at the alignment that is shown.
    void look();
    [[nodiscard]] bool isLooking() const noexcept { return m_Next.isActive(); }

    void alignmentShown() override;

private:
    void goOn();

    std::function<void(const QString &)> m_Tell;
    QTimer m_Next;
    FitsFound m_Found;
    std::uint64_t m_Layout = 0;
    std::uint64_t m_Structures = 0;
};

// Of structures that lie much farther from the first than they would when superposed, with no part
// of them where it belongs; empty when none does.
[[nodiscard]] QString apartText(const TAMBO::Alignment &alignment, const FitsFound &found);

} // namespace companion
