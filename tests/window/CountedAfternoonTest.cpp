// SPDX-License-Identifier: GPL-3.0-or-later
// Does what the table of docs/afternoon.md says, action by action, with nothing in between: no
// window is given the keyboard but by what stands there.
#include "CountedAfternoon.h"
#include "CompanionByHand.h"
#include "FileReader.h"
#include "support/PrintedFile.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <map>

namespace CountedAfternoonTest {

constexpr const char *kWorkbench = "Tambo";
constexpr const char *kEditor = "Alignment Editor";
// From the corners of the windows to their menus and buttons, and to the entry of a menu that is
// as many down.
constexpr QPoint kModelMenu(62, 9);
constexpr QPoint kColorMenu(215, 9);
constexpr QPoint kToolsMenu(141, 9);
constexpr QPoint kConservation(330, 39);
constexpr QPoint kFirstEntry(30, 11);
constexpr int kEntryHeight = 22;
const QStringList kStructures = {"globin_1h97", "globin_1hho", "globin_1mbn", "globin_1urv",
                                 "globin_2oif"};
constexpr const char *kAlpha =
    ">alpha\nVLSPADKTNVKAAWGKVGAHAGEYGAEALERMFLSFPTTKTYFPHFDLSHGSAQVKGHGKKVADALTNAVAH\n"
    "VDDMPNALSALSDLHAHKLRVDPVNFKLLSHCLLVTLAAHLPAEFTPAVHASLDKFLASVSTVLTSKYR\n";
constexpr const char *kLegume = ">legume\nGALTESQAALVKSSWEEFNANIPKHTHRFFILVLEIAPAA\n";
// In a dialog, below the line where the caret blinks.
constexpr int kListBegin = 65;
// From the begin of a row, in cells.
constexpr int kName = -4;
constexpr int kAdded = 7;
const QColor kNear(0, 0, 255);
const QColor kConserved(0x1f, 0x5f, 0xa8);
const QColor kHighScore(0xef, 0x8a, 0x62);
const QColor kPresentHit(208, 0, 112);
constexpr int kModelPatience = 2 * kPatienceMilliseconds;

class CountedAfternoon : public CompanionByHand
{
public:
    CountedAfternoon()
    {
        const QString another = m_Folder.filePath("neuroglobin.fasta");
        EXPECT_TRUE(QFile::copy(SOURCE_DIR "/examples/tour/neuroglobin.fasta", another));
        QString files;
        for (const QString &structure : kStructures)
            files +=
                QStringLiteral("\"" TEST_DATA_DIR "/families/globins/%1.pdb\" ").arg(structure);
        files += '"' + write("alpha.fasta", kAlpha) + "\" ";
        files += '"' + write("legume.fasta", kLegume) + '"';
        m_Texts = {{"the names of the files", files},
                   {"the name of another file", another},
                   {"a name for the pages", m_Folder.filePath("pages.pdf")},
                   {"a name for the export", m_Folder.filePath("globins.fasta")},
                   {"a name for the alignment", m_Folder.filePath("globins.ali")},
                   {"a name for the session", m_Folder.filePath("globins.tambo")}};
    }

    // Nothing moves on the screen any more.
    void settle()
    {
        waitUntil([this] { return !m_Screen.activeWindow().isEmpty() || !isRunning(); });
        static_cast<void>(settled([this] { return m_Screen.picture(); }));
    }
    void startInTheWorkbench()
    {
        start({});
        m_Workbench = window(kWorkbench);
        m_Screen.activate(m_Workbench);
        settle();
    }
    [[nodiscard]] QPoint inEditor(QPoint place) const { return m_Place.topLeft() + place; }
    QPoint inWorkbench(QPoint place) { return m_Screen.geometryOf(m_Workbench).topLeft() + place; }
    // Of the menu that has come below the menu bar; a tool tip may be somewhere else.
    QPoint entry(int number)
    {
        QPoint corner;
        waitFor([&] {
            for (const QString &popup : m_Screen.findPopups()) {
                corner = m_Screen.geometryOf(popup).topLeft();
                const int below = corner.y() - m_Place.top();
                if (below > kModelMenu.y() && below < kConservation.y() - kModelMenu.y())
                    return true;
            }
            return false;
        });
        return corner + kFirstEntry + QPoint(0, number * kEntryHeight);
    }
    [[nodiscard]] QPoint name(int row) const { return cell(row, kName); }
    QPoint placeOf(const QString &what)
    {
        const std::map<QString, std::function<QPoint()>> places = {
            {"Model", [this] { return inEditor(kModelMenu); }},
            {"Color", [this] { return inEditor(kColorMenu); }},
            {"Kestram", [this] { return entry(0); }},
            {"By Distance", [this] { return entry(4); }},
            {"Conservation", [this] { return inEditor(kConservation); }},
            {"Tools", [this] { return inWorkbench(kToolsMenu); }},
            {"the added name", [this] { return name(kAdded); }},
            {"the first name", [this] { return name(0); }},
            {"the corner", [this] { return corner(); }},
        };
        const auto found = places.find(what);
        EXPECT_NE(found, places.end()) << what.toStdString();
        return found == places.end() ? QPoint() : found->second();
    }

