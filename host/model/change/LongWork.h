// SPDX-License-Identifier: GPL-3.0-or-later
// Work on a great many rows or objects in one go: the program around the model may show how far it
// is, and the user may give it up.
#pragma once

#include "ChangeScope.h"

#include <cstddef>

namespace TAMBO {

class LongStages;

class [[nodiscard]] LongWork
{
public:
    // So many pieces at most are done between two looks at the user.
    static constexpr std::size_t kStride = 4096;

    enum class Kind {
        // Changes nothing before its end.
        Reading,
        // Changes the model by edits on its way, so that giving it up means taking them back. Can
        // be given up when a history keeps them and the step has done nothing else before.
        Changing,
        // Has to come to its end.
        Fixed
    };

    // what: for the user, as "Coloring". Of works inside each other the outermost is shown, works
    // inside of LongStages as parts of these.
    LongWork(const char *what, std::size_t pieces, Kind kind);
    ~LongWork();
    LongWork(const LongWork &) = delete;
    LongWork &operator=(const LongWork &) = delete;

    // Before each piece. False when the user has given the work up; all that it has changed has
    // been taken back then.
    [[nodiscard]] bool goesOn() { return !m_IsGivenUp && (m_Done++ % kStride != 0 || look()); }
    // Instead, where pieces are larger: so many are done.
    [[nodiscard]] bool goesOnAt(std::size_t done);

private:
    [[nodiscard]] bool look();

    // What arrives waits: the work is in the middle of something.
    ArrivalPause m_Pause;
    const char *m_What;
    std::size_t m_Pieces;
    Kind m_Kind;
    bool m_IsOutermost;
    // Null outside of any.
    const LongStages *m_Stages;
    // Known from the first look on.
    bool m_CanBeGivenUp = false;
    bool m_IsGivenUp = false;
    std::size_t m_Done = 0;
};

} // namespace TAMBO
