// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompanionByHand.h"

#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace {

constexpr char kLastLetter = 'W';
// The cells of it that have no letters of the title.
constexpr int kLinesOfHeader = 3;
constexpr QPoint kAside(1910, 1070);

} // namespace

CompanionByHand::~CompanionByHand() = default;

QByteArray CompanionByHand::row(int number)
{
    constexpr char kLetters[] = "ADGKCHPQ";
    QByteArray text;
    for (int column = 0; column + 1 < kColumnCount; ++column)
        text += kLetters[(column + 3 * number) % 8];
    if (std::ranges::find(kHitRows, number) != std::end(kHitRows))
        text.replace(kHitColumn, 6, "YN--YN");
    return text + kLastLetter;
}

QByteArray CompanionByHand::wholeText()
{
    QByteArray text;
    for (int number = 0; number < kRowCount; ++number)
        text +=
            ">sequence_" + QByteArray::number(number) + "_of_the_example\n" + row(number) + '\n';
    return text;
}

void CompanionByHand::open(const QByteArray &text, const QString &letters)
{
    start({write("hand.fasta", text)});
    m_Editor = window("Alignment Editor");
    m_Grid = grid(m_Editor, letters);
    m_Place = m_Screen.geometryOf(m_Editor);
}

void CompanionByHand::openWithAMark()
{
    const QDir from(SOURCE_DIR "/examples");
    for (const QString &name : from.entryList({"*.pdb"}))
        EXPECT_TRUE(QFile::copy(from.filePath(name), m_Folder.filePath(name)));
    QFile file(example());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray text = file.readAll();
    const QByteArray begin = "IVGGYECRKNSA";
    const qsizetype place = text.indexOf(begin);
    ASSERT_GE(place, 0);
    text[place + kMarked] = 'W';
    start({write("other.ali", text)});
    m_Editor = window("Alignment Editor");
    m_Grid = grid(m_Editor, QString::fromLatin1(text.mid(place, begin.size())));
    m_Place = m_Screen.geometryOf(m_Editor);
}

void CompanionByHand::chooseByKeys(const QString &names)
{
    waitFor([&] { return !m_Screen.findPopups().isEmpty(); });
    m_Screen.pressKey(names);
    waitFor([&] { return m_Screen.findPopups().isEmpty(); });
}

QPoint CompanionByHand::corner() const
{
    return {m_Place.left() + 20, m_Grid.corner.y() - kLinesOfHeader * m_Grid.cell.height()};
}

QRect CompanionByHand::lowerPart() const
{
    QRect part = m_Place;
    part.setTop(m_Place.center().y());
    return part;
}

int CompanionByHand::widthAround(QPoint place, char letter) const
{
    const QImage image = m_Screen.picture();
    const QColor color = colorOf(letter);
    const auto isOfCell = [&](QPoint at) {
        return image.valid(at) && image.pixelColor(at) == color;
    };
    const auto reach = [&](QPoint from, int step) {
        int steps = 0;
        while (isOfCell(from + QPoint(step * (steps + 1), 0)))
            ++steps;
        return steps;
    };
    int width = 0;
    for (int y = place.y() - m_Grid.cell.height(); y < place.y() + m_Grid.cell.height(); ++y) {
        const QPoint at(place.x(), y);
        if (isOfCell(at))
            width = std::max(width, reach(at, -1) + 1 + reach(at, 1));
    }
    return width;
}

int CompanionByHand::cellWidth() const
{
    return widthAround(m_Grid.corner, row(0)[0]);
}

void CompanionByHand::waitFor(const std::function<bool()> &condition)
{
    waitUntil([&] { return condition() || !isRunning(); });
    EXPECT_TRUE(isRunning());
}

void CompanionByHand::waitForCellWidth(const std::function<bool(int)> &isRight)
{
    waitFor([&] { return isRight(cellWidth()); });
}

void CompanionByHand::waitForLetter(QPoint place, char letter)
{
    waitForColor(place, colorOf(letter));
}

bool CompanionByHand::isSelected(int row, int column, char letter) const
{
    const QColor shown = m_Screen.picture().pixelColor(m_Grid.ground(row, column));
    const QColor marked = selectedColorOf(letter);
    // Mixing rounds.
    return std::abs(shown.red() - marked.red()) <= 1 &&
           std::abs(shown.green() - marked.green()) <= 1 &&
           std::abs(shown.blue() - marked.blue()) <= 1;
}

void CompanionByHand::waitForSelected(int row, int column, char letter, bool isSelected)
{
    if (isSelected)
        waitFor([&] { return this->isSelected(row, column, letter); });
    else
        waitForColor(m_Grid.ground(row, column), colorOf(letter));
}

QPoint CompanionByHand::placeOf(const QColor &color, const QRect &area) const
{
    const QImage image = m_Screen.picture(area).convertToFormat(QImage::Format_RGB32);
    const auto isOfColor = [&](int x, int y) {
        return x < image.width() && (image.pixel(x, y) & RGB_MASK) == (color.rgb() & RGB_MASK);
    };
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!isOfColor(x, y))
                continue;
            int end = x;
            while (isOfColor(end, y))
                ++end;
            return area.topLeft() + QPoint((x + end) / 2, y);
        }
    }
    return {};
}

void CompanionByHand::waitForColorIn(const QRect &area, const QColor &color, bool isThere)
{
    waitFor([&] {
        const QImage image = m_Screen.picture(area).convertToFormat(QImage::Format_RGB32);
        bool isFound = false;
        for (int y = 0; y < image.height() && !isFound; ++y) {
            const auto *const line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
            isFound = std::any_of(line, line + image.width(), [&](QRgb pixel) {
                return (pixel & RGB_MASK) == (color.rgb() & RGB_MASK);
            });
        }
        return isFound == isThere;
    });
}

void CompanionByHand::waitForLastColumn(bool isInSight)
{
    QRect cells = m_Place;
    cells.setTopLeft(m_Grid.corner);
    cells.setHeight(m_Grid.cell.height());
    waitForColorIn(cells, colorOf(kLastLetter), isInSight);
}

void CompanionByHand::waitForPicture(const QRect &area, const QImage &picture, bool isSame)
{
    waitFor([&] { return (m_Screen.picture(area) == picture) == isSame; });
}

QImage CompanionByHand::settledEditor() const
{
    m_Screen.moveMouse(kAside);
    return settled([this] { return m_Screen.picture(m_Place); });
}

void CompanionByHand::expectKeyboardIsAtTheCells()
{
    m_Screen.pressKey("ctrl+Home");
    waitForLastColumn(false);
    m_Screen.pressKey("End");
    waitForLastColumn(true);
}
