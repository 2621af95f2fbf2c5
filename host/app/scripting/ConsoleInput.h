// SPDX-License-Identifier: GPL-3.0-or-later
// Where one types what the console is to run: a line, which grows with what is typed.
#pragma once

#include <QPlainTextEdit>

#include <functional>

class QCompleter;
class QStringListModel;

namespace TAMBO::app {

class ConsoleHistory;

class ConsoleInput : public QPlainTextEdit
{
    Q_OBJECT

public:
    struct Completion
    {
        // The words stand for the text from here up to the cursor.
        qsizetype start = 0;
        QStringList words;
    };
    struct Language
    {
        // Whether nothing more is to be typed.
        std::function<bool(const QString &source)> isComplete;
        std::function<Completion(const QString &source, qsizetype cursor)> complete;
    };

    // history outlives this.
    ConsoleInput(ConsoleHistory &history, Language language, QWidget *parent = nullptr);

    // Shows the text and takes no other while something runs.
    void setBusy(bool isBusy, const QString &placeholder);
    // Of ours while it is shown.
    [[nodiscard]] QCompleter &completer() const noexcept { return *m_Completer; }

    // The input has lines of its own: prompts, and what was written between them, are left out of
    // what was copied from a session.
    [[nodiscard]] static QString withoutPrompts(const QString &text);

signals:
    void entered(const QString &source);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] bool takesKey(const QKeyEvent &event);
    void enter();
    void beginLine();
    void offerWords(bool isAsked);
    void fitList();
    void insertWord(const QString &word);
    void replaceWord(const QString &word);
    void showEntry(const QString *entry);
    void fitHeight();

    ConsoleHistory &m_History;
    Language m_Language;
    QStringListModel *m_Words;
    QCompleter *m_Completer;
    qsizetype m_WordStart = 0;
    bool m_IsShowingEntry = false;
};

} // namespace TAMBO::app
