// SPDX-License-Identifier: GPL-3.0-or-later
#include "VirtualScreen.h"

#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// The words of the header of the server's picture file that matter here.
enum HeaderWord { HeaderSize = 0, Width = 4, Height = 5, BytesPerLine = 12, ColorCount = 19 };
constexpr qsizetype kColorBytes = 12;

QStringList moveTo(QPoint place)
{
    return {"mousemove", QString::number(place.x()), QString::number(place.y())};
}

} // namespace

VirtualScreen::VirtualScreen(QSize size)
{
    const QString mode = QString("%1x%2x24").arg(size.width()).arg(size.height());
    m_Server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // Without "-noreset" it would begin anew, and drop who is just connecting, each time that the
    // last client leaves. With "-r" no key repeats by itself when its release is late.
    m_Server.start("Xvfb", {"-displayfd", "1", "-r", "-screen", "0", mode, "-dpi", "96",
                            "-nolisten", "tcp", "-noreset", "-fbdir", m_Folder.path()});
    QByteArray number;
    while (!number.endsWith('\n') && m_Server.waitForReadyRead(kPatienceMilliseconds))
        number += m_Server.readAllStandardOutput();
    m_Display = ':' + QString::fromLatin1(number.trimmed());
    EXPECT_GT(m_Display.size(), 1) << "the X server does not start";

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_Display);
    m_Manager.setProcessEnvironment(environment);
    // It says on the screen that it is there before it waits for windows, and one that is to be
    // shown in between is forgotten for ever.
    const QString ready = m_Folder.filePath("ready");
    m_Manager.start("openbox", {"--sm-disable", "--config-file", writeManagerSettings(),
                                "--startup", "touch '" + ready + '\''});
    EXPECT_TRUE(m_Manager.waitForStarted(kPatienceMilliseconds));
    waitUntil([&] { return m_Manager.state() == QProcess::NotRunning || QFile::exists(ready); });
    EXPECT_EQ(m_Manager.state(), QProcess::Running) << "the window manager does not start";
}

