// SPDX-License-Identifier: GPL-3.0-or-later
// The line for removing columns with more than so many gaps.
#pragma once

#include "CountingBar.h"
#include "ResidueColumns.h"
#include "RowPass.h"

#include <cstdint>
#include <functional>
#include <vector>

class QDoubleSpinBox;

namespace companion {

class GapColumnsBar : public CountingBar
{
    Q_OBJECT

public:
    using Tell = std::function<void(const QString &)>;

    // A child of the window's own widget, and gone with it.
    GapColumnsBar(TAMBO::AlignmentWindow &window, Tell tell);
    ~GapColumnsBar() override;

    [[nodiscard]] QDoubleSpinBox &limit() const noexcept { return *m_Limit; }

protected:
    bool beginCount() override;
    bool countOn(std::chrono::microseconds most) override;
    [[nodiscard]] bool isCounted() const override { return m_Counting.isDone(); }
    [[nodiscard]] int percent() const override { return m_Counting.percent(); }
    [[nodiscard]] QString countText(const TAMBO::Alignment &alignment) const override;
    bool carryOut(TAMBO::Alignment &alignment) override;

private:
    void findColumns();

    Tell m_Tell;
    RowPass m_Counting;
    // Of each column.
    std::vector<std::uint32_t> m_Residues;
    GappyColumns m_Found;
    QDoubleSpinBox *m_Limit;
};

} // namespace companion
