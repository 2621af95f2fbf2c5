// SPDX-License-Identifier: GPL-3.0-or-later
// The real program on a screen of its own, and what can be seen of its editor.
#pragma once

#include "VirtualScreen.h"

#include <QColor>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

// The cells of an editor window that shows an alignment, found in the picture.
struct CellGrid
{
    QPoint corner;
    QSize cell;

    [[nodiscard]] QPoint middle(int row, int column) const
    {
        return corner + QPoint(column * cell.width() + cell.width() / 2,
                               row * cell.height() + cell.height() / 2);
    }
    // A place in the cell that no letter covers.
    [[nodiscard]] QPoint ground(int row, int column) const
    {
        return corner + QPoint(column * cell.width() + 1, row * cell.height() + 1);
    }
};

class WindowFixture : public testing::Test
{
protected:
    explicit WindowFixture(QSize screen = {1920, 1080});
    ~WindowFixture() override;

    void start(const QStringList &arguments);
    void send(int signal) const;
    // The exit status, once the program has ended by itself.
    int waitForEnd();
    [[nodiscard]] bool isRunning() const;
    // Whether neither the program nor the screen has anything to do at this moment.
    [[nodiscard]] bool isSettled() const;
    // Waits for so many windows of the title and gives the smallest; fails when the program ends
    // instead.
    QString window(const QString &title, int count = 1);
    // Waits until there are no more of them.
    void waitForWindows(const QString &title, int count);
    // Waits until the editor shows an alignment whose first row begins with these letters.
    CellGrid grid(const QString &window, const QString &letters);
    // The entry of a menu of the editor; both are counted from 0, from "File" on.
    void choose(const QString &editor, int menu, int entry);
    // "Save" of its File menu.
    void chooseSave(const QString &editor) { choose(editor, 0, 6); }
    // Types the name into a file dialog and accepts it.
    void enterFile(const QString &dialog, const QString &file);
    // Saves what the editor shows with its File menu, and gives the rows as they stand in the file.
    QStringList save(const QString &editor, const QString &file);
    // A picture of the screen when the program and the screen have nothing more to do.
    [[nodiscard]] QImage settled(const std::function<QImage()> &picture) const;
    // Waits until the place has the color.
    void waitForColor(QPoint place, const QColor &color);
    [[nodiscard]] static QColor colorOf(char letter);
    [[nodiscard]] static QColor selectedColorOf(char letter);
    [[nodiscard]] QString example() const;
    QString write(const QString &name, const QByteArray &text);

    VirtualScreen m_Screen;
    QTemporaryDir m_Folder;
    QProcess m_Program;
};
