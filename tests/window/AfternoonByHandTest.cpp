// SPDX-License-Identifier: GPL-3.0-or-later
// A whole afternoon by mouse and keys: structures and a sequence are opened, aligned, corrected,
// superposed, colored, searched, renamed and renumbered, made pages and a model of, saved, and
// opened again the same.
#include "CompanionByHand.h"
#include "FileReader.h"
#include "support/PrintedFile.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <algorithm>

namespace AfternoonByHandTest {

constexpr const char *kWorkbench = "Tambo";
// In the editor's menu bar.
enum Menu { FileMenu, ModelMenu, RangeMenu, SelectMenu, ColorMenu };
constexpr int kByDistance = 4;
// From the editor's corner to the last button of its tool bar.
constexpr QPoint kRealignButton(282, 39);
const QStringList kStructures = {"globin_1hho", "globin_1mbn", "globin_1oj6"};
constexpr const char *kSequence = "neuroglobin";
constexpr int kRows = 4;
// The frame around the present hit.
const QColor kPresentHit(208, 0, 112);
constexpr const char *kPages = "Pages of SeqAli";
constexpr int kModelPatience = 2 * kPatienceMilliseconds;

class AfternoonByHand : public CompanionByHand
{
public:
    static TAMBO::FileContents contentsOf(const QString &file)
    {
        TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readFile(file.toStdString());
        EXPECT_TRUE(contents.has_value()) << file.toStdString();
        TAMBO::FileContents empty;
        empty.alignments.resize(1);
        return contents.has_value() ? std::move(contents).value() : std::move(empty);
    }
    static QString lettersOf(const QString &structure)
    {
        QString letters;
        const TAMBO::FileContents contents = contentsOf(structure);
        for (const auto &residue : contents.structures.front().chains.front().residues)
            letters += residue.isAminoAcid ? QString(residue.letter) : QString();
        return letters;
    }
    static QByteArray bytesOf(const QString &name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }
    static QStringList withoutEmptyColumns(QStringList rows)
    {
        for (qsizetype column = rows.front().size(); column-- > 0;) {
            const bool isEmpty = std::ranges::all_of(
                rows, [column](const QString &row) { return row[column] == u'-'; });
            for (QString &row : rows)
                row.remove(column, isEmpty ? 1 : 0);
        }
        return rows;
    }

    void inWorkbench(const QString &keys) { m_Screen.pressKey(window(kWorkbench), keys); }
    static bool has(const QByteArray &text, const QByteArray &line, const QByteArray &then)
    {
        const qsizetype place = text.indexOf(line);
        return place >= 0 && text.indexOf(then, place) >= 0;
    }
    // With the second text behind the first one.
    void waitForLog(const QByteArray &line, const QByteArray &then = {})
    {
        QFile log(m_Folder.filePath("user/data/tambo.log"));
        QByteArray text;
        waitUntil([&] {
            if (log.isOpen() || log.open(QIODevice::ReadOnly))
                text += log.readAll();
            return has(text, line, then) || !isRunning();
        });
        EXPECT_TRUE(has(text, line, then)) << line.toStdString();
    }
    // What the editor shows, as its own Save writes it; each under a name of its own.
    QStringList saveAs(const QString &name) { return save(m_Editor, m_Folder.filePath(name)); }
    // Once residues have numbers that no structure file has, which is told.
    QStringList saveRenumberedAs(const QString &name)
    {
        const QStringList rows = saveAs(name);
        m_Screen.pressKey(window("Save"), "Return");
        waitForWindows("Save", 0);
        return rows;
    }
    // Short names stand at the right.
    [[nodiscard]] QPoint name(int row) const { return cell(row, -4); }
    void chooseInMenu(const QString &names)
    {
        m_Screen.pressKey(m_Editor, "shift+F10");
        chooseByKeys(names);
    }
    [[nodiscard]] QColor groundOf(QChar letter) const
    {
        return letter == u'-' ? QColor(Qt::white) : colorOf(letter.toLatin1());
    }
    void waitForCells(const QStringList &rows)
    {
        m_Screen.moveMouse({1919, 1079});
        waitFor([&] {
            const QImage image = m_Screen.picture();
            for (int row = 0; row < rows.size(); ++row)
                for (int column = 0; column < 40; ++column)
                    if (image.pixelColor(m_Grid.ground(row, column)) != groundOf(rows[row][column]))
                        return false;
            return true;
        });
    }

