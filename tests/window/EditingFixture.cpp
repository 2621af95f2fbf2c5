// SPDX-License-Identifier: GPL-3.0-or-later
#include "EditingFixture.h"

#include <QProcess>

#include <utility>

namespace {

constexpr int kNameCells = 8;
constexpr int kHeaderCells = 4;
// Of the column marks, above the first row.
constexpr int kMarkRow = -1;
// The cells beyond the alignment that are looked at too.
constexpr int kMargin = 3;
// The color of the range's marker.
constexpr QRgb kMarkerColor = qRgb(112, 132, 204);

QStringList moveTo(QPoint place)
{
    return {"mousemove", QString::number(place.x()), QString::number(place.y())};
}

// Half of the bright yellow that marks the selected.
QColor selected(const QColor &plain)
{
    return {(plain.red() + 255) / 2, (plain.green() + 255) / 2, plain.blue() / 2};
}

bool isAlike(const QColor &one, const QColor &other)
{
    return std::abs(one.red() - other.red()) <= 1 && std::abs(one.green() - other.green()) <= 1 &&
           std::abs(one.blue() - other.blue()) <= 1;
}

} // namespace

const QStringList EditingFixture::kRows = {"ACDE---FGHIKLMNP", "ACDEFGHIKLMN----",
                                           "WYACDEFGHIKLWYAC"};

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

void EditingFixture::mouse(const QStringList &words) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_Screen.display());
    process.setProcessEnvironment(environment);
    process.start("xdotool", words);
    process.waitForFinished(-1);
    EXPECT_EQ(process.exitCode(), 0) << words.join(' ').toStdString();
}

void EditingFixture::park() const
{
    mouse(moveTo({1919, 1079}));
}

void EditingFixture::shiftClick(QPoint place, int button) const
{
    mouse(QStringList{"keydown", "shift"} + moveTo(place) +
          QStringList{"click", QString::number(button), "keyup", "shift"});
}

void EditingFixture::dragWithBoth(QPoint from, QPoint to, const QString &first,
                                  const QString &other) const
{
    mouse(moveTo(from) + QStringList{"mousedown", first, "mousedown", other} +
          moveTo((from + to) / 2) + moveTo(to) + QStringList{"mouseup", other, "mouseup", first});
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

QImage EditingFixture::picture() const
{
    const QSize size = m_Grid.cell;
    const QPoint first =
        m_Grid.corner - QPoint(kNameCells * size.width(), kHeaderCells * size.height());
    const int columns = kNameCells + int(kRows[0].size()) + kMargin;
    const int rows = kHeaderCells + int(kRows.size()) + 1;
    return m_Screen.picture().copy({first, QSize(columns * size.width(), rows * size.height())});
}

// The server's file may be read while it is written: what is read twice is on the screen.
QImage EditingFixture::settledPicture() const
{
    park();
    QImage last;
    VirtualScreen::waitUntil([&] {
        QImage now = picture();
        const bool isSame = now == last;
        last = std::move(now);
        return isSame || !isRunning();
    });
    return last;
}

void EditingFixture::waitForPicture(const QImage &expected)
{
    park();
    VirtualScreen::waitUntil([&] { return picture() == expected || !isRunning(); });
    EXPECT_TRUE(isRunning());
}

bool EditingFixture::shows(const QStringList &rows, int selectedRow, int selectedColumn) const
{
    const QImage image = m_Screen.picture();
    for (int row = 0; row <= kRows.size(); ++row) {
        for (int column = 0; column < kRows[0].size() + kMargin; ++column) {
            QColor wanted = Qt::white;
            if (row < rows.size() && column < rows[row].size() && rows[row][column] != '-') {
                wanted = colorOf(rows[row][column].toLatin1());
                if (row == selectedRow || column == selectedColumn)
                    wanted = selected(wanted);
            }
            if (!isAlike(image.pixelColor(m_Grid.ground(row, column)), wanted))
                return false;
        }
    }
    return true;
}

void EditingFixture::waitForRows(const QStringList &rows, int selectedRow, int selectedColumn)
{
    park();
    VirtualScreen::waitUntil(
        [&] { return shows(rows, selectedRow, selectedColumn) || !isRunning(); });
    EXPECT_TRUE(isRunning());
}

std::pair<int, int> EditingFixture::markedColumns() const
{
    const QImage image = m_Screen.picture();
    int begin = 0;
    int end = 0;
    for (int column = 0; column < kRows[0].size(); ++column) {
        // Left of the mark's letter.
        const QPoint place(m_Grid.ground(kMarkRow, column).x(), mark(column).y());
        if (image.pixel(place) != kMarkerColor)
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
    VirtualScreen::waitUntil(
        [&] { return markedColumns() == std::pair(begin, end) || !isRunning(); });
    EXPECT_TRUE(isRunning());
}

void EditingFixture::waitForLine(const QByteArray &line)
{
    VirtualScreen::waitUntil([&] { return linesWith(line) > 0 || !isRunning(); });
    EXPECT_EQ(linesWith(line), 1) << line.toStdString();
}

qsizetype EditingFixture::linesWith(const QByteArray &line)
{
    m_Lines += m_Program.readAllStandardError();
    return m_Lines.count(line);
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
    undo();
    waitForPicture(m_Before);
}

QStringList EditingFixture::withRow(int row, const QString &text)
{
    QStringList rows = kRows;
    rows[row] = text;
    return rows;
}
