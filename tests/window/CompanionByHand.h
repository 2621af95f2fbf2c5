// SPDX-License-Identifier: GPL-3.0-or-later
// The editor with all that is added to it for reading and finding, on an alignment that is larger
// than its window, and what shows that a key or a gesture has reached it.
#pragma once

#include "WindowFixture.h"

class CompanionByHand : public WindowFixture
{
protected:
    static constexpr int kRowCount = 60;
    static constexpr int kColumnCount = 150;

    ~CompanionByHand() override;

    // Neighbours have colors of their own, and the last column a letter that stands nowhere else.
    static QByteArray row(int number);
    // What is to be found, across a gap: in two rows that are out of sight at first.
    static constexpr int kHitRows[] = {30, 45};
    static constexpr int kHitColumn = 120;

    void open() { open(wholeText(), QString::fromLatin1(row(0).left(8))); }
    // Sequences in FASTA form, of which the first begins with the letters.
    void open(const QByteArray &text, const QString &letters);
    [[nodiscard]] static QByteArray wholeText();
    // The example, with W in a column of the first row, where the chain has Y.
    void openWithAMark();
    static constexpr int kMarked = 4;

    // Keys for the editor.
    void keys(const QString &names) { m_Screen.pressKey(m_Editor, names); }
    // The same for the menu that has come up, which goes with the last of them.
    void chooseByKeys(const QString &names);
    [[nodiscard]] QPoint cell(int row, int column) const { return m_Grid.middle(row, column); }
    // The grey place above the names.
    [[nodiscard]] QPoint corner() const;
    // Of the editor's window, below what the cells cover at first.
    [[nodiscard]] QRect lowerPart() const;

    // Of the cell there that has this letter, as the pixels of its color beside each other say
    // where the letter leaves most of them.
    [[nodiscard]] int widthAround(QPoint place, char letter) const;
    // The first row's first cell must be in sight and unselected; else it is 0.
    [[nodiscard]] int cellWidth() const;
    void waitForCellWidth(const std::function<bool(int)> &isRight);
    void waitForLetter(QPoint place, char letter);
    // The cell shows the letter's color as that of a residue that is selected, or of one that is
    // not.
    void waitForSelected(int row, int column, char letter, bool isSelected = true);
    [[nodiscard]] bool isSelected(int row, int column, char letter) const;
    // Waits until the part of the screen has a pixel of the color, or none.
    void waitForColorIn(const QRect &area, const QColor &color, bool isThere = true);
    // The middle of the uppermost pixels of the color, in a part of the screen; a null point where
    // none is.
    [[nodiscard]] QPoint placeOf(const QColor &color, const QRect &area) const;
    void waitForLastColumn(bool isInSight);
    void waitFor(const std::function<bool()> &condition);
    void waitForPicture(const QRect &area, const QImage &picture, bool isSame = true);
    [[nodiscard]] QImage settledEditor() const;
    // To the first cell, and without the cursor that has come with the key.
    void goHome() { m_Screen.pressKey("ctrl+Home Escape"); }
    // A key that scrolls reaches the cells.
    void expectKeyboardIsAtTheCells();

    QString m_Editor;
    QRect m_Place;
    CellGrid m_Grid;
};