    void openTheFiles()
    {
        QStringList files;
        for (const QString &structure : kStructures) {
            files << QStringLiteral(TEST_DATA_DIR "/families/globins/") + structure + ".pdb";
            m_Letters << lettersOf(files.back());
        }
        files << QStringLiteral(SOURCE_DIR "/examples/tour/neuroglobin.fasta");
        m_Letters << QString::fromStdString(
            contentsOf(files.back()).alignments.front().rows.front().sequence.text());
        start(files);
        // The sequence's file has come as an alignment of one row, and is shown.
        m_Editor = window("Alignment Editor");
        m_Place = m_Screen.geometryOf(m_Editor);
    }
    void makeAnAlignment()
    {
        choose(m_Editor, FileMenu, 0);
        const QString dialog = window("sequences");
        for (const QString &structure : kStructures) {
            m_Screen.pressKey(dialog, "ctrl+a");
            m_Screen.typeText(dialog, structure);
            m_Screen.pressKey(dialog, "space");
        }
        m_Screen.pressKey(dialog, "Return");
        waitForWindows("sequences", 0);
        m_Grid = grid(m_Editor, m_Letters[0].left(8));
    }
    void align()
    {
        choose(m_Editor, RangeMenu, 0);
        m_Screen.activate(m_Editor);
        m_Screen.click(m_Screen.geometryOf(m_Editor).topLeft() + kRealignButton);
        waitForLog("Aligning columns", "Got Alignment");
        m_Rows = saveAs("aligned.ali");
        ASSERT_EQ(m_Rows.size(), kRows - 1);
        for (int row = 0; row < m_Rows.size(); ++row)
            EXPECT_EQ(QString(m_Rows[row]).remove('-'), m_Letters[row]);
        waitForCells(m_Rows);
    }
    // Enter takes the only match, and the row comes to where the others have it; these stay.
    void addTheSequence()
    {
        choose(m_Editor, FileMenu, 1);
        const QString dialog = window("sequences to add");
        m_Screen.typeText(dialog, kSequence);
        m_Screen.pressKey(dialog, "Return");
        waitForWindows("sequences to add", 0);
        waitForLetter(m_Grid.ground(kRows - 1, 0), m_Letters.back()[0].toLatin1());
        m_Screen.click(name(kRows - 1));
        waitForColor(m_Grid.ground(kRows - 1, 0), selectedColorOf(m_Letters.back()[0].toLatin1()));
        chooseInMenu("r e");
        waitForLog("Aligned neuroglobin to the other rows");
        m_Screen.pressKey(m_Editor, "ctrl+shift+a");
        const QStringList rows = saveAs("added.ali");
        ASSERT_EQ(rows.size(), kRows);
        EXPECT_EQ(withoutEmptyColumns(rows.mid(0, kRows - 1)), m_Rows);
        EXPECT_EQ(QString(rows.back()).remove('-'), m_Letters.back());
        m_Rows = rows;
        waitForCells(m_Rows);
    }
    // A gap goes three columns to the right, and residues come before it.
    void correctAGap()
    {
        int row = 0;
        qsizetype gap = -1;
        for (; row < kRows && gap < 0; ++row) {
            for (qsizetype i = 0; i + 3 < 36 && gap < 0; ++i)
                if (m_Rows[row][i] == u'-' && !m_Rows[row].mid(i + 1, 3).contains(u'-'))
                    gap = i;
        }
        ASSERT_GE(gap, 0) << m_Rows.join('\n').toStdString();
        --row;
        m_Screen.drag(cell(row, int(gap)), cell(row, int(gap) + 3));
        m_Rows[row].remove(gap, 1).insert(gap + 3, u'-');
        waitForCells(m_Rows);
        EXPECT_EQ(saveAs("corrected.ali"), m_Rows);
    }
    void superposeAndColor()
    {
        inWorkbench("alt+t s");
        m_Screen.pressKey(window("Superpose Structures"), "Return");
        waitForWindows("Superpose Structures", 0);
        waitForLog("Superposed");
        choose(m_Editor, ColorMenu, kByDistance);
        const QPoint place = m_Grid.ground(0, 30);
        const QColor color = groundOf(m_Rows[0][30]);
        waitFor([&] { return m_Screen.picture().pixelColor(place) != color; });
        m_Screen.pressKey(m_Editor, "ctrl+z");
        waitForCells(m_Rows);
    }
    void search()
    {
        m_Screen.pressKey(m_Editor, "ctrl+f");
        waitFor([&] { return isSettled(); });
        m_Screen.typeText(m_Editor, m_Letters[1].mid(20, 6));
        m_Screen.pressKey("Return");
        waitForColorIn(m_Place, kPresentHit);
        m_Screen.pressKey("Escape");
        waitForColorIn(m_Place, kPresentHit, false);
        m_Screen.pressKey(m_Editor, "ctrl+Home");
        m_Screen.pressKey("Escape");
    }
    // By the menus of the rows' names.
    void rename()
    {
        m_Screen.shiftClick(name(kRows - 1), 3);
        chooseByKeys("r");
        const QString dialog = window("Rename sequence neuroglobin");
        m_Screen.pressKey(dialog, "ctrl+a");
        m_Screen.typeText(dialog, "NGB_HUMAN");
        m_Screen.pressKey(dialog, "Return");
        waitForWindows("Rename sequence neuroglobin", 0);
        saveAs("renamed.ali");
        const auto rows = contentsOf(m_Folder.filePath("renamed.ali")).alignments.front().rows;
        ASSERT_EQ(rows.size(), std::size_t(kRows));
        EXPECT_EQ(rows.back().name, "NGB_HUMAN");
    }
    void renumber()
    {
        m_Screen.shiftClick(name(0), 3);
        chooseByKeys("n");
        const QString dialog = window("Renumber Residues");
        m_Screen.typeText(dialog, "501");
        // The first ends what is typed.
        m_Screen.pressKey(dialog, "Return Return");
        waitForWindows("Renumber Residues", 0);
        saveRenumberedAs("renumbered.ali");
        const auto rows = contentsOf(m_Folder.filePath("renumbered.ali")).alignments.front().rows;
        ASSERT_EQ(rows.size(), std::size_t(kRows));
        ASSERT_FALSE(rows[0].link.isUsual());
        EXPECT_EQ(rows[0].link->first, "501");
    }
    // A model is built of the second row on the structure of the first.
    void model()
    {
        m_Screen.click(name(kRows - 1));
        waitForSelected(kRows - 1, 10, m_Rows.back()[10].toLatin1());
        m_Screen.pressKey(m_Editor, "alt+Up alt+Up");
        m_Screen.pressKey(m_Editor, "ctrl+shift+a");
        m_Rows.move(kRows - 1, 1);
        waitForCells(m_Rows);
        choose(m_Editor, ModelMenu, 0);
        waitUntilWithin(kModelPatience, [&] {
            return m_Screen.findWindows(kWorkbench).size() > 1 || !isRunning();
        });
        m_Screen.pressKey("Return");
        waitForWindows(kWorkbench, 1);
        waitForLog("NGB_HUMAN: 147 of 147 residues have the coordinates of");
    }
    void makePages()
    {
        const QString file = m_Folder.filePath("pages.pdf");
        m_Screen.pressKey(m_Editor, "ctrl+shift+p");
        m_Screen.pressKey(window(kPages), "Return");
        enterFile("Export Pages", file);
        waitUntil([&] { return QFile::exists(file) || !isRunning(); });
        waitForWindows(kPages, 0);
        const PrintedFile pages(file);
        EXPECT_TRUE(pages.isPdf());
        ASSERT_GT(pages.pageCount(), 0);
        for (const QString &row : m_Rows)
            EXPECT_TRUE(pages.text(0).contains(row.left(40))) << row.toStdString();
    }
    // And out of the program.
    QByteArray saveAll()
    {
        EXPECT_EQ(saveRenumberedAs("final.ali"), m_Rows);
        const QString session = m_Folder.filePath("globins.tambo");
        inWorkbench("ctrl+alt+s");
        enterFile("Save Session", session);
        m_Screen.pressKey(window("globins.tambo – Tambo"), "ctrl+q");
        EXPECT_EQ(waitForEnd(), 0);
        return bytesOf(m_Folder.filePath("final.ali"));
    }

