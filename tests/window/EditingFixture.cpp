// SPDX-License-Identifier: GPL-3.0-or-later
#include "EditingFixture.h"
#include "support/WaitUntil.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr int kNameCells = 8;
constexpr int kHeaderCells = 4;
// Of the column marks, above the first row.
constexpr int kMarkRow = -1;
// The cells beyond the alignment that are looked at too.
constexpr int kMargin = 3;
// Around the pointer, larger than it.
constexpr int kPointerReach = 32;
// The color of the range's marker.
constexpr QRgb kMarkerColor = qRgb(112, 132, 204);

bool isAlike(const QColor &one, const QColor &other)
{
    return std::abs(one.red() - other.red()) <= 1 && std::abs(one.green() - other.green()) <= 1 &&
           std::abs(one.blue() - other.blue()) <= 1;
}

} // namespace

const QStringList EditingFixture::kRows = {"ACDE---FGHIKLMNP", "ACDEFGHIKLMN----",
                                           "WYACDEFGHIKLWYAC"};

EditingFixture::~EditingFixture()
{
    if (HasFailure())
        std::fprintf(stderr, "%s", m_Lines.constData());
}

void EditingFixture::open()
{
    QByteArray text;
    for (int row = 0; row < kRows.size(); ++row)
        text += QString(">row%1\n%2\n").arg(row).arg(kRows[row]).toLatin1();
    start({write("hand.fasta", text)});
    m_Editor = window("Alignment Editor");
    m_Grid = grid(m_Editor, kRows[0].left(4));
    waitForRows(kRows);
    m_Before = settledPicture();
}

void EditingFixture::park() const
{
    m_Screen.moveMouse({1919, 1079});
}

void EditingFixture::dragWithBoth(QPoint from, QPoint to, int first, int other) const
{
    m_Screen.moveMouse(from);
    m_Screen.press(first);
    m_Screen.press(other);
    m_Screen.moveMouse((from + to) / 2);
    m_Screen.moveMouse(to);
    m_Screen.release(other);
    m_Screen.release(first);
}

void EditingFixture::chooseInMenu(const QString &key)
{
    waitUntil([&] { return m_Screen.findPopups().size() == 1 || !isRunning(); });
    m_Screen.pressKey(key);
    waitUntil([&] { return m_Screen.findPopups().isEmpty() || !isRunning(); });
    EXPECT_TRUE(isRunning());
}

QPoint EditingFixture::mark(int column) const
{
    return cell(kMarkRow, column);
}

// Names end a cell's width before the cells begin.
QPoint EditingFixture::name(int row) const
{
    return cell(row, -4);
}

QImage EditingFixture::picture(const CellGrid &grid) const
{
    const QSize size = grid.cell;
    const QPoint first =
        grid.corner - QPoint(kNameCells * size.width(), kHeaderCells * size.height());
    const int columns = kNameCells + int(kRows[0].size()) + kMargin;
    const int rows = kHeaderCells + int(kRows.size()) + 1;
    return m_Screen.picture({first, QSize(columns * size.width(), rows * size.height())});
}

QImage EditingFixture::settledPicture() const
{
    park();
    return settled([this] { return picture(m_Grid); });
}

QImage EditingFixture::pointer(QPoint place) const
{
    return m_Screen.picture({place - QPoint(kPointerReach, kPointerReach),
                             QSize(2 * kPointerReach, 2 * kPointerReach)});
}

QImage EditingFixture::settledPointer(QPoint place) const
{
    return settled([this, place] { return pointer(place); });
}

void EditingFixture::waitForPicture(const QImage &expected)
{
    park();
    waitUntil([&] { return picture(m_Grid) == expected || !isRunning(); });
    EXPECT_TRUE(isRunning());
}

void EditingFixture::waitForRows(const QStringList &rows, int selectedRow, int selectedColumn)
{
    waitForRowsIn(m_Grid, rows, selectedRow, selectedColumn);
}

void EditingFixture::waitForRowsIn(const CellGrid &grid, const QStringList &rows, int selectedRow,
                                   int selectedColumn)
{
    park();
    const int columns = int(kRows[0].size()) + kMargin;
    const int lines = int(kRows.size()) + 1;
    const QRect area(grid.corner, QSize(columns * grid.cell.width(), lines * grid.cell.height()));
    const auto wanted = [&](int row, int column) {
        if (row >= rows.size() || column >= rows[row].size() || rows[row][column] == '-')
            return QColor(Qt::white);
        const char letter = rows[row][column].toLatin1();
        return row == selectedRow || column == selectedColumn ? selectedColorOf(letter)
                                                              : colorOf(letter);
    };
    waitUntil([&] {
        const QImage image = m_Screen.picture(area);
        bool isShown = true;
        for (int row = 0; row < lines; ++row) {
            for (int column = 0; column < columns; ++column) {
                const QPoint place = grid.ground(row, column) - grid.corner;
                isShown = isShown && isAlike(image.pixelColor(place), wanted(row, column));
            }
        }
        return isShown || !isRunning();
    });
    EXPECT_TRUE(isRunning());
}

void EditingFixture::waitForSelected(int row, int column)
{
    park();
    const QColor wanted = selectedColorOf(kRows[row][column].toLatin1());
    waitUntil([&] {
        const QImage image = m_Screen.picture();
        return isAlike(image.pixelColor(m_Grid.ground(row, column)), wanted) || !isRunning();
    });
    EXPECT_TRUE(isRunning());
}

std::pair<int, int> EditingFixture::markedColumns() const
{
    const QImage image = m_Screen.picture();
    int begin = 0;
    int end = 0;
    for (int column = 0; column < kRows[0].size(); ++column) {
        if (image.pixel(m_Grid.ground(kMarkRow, column)) != kMarkerColor)
            continue;
        if (begin == end)
            begin = column;
        end = column + 1;
    }
    return {begin, end};
}

void EditingFixture::waitForMarked(int begin, int end)
{
    park();
    waitUntil([&] { return markedColumns() == std::pair(begin, end) || !isRunning(); });
    EXPECT_TRUE(isRunning());
}

void EditingFixture::waitForLines(const QByteArray &line, qsizetype count)
{
    waitUntil([&] { return linesWith(line) >= count || !isRunning(); });
    EXPECT_EQ(linesWith(line), count) << line.toStdString();
}

qsizetype EditingFixture::linesWith(const QByteArray &line)
{
    m_Lines += m_Program.readAllStandardError();
    return m_Lines.count(line);
}

void EditingFixture::expectSaved(const QStringList &rows)
{
    const QString file = m_Folder.filePath(QString("%1.ali").arg(m_Saved++));
    EXPECT_EQ(save(m_Editor, file).join('\n').toStdString(), rows.join('\n').toStdString());
}

void EditingFixture::expectOneStep(const QStringList &rows)
{
    waitForRows(rows);
    const QImage after = settledPicture();
    EXPECT_NE(after, m_Before);
    undo();
    waitForPicture(m_Before);
    redo();
    waitForPicture(after);
    expectSaved(rows);
    undo();
    waitForPicture(m_Before);
}

QStringList EditingFixture::withRow(int row, const QString &text)
{
    QStringList rows = kRows;
    rows[row] = text;
    return rows;
}

QStringList EditingFixture::withGapColumn(int column)
{
    QStringList rows = kRows;
    for (QString &row : rows)
        row.insert(column, '-');
    return rows;
}

QStringList EditingFixture::withoutColumn(int column)
{
    QStringList rows = kRows;
    for (QString &row : rows)
        row.remove(column, 1);
    return rows;
}
