// SPDX-License-Identifier: GPL-3.0-or-later
// The editor on a small alignment of known cells, the gestures of a hand, and what must show.
#pragma once

#include "WindowFixture.h"

#include <functional>
#include <utility>

class EditingFixture : public WindowFixture
{
protected:
    ~EditingFixture() override;

    static const QStringList kRows;

    void open();

    [[nodiscard]] QPoint cell(int row, int column) const { return m_Grid.middle(row, column); }
    [[nodiscard]] QPoint mark(int column) const;
    [[nodiscard]] QPoint name(int row) const;

    // Presses the one button, then the other, and lets go of the other at the end of the way.
    void dragWithBoth(QPoint from, QPoint to, int first, int other) const;

    // Waits for the menu that a click has asked for, and chooses the entry of this key.
    void chooseInMenu(const QString &key);

    // What there is to see around the pointer.
    [[nodiscard]] QImage pointer(QPoint place) const;
    [[nodiscard]] QImage settledPointer(QPoint place) const;
    // Cells, names and header, without the pointer.
    [[nodiscard]] QImage picture(const CellGrid &grid) const;
    // The same, when the program and the screen have nothing more to do.
    [[nodiscard]] QImage settledPicture() const;
    void waitForPicture(const QImage &expected);
    // Every letter on its color, every gap white, and nothing but white beyond.
    void waitForRows(const QStringList &rows, int selectedRow = -1, int selectedColumn = -1);
    void waitForRowsIn(const CellGrid &grid, const QStringList &rows, int selectedRow = -1,
                       int selectedColumn = -1);
    void waitForSelected(int row, int column);
    // The columns under the marker of the range.
    void waitForMarked(int begin, int end);
    // A line of the program that comes so many times, and no more.
    void waitForLines(const QByteArray &line, qsizetype count = 1);
    qsizetype linesWith(const QByteArray &line);

    void undo() { m_Screen.pressKey(m_Editor, "ctrl+z"); }
    void redo() { m_Screen.pressKey(m_Editor, "ctrl+shift+z"); }
    // What the program writes when it saves.
    void expectSaved(const QStringList &rows);
    // After a gesture: it shows and is what is saved, one undo brings back the first picture, and
    // a redo this one.
    void expectOneStep(const QStringList &rows);
    static QStringList withRow(int row, const QString &text);
    static QStringList withGapColumn(int column);
    static QStringList withoutColumn(int column);

    QString m_Editor;
    CellGrid m_Grid;
    QImage m_Before;

private:
    // Out of the way of pictures, which show the pointer.
    void park() const;
    [[nodiscard]] std::pair<int, int> markedColumns() const;

    QByteArray m_Lines;
    int m_Saved = 0;
};
