// SPDX-License-Identifier: GPL-3.0-or-later
// Waiting for an aligner that works on a loaded alignment.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include <optional>

namespace TAMBO {
class Alignment;
}

namespace TAMBO::realign {
class AlignerRun;
}

namespace TAMBO::app {

// Whoever may cancel it, in a dialog.
struct AlignerUser
{
    // It may be closed while the program runs.
    QPointer<QWidget> parent;
    QString title;
    // Above what the program says.
    QString text;
};

// Starts it, and returns when it has ended; windows repaint meanwhile. Without a user nothing is
// shown, and a program that does not end is given up.
void waitForAligner(realign::AlignerRun &aligner, const std::optional<AlignerUser> &user);

// It may have gone meanwhile.
[[nodiscard]] bool isStillThere(const Alignment &alignment);

} // namespace TAMBO::app
