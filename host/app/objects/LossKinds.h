// SPDX-License-Identifier: GPL-3.0-or-later
// Which losses are the same for the user: a name too many that is cut is no other loss than the one
// before it.
#pragma once

#include <QString>
#include <QStringList>

namespace TAMBO::app {

// What a sentence says without counts, examples and names. Sentences that differ in more than that
// are of different kinds.
[[nodiscard]] QString lossKind(const QString &sentence);
// Whether each of the sentences is of a kind that one of the known ones is of.
[[nodiscard]] bool areKindsKnown(const QStringList &sentences, const QStringList &known);

} // namespace TAMBO::app