    // A gap before three residues, near the begin; found once.
    QPoint gap()
    {
        const QImage image = settledEditor();
        const auto isGap = [&](int row, int column) {
            return image.pixelColor(m_Grid.ground(row, column) - m_Place.topLeft()) == Qt::white;
        };
        for (int row = 0; row < kAdded; ++row)
            for (int column = 5; column < 40; ++column)
                if (isGap(row, column) && !isGap(row, column + 1) && !isGap(row, column + 2) &&
                    !isGap(row, column + 3))
                    return {column, row};
        ADD_FAILURE() << "no gap";
        return {};
    }
    // A button that is pressed by its letter stays down for a moment before it does anything.
    void press(const QString &key)
    {
        QRect list = m_Screen.geometryOf(m_Screen.activeWindow());
        list.adjust(0, kListBegin, 0, -list.height() / 2);
        const QImage before = settled([&] { return m_Screen.picture(list); });
        m_Screen.pressKey(key);
        if (key.startsWith("alt+"))
            waitFor([&] { return m_Screen.picture(list) != before; });
    }
    // Names that are offered to complete it, which may come at any time, can take a key.
    void enterName(const QString &text)
    {
        m_Screen.pasteText(m_Screen.activeWindow(), text);
        settle();
        while (!m_Screen.findPopups().isEmpty() && isRunning()) {
            m_Screen.pressKey("Escape");
            settle();
        }
    }
    // A menu closes by itself when the window manager gives its window the keyboard only then.
    void clickAt(const QString &what)
    {
        const bool isMenu = QStringList{"Model", "Color", "Tools"}.contains(what);
        do {
            m_Screen.click(placeOf(what));
            settle();
        } while (isMenu && m_Screen.findPopups().isEmpty() && isRunning());
    }
    void perform(const QString &action)
    {
        static const QRegularExpression keys("^((Ctrl|Alt|Shift)\\+)*(Enter|Escape|Tab|[A-Z])$");
        static const QRegularExpression text("^type (?:`([^`]+)`|(.+))$");
        if (keys.match(action).hasMatch()) {
            QString key = action.toLower();
            press(key.replace("enter", "Return").replace("escape", "Escape").replace("tab", "Tab"));
        } else if (const auto typed = text.match(action); typed.hasMatch()) {
            const QString named = typed.captured(2);
            EXPECT_TRUE(named.isEmpty() || m_Texts.contains(named)) << action.toStdString();
            if (named.isEmpty())
                m_Screen.typeText(m_Screen.activeWindow(), typed.captured(1));
            else
                enterName(m_Texts.at(named));
        } else if (action == "drag the gap three columns to the right") {
            m_Gap = gap();
            m_Screen.drag(cell(m_Gap.y(), m_Gap.x()), cell(m_Gap.y(), m_Gap.x() + 3));
        } else if (action == "drag the added name onto the second") {
            m_Screen.drag(name(kAdded), name(1));
        } else if (action.startsWith("Shift+right-click ")) {
            m_Screen.shiftClick(placeOf(action.section(' ', 1)), 3);
        } else if (action.startsWith("right-click ")) {
            m_Screen.click(placeOf(action.section(' ', 1)), 3);
        } else if (action.startsWith("click ")) {
            clickAt(action.section(' ', 1));
            // It is the next action that closes the box which comes at the end.
            if (action.endsWith(" Kestram"))
                waitUntilWithin(kModelPatience, [this] {
                    return m_Screen.findWindows(kWorkbench).size() > 1 || !isRunning();
                });
        } else {
            ADD_FAILURE() << "what is this: " << action.toStdString();
        }
        settle();
    }

    void waitForLog(const QByteArray &line)
    {
        QFile log(m_Folder.filePath("user/data/tambo.log"));
        QByteArray text;
        waitUntilWithin(kModelPatience, [&] {
            if (log.isOpen() || log.open(QIODevice::ReadOnly))
                text += log.readAll();
            return text.contains(line) || !isRunning();
        });
        EXPECT_TRUE(text.contains(line)) << line.toStdString();
        settle();
    }
    void waitForFile(const QString &what)
    {
        waitFor([&] { return QFile::exists(m_Texts.at(what)); });
        settle();
    }
    TAMBO::FileContents contentsOf(const QString &what)
    {
        waitForFile(what);
        auto contents = TAMBO::readFile(m_Texts.at(what).toStdString());
        EXPECT_TRUE(contents.has_value());
        return contents.has_value() ? std::move(contents).value() : TAMBO::FileContents();
    }

