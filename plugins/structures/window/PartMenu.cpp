// SPDX-License-Identifier: GPL-3.0-or-later
#include "PartMenu.h"

#include "StyleCommands.h"

namespace structures {

PartMenu::PartMenu(StyleCommands &styles, const ListedPart &part, QWidget *parent) : QMenu(parent)
{
    addAction(tr("Show &Only This"), this, [&styles, part] { styles.showOnly(part); });
    addAction(tr("Sh&ow"), this, [&styles, part] { styles.show(part); });
    addAction(tr("&Hide"), this, [&styles, part] { styles.setShown(part, false); });
    addSeparator();
    const auto addStyle = [this, &styles, part](const QString &text, Style style) {
        addAction(text, this,
                  [&styles, part, style] { styles.setStyle(style, styles.residuesOf(part)); });
    };
    addStyle(tr("&Cartoon"), Style::Cartoon);
    addStyle(tr("&Trace"), Style::Trace);
    addStyle(tr("&Sticks"), Style::Sticks);
    addStyle(tr("&Balls and Sticks"), Style::BallsAndSticks);
    addStyle(tr("S&pheres"), Style::Spheres);
    addSeparator();
    addAction(tr("Show Side C&hains"), this,
              [&styles, part] { styles.setSideChains(true, styles.residuesOf(part)); });
    addAction(tr("Hide Side Ch&ains"), this,
              [&styles, part] { styles.setSideChains(false, styles.residuesOf(part)); });
    addSeparator();
    addAction(tr("C&entre"), this, &PartMenu::centreWanted);
}

} // namespace structures

#include "moc_PartMenu.cpp"
