// SPDX-License-Identifier: GPL-3.0-or-later
// The window of the help viewer: pages of the installed help with a history and a search.
#pragma once

#include "BaseWindow.h"

#include <QUrl>

class QAction;
class QLabel;
class QLineEdit;

namespace TAMBO::services {

class HelpBrowser;

class HelpWindow : public BaseWindow
{
    Q_OBJECT

public:
    HelpWindow();
    ~HelpWindow() override;

    // "editor.html" or "editor.html#range", or a page of a plug-in by its name; an empty or unknown
    // page shows the contents.
    void showDocument(const QString &document);
    [[nodiscard]] QUrl document() const;

    void Kill(BaseWindow *window) override;

private:
    void makeToolBar();
    void follow(const QUrl &link);
    enum class Direction { Forward, Backward };
    void search(Direction direction);
    void searchWhileTyping();
    void say(const QString &text);

    HelpBrowser *m_Pages = nullptr;
    QLineEdit *m_Search = nullptr;
    QLabel *m_Message = nullptr;
};

} // namespace TAMBO::services
