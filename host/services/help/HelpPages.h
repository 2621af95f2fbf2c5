// SPDX-License-Identifier: GPL-3.0-or-later
// The help pages of plug-ins, beside those that were installed with the workbench.
#pragma once

#include <QString>

#include <vector>

namespace TAMBO::services {

struct HelpPage
{
    // In the list of contents.
    QString title;
    // As the plug-in calls it: "statistics.html" or "statistics/help.html".
    QString name;
    // Full path.
    QString file;
};

class HelpPages
{
public:
    static HelpPages &instance();

    // A file that is known already gets the new title.
    void add(HelpPage page);
    [[nodiscard]] const std::vector<HelpPage> &pages() const noexcept { return m_Pages; }
    // By its name, or the last part of it; the first one counts. Empty when there is none.
    [[nodiscard]] QString fileOf(const QString &name) const;
    // Whether it is one of the pages, or an HTML page in or below the folder of one.
    [[nodiscard]] bool allows(const QString &file) const;
    // The list for the end of the contents page; empty without pages.
    [[nodiscard]] QString contents() const;

private:
    std::vector<HelpPage> m_Pages;
};

} // namespace TAMBO::services
