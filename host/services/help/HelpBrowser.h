// SPDX-License-Identifier: GPL-3.0-or-later
// Shows the pages of the help. The contents page ends in a list of what plug-ins have brought.
#pragma once

#include <QTextBrowser>

namespace TAMBO::services {

class HelpBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    using QTextBrowser::QTextBrowser;
    ~HelpBrowser() override;

    // Where the installed pages stand.
    [[nodiscard]] static QString directory();
    [[nodiscard]] static QString contentsPage();

    QVariant loadResource(int type, const QUrl &name) override;
};

} // namespace TAMBO::services
