// SPDX-License-Identifier: GPL-3.0-or-later
// The editor on a small alignment of known cells, the gestures of a hand, and what must show.
#pragma once

#include "WindowFixture.h"

#include <utility>

class EditingFixture : public WindowFixture
{
protected:
    static const QStringList kRows;

    void open();

    void shiftClick(QPoint place, int button) const;
    // Presses the one button, then the other, and lets go of the other at the end of the way.
    void dragWithBoth(QPoint from, QPoint to, const QString &first, const QString &other) const;

    [[nodiscard]] QPoint cell(int row, int column) const { return m_Grid.middle(row, column); }
    [[nodiscard]] QPoint mark(int column) const;
    [[nodiscard]] QPoint name(int row) const;

    // Cells, names and header, once they do not change any more.
    [[nodiscard]] QImage settledPicture() const;
    void waitForPicture(const QImage &expected);
    // Every letter on its color, every gap white, and nothing but white beyond.
    void waitForRows(const QStringList &rows, int selectedRow = -1, int selectedColumn = -1);
    // The columns under the marker of the range.
    void waitForMarked(int begin, int end);
    // A line of the program that comes once.
    void waitForLine(const QByteArray &line);
    qsizetype linesWith(const QByteArray &line);

    void undo() { m_Screen.pressKey(m_Editor, "ctrl+z"); }
    void redo() { m_Screen.pressKey(m_Editor, "ctrl+shift+z"); }
    // After a gesture: it shows, one undo brings back the first picture, and a redo this one.
    void expectOneStep(const QStringList &rows);
    static QStringList withRow(int row, const QString &text);

    QString m_Editor;
    CellGrid m_Grid;
    QImage m_Before;

private:
    void mouse(const QStringList &words) const;
    // Out of the way of pictures, which show the pointer.
    void park() const;
    [[nodiscard]] QImage picture() const;
    [[nodiscard]] bool shows(const QStringList &rows, int selectedRow, int selectedColumn) const;
    [[nodiscard]] std::pair<int, int> markedColumns() const;

    QByteArray m_Lines;
};
