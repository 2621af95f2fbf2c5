// SPDX-License-Identifier: GPL-3.0-or-later
// The windows that show alignments, as a value of the session: they open again as they were.
#pragma once

#include "KeptValue.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class QWidget;

namespace TAMBO {
class Alignment;
class AlignmentWindow;
} // namespace TAMBO

namespace TAMBO::app {

class OpenWindows final : public sessions::KeptValue
{
public:
    struct Doors
    {
        // Shows it in a new window; null when nobody can.
        std::function<QWidget *(Alignment &)> open;
        // Shows it in that window.
        std::function<void(QWidget &, Alignment &)> showIn;
        // Whether showIn() would do so.
        std::function<bool(const QWidget &)> canShowIn;
    };

    // They are called while this loads and stores.
    explicit OpenWindows(Doors doors);
    ~OpenWindows() override;

    [[nodiscard]] std::string name() const override { return "windows"; }
    [[nodiscard]] std::string store() const override;
    // When nobody can open a window, what is kept stays as it is.
    [[nodiscard]] Result<void> load(std::string_view content, const ObjectIndex &objects) override;
    void clear() override;

    // The session said which windows it had, be it none.
    [[nodiscard]] bool areLoaded() const noexcept { return m_AreLoaded; }

private:
    // Those that can be opened again, in the order of opening.
    [[nodiscard]] std::vector<AlignmentWindow *> windows() const;
    // That shows the alignment now: an empty one if there is one. Null when nobody can.
    [[nodiscard]] AlignmentWindow *open(Alignment &alignment) const;

    Doors m_Doors;
    bool m_AreLoaded = false;
    // A session without a window is one in which they were closed.
    mutable bool m_HadAny = false;
    // What could not be opened.
    std::string m_Waiting;
};

} // namespace TAMBO::app
