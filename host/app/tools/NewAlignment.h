// SPDX-License-Identifier: GPL-3.0-or-later
// A new alignment of sequences that the user chooses.
#pragma once

#include <QString>

class QWidget;

namespace TAMBO {
class Alignment;
} // namespace TAMBO

namespace TAMBO::app {

struct NewAlignment
{
    // Null when there is none.
    Alignment *alignment = nullptr;
    // Why there is none, for the user; empty when he has given it up.
    QString refusal;
};

// Of what is loaded; what is picked in the tree is ticked. In the order of the candidates, without
// a gap but behind the shorter ones; one step of undo.
[[nodiscard]] NewAlignment askForNewAlignment(QWidget *parent);

} // namespace TAMBO::app
