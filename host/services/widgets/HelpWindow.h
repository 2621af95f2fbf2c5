// SPDX-License-Identifier: GPL-3.0-or-later
// The window of the help viewer: pages of the installed help with a history and a search.
#pragma once

#include "BaseWindow.h"

#include <QUrl>

class QAction;
class QLabel;
class QLineEdit;
class QTextBrowser;

namespace TAMBO::services {

class HelpWindow : public BaseWindow
{
    Q_OBJECT

public:
    HelpWindow();
    ~HelpWindow() override;

    // "editor.html" or "editor.html#range"; an empty or unknown page shows the contents.
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

    QTextBrowser *m_Pages = nullptr;
    QLineEdit *m_Search = nullptr;
    QLabel *m_Message = nullptr;
};

} // namespace TAMBO::services
