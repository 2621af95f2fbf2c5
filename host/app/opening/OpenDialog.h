// SPDX-License-Identifier: GPL-3.0-or-later
// The file dialog for opening; begins where the last one ended.
#pragma once

#include <QStringList>

class QWidget;

namespace TAMBO::app {

enum class OpenPurpose {
    Open,
    // Their sequences are added to an alignment, so sessions are none of them.
    AddAndAlign
};

// What the dialog can be told to show: all files of the usual endings, those of one kind, or any.
[[nodiscard]] QStringList openFilters(OpenPurpose purpose = OpenPurpose::Open);

// Empty when cancelled.
[[nodiscard]] QStringList askFilesToOpen(QWidget *parent, OpenPurpose purpose = OpenPurpose::Open);

} // namespace TAMBO::app
