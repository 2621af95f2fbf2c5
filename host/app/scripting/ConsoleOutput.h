// SPDX-License-Identifier: GPL-3.0-or-later
// What scripts have written, above the line for input: follows its end unless the user has scrolled
// up, keeps so many lines, and marks errors beside the text.
#pragma once

#include "OutputLines.h"

#include <QPlainTextEdit>

namespace TAMBO::app {

class ConsoleOutput : public QPlainTextEdit
{
    Q_OBJECT

public:
    static constexpr int kMostLines = 10'000;

    explicit ConsoleOutput(QWidget *parent = nullptr);

    void show(const OutputLines::News &news);
    // Of the line with that number, from 0.
    [[nodiscard]] LineKind kindOf(int line) const;

signals:
    // A line of a traceback was clicked on; the text of the line that it names, if it says it.
    void placeClicked(const QString &file, int line, const QString &text);
    // Keys that write something.
    void typed(QKeyEvent *event);

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    class Marks;

    [[nodiscard]] QTextCharFormat formatOf(LineKind kind) const;
    void append(const OutputLines::News &news);
    void colorAnew();
    void paintMarks(QPaintEvent &event);
    [[nodiscard]] int marksWidth() const;

    Marks *m_Marks;
    QPoint m_Pressed;
    bool m_FollowsEnd = true;
};

} // namespace TAMBO::app