    QString m_Workbench;
    QPoint m_Gap;
    std::map<QString, QString> m_Texts;
};

TEST(CountedAfternoonTable, CountsItsActionsAndTakesAtMostWhatOthersTake)
{
    const std::vector<CountedStep> steps = countedSteps();
    ASSERT_GE(steps.size(), 18U);
    for (const CountedStep &step : steps) {
        EXPECT_EQ(step.count, step.actions.size()) << step.name.toStdString();
        for (const std::optional<int> &count : step.elsewhere)
            EXPECT_LE(step.count, count.value_or(step.count)) << step.name.toStdString();
    }
}

TEST_F(CountedAfternoon, EachActionOfTheTableDoesItsPart)
{
    startInTheWorkbench();
    const std::map<QString, std::function<void()>> checks = {
        {"open five structures and two sequences",
         [this] { waitForLog("legume.fasta: alignment legume"); }},
        {"make an alignment",
         [this] {
             m_Editor = window(kEditor);
             m_Place = m_Screen.geometryOf(m_Editor);
             m_Grid = grid(m_Editor, "TLTKHEQD");
         }},
        {"align",
         [this] {
             waitForLog("Realigned ");
             waitForWindows("Realign", 0);
             waitFor([this] { return m_Screen.activeWindow() == m_Editor; });
             // Without the tool tip of the button, and whatever else comes by itself.
             static_cast<void>(settledEditor());
         }},
        {"add a sequence and align it to the rest",
         [this] { waitForLog("Added and aligned neuroglobin"); }},
        {"correct a gap",
         [this] {
             waitForColor(m_Grid.ground(m_Gap.y(), m_Gap.x() + 3), Qt::white);
             EXPECT_NE(m_Screen.picture().pixelColor(m_Grid.ground(m_Gap.y(), m_Gap.x())),
                       QColor(Qt::white));
         }},
        {"superpose, distant pairs left out", [this] { waitForLog("core RMSD"); }},
        {"color by distance", [this] { waitForColorIn(lowerPart(), kNear); }},
        {"color by conservation",
         [this] {
             waitForColorIn(lowerPart(), kConserved);
             waitForColorIn(lowerPart(), kNear, false);
         }},
        {"search", [this] { waitForColorIn(m_Place, kPresentHit); }},
        {"rename", [this] { waitForWindows("Rename", 0); }},
        {"renumber", [this] { waitForWindows("Renumber Residues", 0); }},
        {"build a model", [this] { waitForLog("of 147 residues have the coordinates of"); }},
        {"color by the model's score", [this] { waitForColorIn(lowerPart(), kHighScore); }},
        {"pages into a PDF file",
         [this] {
             waitForFile("a name for the pages");
             EXPECT_GT(PrintedFile(m_Texts.at("a name for the pages")).pageCount(), 0);
         }},
        {"export as FASTA",
         [this] {
             EXPECT_EQ(contentsOf("a name for the export").alignments.front().rows.size(), 8U);
         }},
        {"save the alignment",
         [this] {
             const auto rows = contentsOf("a name for the alignment").alignments.front().rows;
             ASSERT_EQ(rows.size(), 8U);
             EXPECT_EQ(rows[1].name, "NGB_HUMAN");
             EXPECT_EQ(rows[0].link->first, "501");
         }},
        {"save the session", [this] { waitForFile("a name for the session"); }},
        {"quit",
         [this] {
             waitUntil([this] { return !isRunning(); });
             EXPECT_EQ(m_Program.exitCode(), 0);
             startInTheWorkbench();
         }},
        {"reopen the session",
         [this] {
             m_Editor = window(kEditor);
             m_Place = m_Screen.geometryOf(m_Editor);
             waitForColorIn(m_Place, kHighScore);
         }},
    };
    for (const CountedStep &step : countedSteps()) {
        SCOPED_TRACE(step.name.toStdString());
        ASSERT_TRUE(checks.contains(step.name));
        for (const QString &action : step.actions) {
            SCOPED_TRACE(action.toStdString());
            perform(action);
            ASSERT_FALSE(HasFailure());
        }
        checks.at(step.name)();
        ASSERT_FALSE(HasFailure());
    }
}

} // namespace CountedAfternoonTest
