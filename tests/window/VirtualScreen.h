// SPDX-License-Identifier: GPL-3.0-or-later
// An X server of the test's own with a window manager, its picture, and its mouse and keys.
#pragma once

#include <QImage>
#include <QProcess>
#include <QRect>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

#include <optional>

class VirtualScreen
{
public:
    explicit VirtualScreen(QSize size = {1920, 1080});
    ~VirtualScreen();

    [[nodiscard]] QString display() const { return m_Display; }
    // Of a part of the screen, or of all of it.
    [[nodiscard]] QImage picture(const QRect &area = QRect()) const;
    // Whether neither the server nor the window manager has anything to do at this moment.
    [[nodiscard]] bool isIdle() const;

    // The visible windows of exactly this title, or with the name of what they show behind it, the
    // largest first.
    [[nodiscard]] QStringList findWindows(const QString &title) const;
    // Menus and tool tips.
    [[nodiscard]] QStringList findPopups() const;
    // That which has the keyboard; empty when none has.
    [[nodiscard]] QString activeWindow() const;
    // Those that the window manager knows, the topmost last.
    [[nodiscard]] QStringList stackedWindows() const;
    // Of the window without its frame.
    [[nodiscard]] QRect geometryOf(const QString &window) const;

    void click(QPoint place, int button = 1) const;
    void doubleClick(QPoint place) const;
    void drag(QPoint from, QPoint to, int button = 1) const;
    void dragWithKey(const QString &key, QPoint from, QPoint to, int button = 1) const;
    void shiftClick(QPoint place, int button) const;
    void moveMouse(QPoint place) const;
    void press(int button) const;
    void release(int button) const;
    // Where the pointer is, so many times while the key is held; 4 and 5 turn the wheel.
    void pressWithKey(const QString &key, int button, int times) const;
    void moveWindow(const QString &window, QPoint place) const;
    void resizeWindow(const QString &window, QSize size) const;
    // Gives it the keyboard.
    void activate(const QString &window) const;
    // To the window, after it has got the keyboard; several keys stand apart.
    void pressKey(const QString &window, const QString &keys) const;
    void typeText(const QString &window, const QString &text) const;
    // Lets the window paste the text, which then arrives whole, whatever the window does meanwhile.
    void pasteText(const QString &window, const QString &text) const;
    // To whatever has the keyboard.
    void pressKey(const QString &keys) const;
    // The text that other programs would get; empty when there is none.
    [[nodiscard]] QString clipboardText() const;

    // Whether all threads of the process wait for something, rather than for the processor.
    [[nodiscard]] static bool isAsleep(qint64 process);

private:
    [[nodiscard]] QString writeManagerSettings() const;
    // The output of a program that works on the screen; nothing when it fails.
    [[nodiscard]] std::optional<QString> run(const QString &program,
                                             const QStringList &arguments) const;
    [[nodiscard]] std::optional<QString> xdotool(const QStringList &arguments) const;

    QTemporaryDir m_Folder;
    QString m_Display;
    QProcess m_Server;
    QProcess m_Manager;
};
