// SPDX-License-Identifier: GPL-3.0-or-later
// The line for bringing rows together by their names.
#pragma once

#include "CountingBar.h"
#include "NamePattern.h"
#include "RowPass.h"

#include <QHash>

#include <cstdint>
#include <functional>
#include <vector>

class QComboBox;
class QLineEdit;

namespace companion {

// Rows whose names are like a pattern come together at the place of the first one. When a regular
// expression has a part in parentheses, those with the same text there do so.
class GroupBar : public CountingBar
{
    Q_OBJECT

public:
    using Tell = std::function<void(const QString &)>;

    // A child of the window's own widget, and gone with it.
    GroupBar(TAMBO::AlignmentWindow &window, Tell tell);
    ~GroupBar() override;

    [[nodiscard]] QLineEdit &name() const noexcept { return *m_Name; }
    [[nodiscard]] QComboBox &language() const noexcept { return *m_Language; }

protected:
    bool beginCount() override;
    bool countOn(std::chrono::microseconds most) override { return m_Looking.goOn(most); }
    [[nodiscard]] bool isCounted() const override { return m_Looking.isDone(); }
    [[nodiscard]] int percent() const override { return m_Looking.percent(); }
    [[nodiscard]] QString countText(const TAMBO::Alignment &alignment) const override;
    bool carryOut(TAMBO::Alignment &alignment) override;

private:
    void look(const QString &name);

    Tell m_Tell;
    NamePattern m_Pattern;
    RowPass m_Looking;
    // Of each row that was looked at.
    std::vector<std::uint32_t> m_Groups;
    // By what the names have in common.
    QHash<QString, std::uint32_t> m_Known;
    unsigned long m_Found = 0;
    QLineEdit *m_Name;
    QComboBox *m_Language;
};

} // namespace companion
