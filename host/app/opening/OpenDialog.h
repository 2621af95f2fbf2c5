// SPDX-License-Identifier: GPL-3.0-or-later
// The file dialog for opening; begins where the last one ended.
#pragma once

#include <QStringList>

class QWidget;

namespace TAMBO::app {

// What the dialog can be told to show: all files of the usual endings, those of one kind, or any.
[[nodiscard]] QStringList openFilters();

// Empty when cancelled.
[[nodiscard]] QStringList askFilesToOpen(QWidget *parent);

} // namespace TAMBO::app
