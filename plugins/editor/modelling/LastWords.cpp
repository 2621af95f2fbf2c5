// SPDX-License-Identifier: GPL-3.0-or-later
#include "LastWords.h"

#include <algorithm>

namespace ZEP {

namespace {

constexpr qsizetype kLooked = 20'000;
constexpr qsizetype kMostLines = 8;
constexpr qsizetype kLongestShown = 300;
// Lines of the adapter begin with its name; the others are the engine's.
constexpr QLatin1String kAdapter("kestram: ");

QStringList linesOf(const QString &errors)
{
    QStringList lines;
    const QString end = errors.right(kLooked);
    for (const QString &line : end.split(u'\n')) {
        // Of a line that was written over itself the last state is what stays.
        const QString text = line.trimmed().section(u'\r', -1).simplified();
        if (!text.isEmpty())
            lines << text.left(kLongestShown);
    }
    return lines;
}

} // namespace

// "kestram: promod failed with status 1" is less than what the engine itself said last.
LastWords::LastWords(const QString &errors)
{
    const QStringList all = linesOf(errors);
    if (all.isEmpty())
        return;
    lines = all.last(std::min(all.size(), kMostLines));
    reason = all.back();
    if (reason.startsWith(kAdapter)) {
        reason.remove(0, kAdapter.size());
        const auto engine = std::find_if(all.rbegin(), all.rend(), [](const QString &line) {
            return !line.startsWith(kAdapter);
        });
        if (engine != all.rend())
            reason += QStringLiteral(": ") + *engine;
    }
    while (reason.endsWith(u'.'))
        reason.chop(1);
}

} // namespace ZEP