    // Of all rows, without gaps; and as they should stand now.
    QStringList m_Letters;
    QStringList m_Rows;
};

TEST_F(AfternoonByHand, EndsInFilesThatHoldWhatWasMeantAndOpenAgainTheSame)
{
    using Walk = void (AfternoonByHand::*)();
    const std::pair<const char *, Walk> steps[] = {
        {"open", &AfternoonByHand::openTheFiles},
        {"make an alignment", &AfternoonByHand::makeAnAlignment},
        {"align", &AfternoonByHand::align},
        {"add a sequence", &AfternoonByHand::addTheSequence},
        {"correct", &AfternoonByHand::correctAGap},
        {"superpose and color", &AfternoonByHand::superposeAndColor},
        {"search", &AfternoonByHand::search},
        {"rename", &AfternoonByHand::rename},
        {"renumber", &AfternoonByHand::renumber},
        {"model", &AfternoonByHand::model},
        {"make pages", &AfternoonByHand::makePages},
    };
    for (const auto &[what, walk] : steps) {
        SCOPED_TRACE(what);
        (this->*walk)();
        if (HasFailure())
            return;
    }
    const QByteArray saved = saveAll();
    ASSERT_FALSE(HasFailure());

    start({m_Folder.filePath("globins.tambo")});
    m_Editor = window("Alignment Editor");
    m_Place = m_Screen.geometryOf(m_Editor);
    m_Grid = grid(m_Editor, m_Rows[0].left(3));
    waitForCells(m_Rows);
    EXPECT_EQ(saveRenumberedAs("again.ali"), m_Rows);
    EXPECT_EQ(bytesOf(m_Folder.filePath("again.ali")), saved);
    // Back to the morning, and to the evening once more.
    m_Screen.pressKey(m_Editor, "ctrl+z");
    m_Screen.pressKey(m_Editor, "ctrl+shift+z");
    EXPECT_EQ(saveRenumberedAs("once-more.ali"), m_Rows);
    EXPECT_EQ(bytesOf(m_Folder.filePath("once-more.ali")), saved);
}

} // namespace AfternoonByHandTest
