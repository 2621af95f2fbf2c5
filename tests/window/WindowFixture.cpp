// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowFixture.h"

#include "AminoAcids.h"
#include "FileReader.h"
#include "SelectionColor.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QFont>
#include <QFontMetrics>

#include <csignal>
#include <utility>

namespace {

// As the editor measures its cells, in the font that the settings give it.
QSize cellSize()
{
    const QFontMetrics metrics(QFont("DejaVu Sans Mono", 11));
    int width = metrics.boundingRect('-').width();
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        width = std::max(width, metrics.boundingRect(letter).width());
    return {width + 4, metrics.lineSpacing()};
}

} // namespace

WindowFixture::WindowFixture(QSize screen) : m_Screen(screen)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_Screen.display());
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("TAMBO_USER_DIR", m_Folder.filePath("user"));
    // What was installed on the machine is no part of the test.
    environment.insert("TAMBO_SYSTEM_PLUGIN_DIRS", QString());
    for (const char *name : {"TAMBO_SHARE_DIR", "TAMBO_PLUGIN_DIR", "WAYLAND_DISPLAY"})
        environment.remove(name);
    m_Program.setProcessEnvironment(environment);
}

WindowFixture::~WindowFixture()
{
    if (HasFailure()) {
        // What stood on the screen tells most of what went wrong.
        const testing::TestInfo *test = testing::UnitTest::GetInstance()->current_test_info();
        m_Screen.picture().save(
            QString(BUILD_DIR "/failed-%1.%2.png").arg(test->test_suite_name(), test->name()));
    }
    if (isRunning()) {
        m_Program.kill();
        m_Program.waitForFinished(kPatienceMilliseconds);
    }
    if (HasFailure()) {
        std::fprintf(stderr, "%s%s", m_Program.readAllStandardOutput().constData(),
                     m_Program.readAllStandardError().constData());
    }
}

void WindowFixture::start(const QStringList &arguments)
{
    // Another one of the test may run beside it.
    m_Program.start(BUILD_DIR "/bin/tambo", QStringList("--new") + arguments);
    ASSERT_TRUE(m_Program.waitForStarted(kPatienceMilliseconds));
}

void WindowFixture::send(int signal) const
{
    ASSERT_EQ(kill(static_cast<pid_t>(m_Program.processId()), signal), 0);
}

int WindowFixture::waitForEnd()
{
    EXPECT_TRUE(m_Program.waitForFinished(kPatienceMilliseconds)) << "the program does not end";
    EXPECT_EQ(m_Program.exitStatus(), QProcess::NormalExit);
    return m_Program.exitCode();
}

bool WindowFixture::isRunning() const
{
    return m_Program.state() == QProcess::Running;
}

bool WindowFixture::isSettled() const
{
    const auto isAsleep = [this] { return VirtualScreen::isAsleep(m_Program.processId()); };
    return isAsleep() && m_Screen.isIdle() && isAsleep();
}

QString WindowFixture::window(const QString &title, int count)
{
    QStringList found;
    waitUntil([&] {
        found = m_Screen.findWindows(title);
        return found.size() >= count || !isRunning();
    });
    EXPECT_EQ(found.size(), count) << title.toStdString();
    // It may take no keys before it is complete.
    waitUntil([&] { return isSettled() || !isRunning(); });
    return found.isEmpty() ? QString() : found.back();
}

void WindowFixture::waitForWindows(const QString &title, int count)
{
    waitUntil([&] { return m_Screen.findWindows(title).size() == count || !isRunning(); });
    EXPECT_TRUE(isRunning());
}

// The first cell of the first row is the uppermost leftmost place of its letter's color below the
// header, followed by the next letters' colors at the distance of a cell.
CellGrid WindowFixture::grid(const QString &window, const QString &letters)
{
    CellGrid grid;
    grid.cell = cellSize();
    const auto isGrid = [&](const QImage &image, QPoint corner) {
        for (int i = 0; i < letters.size(); ++i) {
            const QPoint place = corner + QPoint(i * grid.cell.width(), 0);
            if (!image.valid(place) || image.pixelColor(place) != colorOf(letters[i].toLatin1()))
                return false;
        }
        return true;
    };
    bool isFound = false;
    waitUntil([&] {
        // The window may still be placed, and its panels still get their widths.
        const QImage image = settled([this] { return m_Screen.picture(); });
        const QRect area = m_Screen.geometryOf(window);
        for (int y = area.top(); !isFound && y <= area.bottom(); ++y) {
            for (int x = area.left(); !isFound && x <= area.right(); ++x) {
                if (isGrid(image, {x, y})) {
                    grid.corner = {x, y};
                    isFound = true;
                }
            }
        }
        return isFound || !isRunning();
    });
    EXPECT_TRUE(isFound) << "the program ended before the alignment was painted";
    return grid;
}

void WindowFixture::choose(const QString &editor, int menu, int entry)
{
    m_Screen.pressKey(editor, "alt+f " + QString("Right ").repeated(menu) +
                                  QString("Down ").repeated(entry) + "Return");
}

// Names that are offered to complete the text, which may be at any time, can take a key.
void WindowFixture::enterFile(const QString &dialog, const QString &file)
{
    const auto isGone = [&] { return !isRunning() || m_Screen.findWindows(dialog).isEmpty(); };
    const auto waitForRest = [&] {
        return waitUntil([&] { return isSettled() || isGone(); }) && !isGone();
    };
    const QString shown = window(dialog);
    while (waitForRest()) {
        m_Screen.pressKey(shown, "ctrl+a");
        m_Screen.pasteText(shown, file);
        while (waitForRest() && !m_Screen.findPopups().isEmpty())
            m_Screen.pressKey("Escape");
        if (!isGone())
            m_Screen.pressKey("Return");
    }
    EXPECT_TRUE(isRunning());
}

QStringList WindowFixture::save(const QString &editor, const QString &file)
{
    chooseSave(editor);
    enterFile("Save As", file);
    // A file takes its name when it is complete.
    waitUntil([&] { return QFile::exists(file) || !isRunning(); });
    TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readFile(file.toStdString());
    QStringList rows;
    EXPECT_TRUE(contents.has_value());
    if (contents.has_value()) {
        EXPECT_EQ(contents->alignments.size(), 1U);
        for (const auto &row : contents->alignments.front().rows)
            rows.append(QString::fromStdString(row.sequence.text()));
    }
    return rows;
}

// The server's file may be read while it is written: what is read twice is on the screen.
QImage WindowFixture::settled(const std::function<QImage()> &picture) const
{
    QImage last;
    waitUntil([&] {
        const bool isQuiet = isSettled();
        QImage now = picture();
        const bool isSame = now == last;
        last = std::move(now);
        return (isQuiet && isSame && isSettled()) || !isRunning();
    });
    return last;
}

void WindowFixture::waitForColor(QPoint place, const QColor &color)
{
    waitUntil([&] { return m_Screen.picture().pixelColor(place) == color || !isRunning(); });
    EXPECT_TRUE(isRunning());
}

QColor WindowFixture::colorOf(char letter)
{
    return QColor(QRgb(TAMBO::aminoAcidColor(letter).rgb()));
}

QColor WindowFixture::selectedColorOf(char letter)
{
    return QColor(QRgb(TAMBO::selectedColor(TAMBO::aminoAcidColor(letter)).rgb()));
}

QString WindowFixture::example() const
{
    return SOURCE_DIR "/examples/serine_proteases.ali";
}

QString WindowFixture::write(const QString &name, const QByteArray &text)
{
    QFile file(m_Folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(text), text.size());
    return file.fileName();
}
