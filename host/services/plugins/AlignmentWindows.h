// SPDX-License-Identifier: GPL-3.0-or-later
// Which alignment windows are open, and who wants to know.
#pragma once

#include "CallList.h"

#include <vector>

namespace TAMBO {
class AlignmentWindow;
class AlignmentWindowObserver;
} // namespace TAMBO

namespace TAMBO::services {

class AlignmentWindows
{
public:
    static AlignmentWindows &instance();

    void open(AlignmentWindow &window);
    // Ignores one that is not open, here and below.
    void close(AlignmentWindow &window);
    void activate(AlignmentWindow &window);
    // Tells nobody.
    void forget(AlignmentWindow &window);

    [[nodiscard]] bool isOpen(const AlignmentWindow &window) const;
    [[nodiscard]] const std::vector<AlignmentWindow *> &all() const noexcept { return m_Open; }
    // The one that was used last stands at the end.
    [[nodiscard]] const std::vector<AlignmentWindow *> &used() const noexcept { return m_Used; }
    [[nodiscard]] AlignmentWindow *lastUsed() const;
    [[nodiscard]] CallList<AlignmentWindowObserver> &observers() noexcept { return m_Observers; }

private:
    // In the order of opening, and in that of use.
    std::vector<AlignmentWindow *> m_Open;
    std::vector<AlignmentWindow *> m_Used;
    CallList<AlignmentWindowObserver> m_Observers{"An observer of alignment windows"};
};

} // namespace TAMBO::services
