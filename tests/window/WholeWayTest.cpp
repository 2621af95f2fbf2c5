// SPDX-License-Identifier: GPL-3.0-or-later
// The whole way of an alignment by mouse and keys: from structures and a file of sequences to a
// saved alignment, and back from the file.
#include "FileReader.h"
#include "WindowFixture.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <algorithm>

namespace WholeWayTest {

constexpr const char *kEditor = "Alignment Editor";
// In the menu bar, and within the menus.
enum Menu { FileMenu = 0, RangeMenu = 2 };
enum FileEntry { MakeFromSeqs, AddSeqs, Combine, GetAlignment, Delete = 5 };
enum RangeEntry { RangeFull = 0, Renumber = 3, AddSse };
// Above the first row.
enum HeaderLine { Numbers = -4, Elements = -3, Marks = -1 };

// Of the template, between two helices.
constexpr int kLoopBegin = 43;
constexpr int kLoopEnd = 49;
// Where the target, the second sequence of its file, has nine gaps between its residues.
constexpr int kInsertion = 123;
constexpr int kInsertionLength = 9;

const QStringList kNames = {"globin_1mbn_A", "globin_1hho_A", "GLB5_PETMA",
                            "MYG_PHYCA",     "HBB_HUMAN",     "HBA_HUMAN"};

class WholeWay : public WindowFixture
{
protected:
    static QString data(const QString &name) { return QStringLiteral(TEST_DATA_DIR "/") + name; }
    static TAMBO::FileContents contentsOf(const QString &file)
    {
        TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readFile(file.toStdString());
        EXPECT_TRUE(contents.has_value());
        return contents.has_value() ? std::move(contents).value() : TAMBO::FileContents();
    }
    static QString lettersOf(const QString &structure)
    {
        QString letters;
        const TAMBO::FileContents contents = contentsOf(structure);
        for (const auto &residue : contents.structures.front().chains.front().residues)
            letters += residue.isAminoAcid ? QString(residue.letter) : QString();
        return letters;
    }
    static QStringList rowsOf(const QString &alignment)
    {
        QStringList rows;
        const TAMBO::FileContents contents = contentsOf(alignment);
        for (const auto &row : contents.alignments.front().rows)
            rows.append(QString::fromStdString(row.sequence.text()));
        return rows;
    }
    static QByteArray bytesOf(const QString &name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    static QStringList filled(QStringList rows)
    {
        qsizetype width = 0;
        for (const QString &row : rows)
            width = std::max(width, row.size());
        for (QString &row : rows)
            row = row.leftJustified(width, u'-');
        return rows;
    }

    // In a dialog that offers objects: one for each part of a name.
    void tick(const QString &caption, const QStringList &parts)
    {
        const QString dialog = window(caption);
        for (const QString &part : parts) {
            m_Screen.pressKey(dialog, "ctrl+a");
            m_Screen.typeText(dialog, part);
            m_Screen.pressKey(dialog, "space");
        }
        m_Screen.pressKey(dialog, "Return");
        waitForWindows(caption, 0);
    }
    void pick(const QString &caption, const QString &part)
    {
        m_Screen.typeText(window(caption), part);
        m_Screen.pressKey("Return");
        waitForWindows(caption, 0);
    }
    void answer(const QString &caption, const QString &text)
    {
        m_Screen.typeText(window(caption), text);
        m_Screen.pressKey("Return");
        waitForWindows(caption, 0);
    }
    void press(const QString &caption, const QString &key)
    {
        m_Screen.pressKey(window(caption), key);
        waitForWindows(caption, 0);
    }

    void park() const { m_Screen.moveMouse({1919, 1079}); }
    [[nodiscard]] int columnsInSight() const
    {
        return (m_Screen.geometryOf(m_Editor).right() - m_Grid.corner.x()) / m_Grid.cell.width() -
               2;
    }
    // Every letter on its color, every gap white, and white below.
    void waitForRows(const QStringList &rows)
    {
        park();
        const int columns = columnsInSight();
        EXPECT_GT(columns, kLoopEnd);
        waitUntil([&] {
            const QImage image = m_Screen.picture();
            bool isShown = true;
            for (int row = 0; row <= rows.size(); ++row) {
                for (int column = 0; column < columns; ++column) {
                    const QString text = row < rows.size() ? rows[row] : QString();
                    const QChar letter = column < text.size() ? text[column] : QChar(u'-');
                    const QColor wanted =
                        letter == u'-' ? QColor(Qt::white) : colorOf(letter.toLatin1());
                    isShown = isShown && image.pixelColor(m_Grid.ground(row, column)) == wanted;
                }
            }
            return isShown || !isRunning();
        });
        EXPECT_TRUE(isRunning());
    }
    // Numbers, elements and consensus, or names and cells.
    [[nodiscard]] QImage settledLines(int first, int count) const
    {
        constexpr int nameCells = 8;
        const QSize cell = m_Grid.cell;
        const int begin = first < 0 ? 0 : nameCells;
        const QRect area(m_Grid.corner - QPoint(begin * cell.width(), -first * cell.height()),
                         QSize((begin + columnsInSight()) * cell.width(), count * cell.height()));
        park();
        return settled([&] { return m_Screen.picture(area); });
    }
    // The columns of a line of the header in which something is written.
    [[nodiscard]] QList<int> writtenColumns(HeaderLine line) const
    {
        const QImage image = settledLines(line, 1);
        const int width = m_Grid.cell.width();
        QList<int> columns;
        for (int column = 0; column < columnsInSight(); ++column) {
            const QImage cell = image.copy(column * width, 0, width, image.height());
            QImage blank = cell;
            blank.fill(Qt::white);
            if (cell != blank)
                columns.append(column);
        }
        return columns;
    }
    // The picture of all that the file keeps: not the marks of the columns.
    [[nodiscard]] QList<QImage> picture() const
    {
        return {settledLines(Numbers, 3), settledLines(0, int(kNames.size()) + 1)};
    }
    void waitForLog(const QByteArray &line)
    {
        QFile file(m_Folder.filePath("user/data/tambo.log"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QByteArray text;
        waitUntil([&] {
            text += file.readAll();
            return text.contains(line) || !isRunning();
        });
        EXPECT_TRUE(text.contains(line)) << line.toStdString();
    }

    QString m_Editor;
    CellGrid m_Grid;
};

TEST_F(WholeWay, WhatIsMadeCorrectedAndSavedOpensAgainTheSame)
{
    const QString first = data("families/globins/globin_1mbn.pdb");
    const QString second = data("families/globins/globin_1hho.pdb");
    const QString target = data("alignments/fasta/easel_afa_1.fasta");
    const QStringList relatives = rowsOf(target);
    start({first, second, target});
    m_Editor = window(kEditor);
    grid(m_Editor, relatives[1].left(8));

    choose(m_Editor, FileMenu, MakeFromSeqs);
    tick("sequences", {"1mbn", "1hho"});
    QStringList rows = {lettersOf(first), lettersOf(second)};
    m_Grid = grid(m_Editor, rows[0].left(8));
    waitForRows(filled(rows));

    choose(m_Editor, FileMenu, AddSeqs);
    tick("sequences to add", {"GLB5"});
    rows.append(QString(relatives[1]).remove('-'));
    waitForRows(filled(rows));

    // Along the sequence that both have; its gaps open in all rows.
    choose(m_Editor, FileMenu, Combine);
    pick("Alignment to combine", "easel");
    for (QString &row : rows)
        row.insert(kInsertion, QString(kInsertionLength, u'-'));
    rows += {relatives[0], relatives[2], relatives[3]};
    rows = filled(rows);
    EXPECT_EQ(rows[2], relatives[1]);
    waitForRows(rows);

    // A gap, three residues to the right.
    ASSERT_EQ(rows[3].mid(8, 5), "V-LSE");
    m_Screen.drag(m_Grid.middle(3, 9), m_Grid.middle(3, 12));
    rows[3].replace(8, 5, "VLSE-");
    waitForRows(rows);

    const QImage oldNumbers = settledLines(Numbers, 1);
    choose(m_Editor, RangeMenu, RangeFull);
    choose(m_Editor, RangeMenu, Renumber);
    answer("Renumber globin_1mbn_A", "501");
    press("Renumber globin_1hho_A", "Escape");
    answer("Renumber GLB5_PETMA", "301");
    for (const QString &name : kNames.mid(3))
        press("Renumber " + name, "Return");
    EXPECT_TRUE(settledLines(Numbers, 1) != oldNumbers);

    const QList<int> oldElements = writtenColumns(Elements);
    m_Screen.click(m_Grid.middle(Marks, kLoopBegin));
    m_Screen.shiftClick(m_Grid.middle(Marks, kLoopEnd - 1), 1);
    choose(m_Editor, RangeMenu, AddSse);
    answer("Make SSE", " e ");
    // The click has selected its column too; another one takes that back.
    m_Screen.click(m_Grid.middle(Marks, kLoopBegin));
    waitForRows(rows);
    QList<int> elements = oldElements;
    for (int column = kLoopBegin; column < kLoopEnd; ++column) {
        EXPECT_FALSE(oldElements.contains(column)) << column;
        elements.append(column);
    }
    std::ranges::sort(elements);
    EXPECT_EQ(writtenColumns(Elements), elements);
    const QList<QImage> before = picture();

    const QString saved = m_Folder.filePath("SeqAli.ali");
    EXPECT_EQ(save(m_Editor, saved), rows);
    // The new numbers of a sequence without a structure are not in the file.
    press("Save", "Return");
    choose(m_Editor, FileMenu, Delete);
    const QString dialog = window("Select Alignment");
    m_Screen.pressKey(dialog, "Down");
    m_Screen.pressKey(dialog, "space");
    press("Select Alignment", "Return");
    waitForRows({});

    m_Screen.pressKey(window("Tambo"), "ctrl+o");
    enterFile("Open", saved);
    waitForLog("SeqAli.ali: alignment SeqAli, 6 × 165");
    choose(m_Editor, FileMenu, GetAlignment);
    pick("alignment", "SeqAli");
    waitForRows(rows);
    const QList<QImage> after = picture();
    EXPECT_TRUE(after[0] == before[0]) << "other numbers, elements or consensus";
    EXPECT_TRUE(after[1] == before[1]) << "other names or cells";

    const QString again = m_Folder.filePath("again.ali");
    EXPECT_EQ(save(m_Editor, again), rows);
    press("Save", "Return");
    EXPECT_EQ(bytesOf(again), bytesOf(saved));
    const TAMBO::FileContents contents = contentsOf(again);
    const std::vector<TAMBO::RowRecord> &written = contents.alignments.front().rows;
    ASSERT_EQ(written.size(), std::size_t(kNames.size()));
    for (int row = 0; row < kNames.size(); ++row)
        EXPECT_EQ(written[row].name, kNames[row].toStdString());
    const TAMBO::StructureLink renumbered{"globin_1mbn", "A", "501", "653", "A"};
    const TAMBO::StructureLink cancelled{"globin_1hho", "A", "1", "141", "A"};
    EXPECT_TRUE(*written[0].link == renumbered);
    EXPECT_TRUE(*written[1].link == cancelled);
}

} // namespace WholeWayTest