// A window manager that takes clicks to focus windows holds the mouse meanwhile, and what comes
// while it is held is delivered as if it had happened where the pointer is afterwards. Here it
// takes none.
QString VirtualScreen::writeManagerSettings() const
{
    QFile file(m_Folder.filePath("openbox.xml"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<?xml version=\"1.0\"?>\n"
               "<openbox_config xmlns=\"http://openbox.org/3.4/rc\">\n"
               "  <focus><focusNew>yes</focusNew></focus>\n"
               "  <mouse></mouse>\n"
               "</openbox_config>\n");
    return file.fileName();
}

VirtualScreen::~VirtualScreen()
{
    // A signal that comes just before the server waits for its clients does not wake it; the next
    // one does.
    constexpr int kPause = 1000;
    for (QProcess *process : {&m_Manager, &m_Server}) {
        for (int waited = 0; waited < kPatienceMilliseconds; waited += kPause) {
            process->terminate();
            if (process->waitForFinished(kPause) || process->state() == QProcess::NotRunning)
                break;
        }
    }
}

QImage VirtualScreen::picture(const QRect &area) const
{
    QFile file(m_Folder.filePath("Xvfb_screen0"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const uchar *bytes = file.map(0, file.size());
    const auto word = [bytes](HeaderWord place) {
        return qFromBigEndian<quint32>(bytes + 4 * place);
    };
    const uchar *pixels = bytes + word(HeaderSize) + kColorBytes * word(ColorCount);
    const QImage image(pixels, int(word(Width)), int(word(Height)), qsizetype(word(BytesPerLine)),
                       QImage::Format_RGB32);
    return image.copy(area.isNull() ? image.rect() : area);
}

// On a busy machine the manager may come to raise or focus a window long after the program has
// painted it.
bool VirtualScreen::isIdle() const
{
    return isAsleep(m_Manager.processId()) && isAsleep(m_Server.processId()) &&
           isAsleep(m_Manager.processId());
}

bool VirtualScreen::isAsleep(qint64 process)
{
    const QDir threads(QString("/proc/%1/task").arg(process));
    return std::ranges::all_of(threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot),
                               [&](const QString &thread) {
                                   QFile file(threads.filePath(thread + "/stat"));
                                   if (!file.open(QIODevice::ReadOnly))
                                       return true;
                                   // The state stands behind the name, which is in parentheses.
                                   const QByteArray text = file.readAll();
                                   return text.mid(text.lastIndexOf(')')).startsWith(") S");
                               });
}

std::optional<QString> VirtualScreen::run(const QString &program,
                                          const QStringList &arguments) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_Display);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.waitForFinished(kPatienceMilliseconds);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

std::optional<QString> VirtualScreen::xdotool(const QStringList &arguments) const
{
    return run("xdotool", arguments);
}

QStringList VirtualScreen::findWindows(const QString &title) const
{
    const std::optional<QString> found =
        xdotool({"search", "--onlyvisible", "--name", '^' + title + QStringLiteral("( – .*)?$")});
    QStringList windows = found.value_or(QString()).split('\n', Qt::SkipEmptyParts);
    const auto area = [this](const QString &window) {
        const QSize size = geometryOf(window).size();
        return size.width() * size.height();
    };
    std::ranges::stable_sort(windows, std::ranges::greater(), area);
    return windows;
}

QStringList VirtualScreen::findPopups() const
{
    const auto found = [this](const QString &property) {
        return xdotool({"search", "--onlyvisible", property, "."})
            .value_or(QString())
            .split('\n', Qt::SkipEmptyParts);
    };
    QStringList windows = found("--class");
    for (const QString &titled : found("--name"))
        windows.removeAll(titled);
    return windows;
}

QString VirtualScreen::activeWindow() const
{
    return xdotool({"getactivewindow"}).value_or(QString());
}

QStringList VirtualScreen::stackedWindows() const
{
    const QString text =
        run("xprop", {"-root", "_NET_CLIENT_LIST_STACKING"}).value_or(QString()).section('#', 1);
    QStringList windows;
    for (const QString &number : text.split(',', Qt::SkipEmptyParts))
        windows << QString::number(number.trimmed().toULongLong(nullptr, 0));
    return windows;
}

QRect VirtualScreen::geometryOf(const QString &window) const
{
    QMap<QString, int> values;
    const QString text = run("xwininfo", {"-id", window}).value_or(QString());
    for (const QString &line : text.split('\n'))
        values[line.section(':', 0, 0).trimmed()] = line.section(':', 1).toInt();
    return {values["Absolute upper-left X"], values["Absolute upper-left Y"], values["Width"],
            values["Height"]};
}

void VirtualScreen::click(QPoint place, int button) const
{
    EXPECT_TRUE(xdotool(moveTo(place) + QStringList{"click", QString::number(button)}));
}

void VirtualScreen::doubleClick(QPoint place) const
{
    EXPECT_TRUE(xdotool(moveTo(place) + QStringList{"click", "--repeat", "2", "1"}));
}

void VirtualScreen::drag(QPoint from, QPoint to, int button) const
{
    const QString number = QString::number(button);
    EXPECT_TRUE(xdotool(moveTo(from) + QStringList{"mousedown", number} + moveTo((from + to) / 2) +
                        moveTo(to) + QStringList{"mouseup", number}));
}

void VirtualScreen::dragWithKey(const QString &key, QPoint from, QPoint to, int button) const
{
    const QString number = QString::number(button);
    EXPECT_TRUE(xdotool(QStringList{"keydown", key} + moveTo(from) +
                        QStringList{"mousedown", number} + moveTo((from + to) / 2) + moveTo(to) +
                        QStringList{"mouseup", number, "keyup", key}));
}

void VirtualScreen::shiftClick(QPoint place, int button) const
{
    EXPECT_TRUE(xdotool(QStringList{"keydown", "shift"} + moveTo(place) +
                        QStringList{"click", QString::number(button), "keyup", "shift"}));
}

void VirtualScreen::moveMouse(QPoint place) const
{
    EXPECT_TRUE(xdotool(moveTo(place)));
}

void VirtualScreen::press(int button) const
{
    EXPECT_TRUE(xdotool({"mousedown", QString::number(button)}));
}

void VirtualScreen::release(int button) const
{
    EXPECT_TRUE(xdotool({"mouseup", QString::number(button)}));
}

void VirtualScreen::pressWithKey(const QString &key, int button, int times) const
{
    EXPECT_TRUE(xdotool({"keydown", key, "click", "--repeat", QString::number(times), "--delay",
                         "10", QString::number(button), "keyup", key}));
}

void VirtualScreen::moveWindow(const QString &window, QPoint place) const
{
    EXPECT_TRUE(
        xdotool({"windowmove", window, QString::number(place.x()), QString::number(place.y())}));
}

void VirtualScreen::resizeWindow(const QString &window, QSize size) const
{
    EXPECT_TRUE(xdotool(
        {"windowsize", window, QString::number(size.width()), QString::number(size.height())}));
}

void VirtualScreen::activate(const QString &window) const
{
    EXPECT_TRUE(xdotool({"windowactivate", "--sync", window}));
}

void VirtualScreen::pressKey(const QString &window, const QString &keys) const
{
    EXPECT_TRUE(xdotool(QStringList{"windowactivate", "--sync", window, "key"} + keys.split(' ')));
}

void VirtualScreen::pressKey(const QString &keys) const
{
    EXPECT_TRUE(xdotool(QStringList{"key"} + keys.split(' ')));
}

void VirtualScreen::typeText(const QString &window, const QString &text) const
{
    EXPECT_TRUE(xdotool({"windowactivate", "--sync", window, "type", "--delay", "1", text}));
}

QString VirtualScreen::clipboardText() const
{
    return run("xclip", {"-selection", "clipboard", "-out"}).value_or(QString());
}

void VirtualScreen::pasteText(const QString &window, const QString &text) const
{
    QFile file(m_Folder.filePath("pasted.txt"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
    file.close();
    // It goes into the background when it owns the clipboard, and ends with the server.
    EXPECT_TRUE(run("xclip", {"-selection", "clipboard", "-in", file.fileName()}));
    pressKey(window, "ctrl+v");
}
