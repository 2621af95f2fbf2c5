// SPDX-License-Identifier: GPL-3.0-or-later
// What a pattern finds in the text of a row, in either language.
#pragma once

#include "CellPattern.h"
#include "Result.h"
#include "RowSearch.h"
#include "TextPattern.h"

#include <atomic>
#include <memory>
#include <string>

namespace TAMBO::services {

class RowMatcher
{
public:
    RowMatcher(const QString &pattern, RowSearch::Language language);

    // Whether the pattern can be understood; otherwise it must not be looked for.
    [[nodiscard]] Result<void> validity() const;
    // In one thread at a time. What a cancelled search has found is of no use.
    [[nodiscard]] RowSearch::Row find(const std::string &row, const std::atomic<bool> &isCancelled);

private:
    // One of them.
    std::unique_ptr<CellPattern> m_Cells;
    std::unique_ptr<TextPattern> m_Expression;
};

} // namespace TAMBO::services
