// SPDX-License-Identifier: GPL-3.0-or-later
// What the menu Help tells of the program itself.
#pragma once

#include <QString>

class QWidget;

namespace TAMBO::app {

class Plugins;

// For whoever looks into a fault: versions, system, plug-ins, and the last lines of the log.
[[nodiscard]] QString reportText(const Plugins &plugins);
// The report, to be pasted into a letter; nothing is sent.
void copyReport(const Plugins &plugins);
// What has come with the versions.
void showNews(QWidget *parent);

// Version and license.
void showAbout(QWidget *parent);

} // namespace TAMBO::app
