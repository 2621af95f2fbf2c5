// SPDX-License-Identifier: GPL-3.0-or-later
// Making pages while the user waits: with progress and Cancel once it takes long.
#pragma once

#include "PageSink.h"

#include <QString>

class QPrinter;

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

enum class OutputEnd { Done, GivenUp, Failed };

struct OutputOutcome
{
    OutputEnd end = OutputEnd::Done;
    // When it failed, one sentence.
    QString error;
};

// Of the alignment that the window shows. The file is complete, or as it was. The workbench tells
// that it was written.
[[nodiscard]] OutputOutcome writePages(TAMBO::AlignmentWindow &window, const PagePlan &plan,
                                       const QString &file, double dotsOfInch);
// On what the printer's dialog was left with: paper, or a file of PDF. The paper is the printer's.
[[nodiscard]] OutputOutcome printPages(TAMBO::AlignmentWindow &window, PageOrder order,
                                       QPrinter &printer);

} // namespace companion
