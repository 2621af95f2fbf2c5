// SPDX-License-Identifier: GPL-3.0-or-later
// The tour of docs/tour.md, step by step with mouse and keys, with its files and the real programs.
#include "FileReader.h"
#include "WindowFixture.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QRegularExpression>

#include <cmath>
#include <limits>
#include <ostream>

namespace TourByHandTest {

constexpr const char *kWorkbench = "Tambo";
constexpr const char *kEditor = "Alignment Editor";
constexpr const char *kView = "Structure View";
// In the editor's menu bar.
enum Menu { FileMenu, ModelMenu, RangeMenu, SelectMenu, ColorMenu };
constexpr int kByDistance = 4;
// From the editor's corner to the last button of its tool bar.
constexpr QPoint kRealignButton(282, 39);
// From the begin of a row, in cells.
constexpr int kName = -4;
// Three gaps behind the part of myoglobin that is looked for, and where they are to begin.
constexpr const char *kAroundHistidine = "GHHEAELKPLAQSHATKHK";
constexpr int kGaps = 19;
constexpr int kLoop = 0;
// The gap of neuroglobin, and where it is to go.
constexpr int kGap = 13;
constexpr int kGapBehind = 19;
constexpr int kHistidine = 16;
// The engine computes for some seconds when it has a processor to itself.
constexpr int kModelPatience = 2 * kPatienceMilliseconds;

// What the page has in bold and as code, in its order, is what the user does.
struct Step
{
    QString heading;
    QStringList words;

    bool operator==(const Step &) const = default;
};

std::ostream &operator<<(std::ostream &stream, const Step &step)
{
    return stream << step.heading.toStdString() << ": " << step.words.join(" | ").toStdString();
}

std::vector<Step> stepsOfPage()
{
    QFile file(SOURCE_DIR "/docs/tour.md");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList parts = QString::fromUtf8(file.readAll()).split("\n## ");
    std::vector<Step> steps;
    for (const QString &part : parts.mid(1)) {
        Step step{part.section('\n', 0, 0), {}};
        static const QRegularExpression words("\\*\\*([^*]+)\\*\\*|`([^`]+)`");
        for (auto found = words.globalMatch(part.section('\n', 1)); found.hasNext();) {
            const QRegularExpressionMatch match = found.next();
            step.words << match.captured(1) + match.captured(2);
        }
        steps.push_back(step);
    }
    return steps;
}

class TourByHand : public WindowFixture
{
public:
    static QString file(const QString &name)
    {
        return QStringLiteral(SOURCE_DIR "/examples/tour/") + name;
    }
    static TAMBO::FileContents contentsOf(const QString &file)
    {
        TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readFile(file.toStdString());
        EXPECT_TRUE(contents.has_value()) << file.toStdString();
        return contents.has_value() ? std::move(contents).value() : TAMBO::FileContents();
    }
    void waitForLog(const QByteArray &line)
    {
        QFile log(m_Folder.filePath("user/data/tambo.log"));
        QByteArray text;
        waitUntil([&] {
            if (log.isOpen() || log.open(QIODevice::ReadOnly))
                text += log.readAll();
            return text.contains(line) || !isRunning();
        });
        EXPECT_TRUE(text.contains(line)) << line.toStdString();
    }
    void inWorkbench(const QString &keys) { m_Screen.pressKey(window(kWorkbench), keys); }
    void waitForLetter(int row, int column, char letter)
    {
        waitForColor(m_Grid.ground(row, column), letter == '-' ? Qt::white : colorOf(letter));
    }

    void openTheFiles()
    {
        inWorkbench("ctrl+o");
        enterFile("Open", QString("\"%1\" \"%2\" \"%3\"")
                              .arg(file("hemoglobin.pdb"), file("myoglobin.pdb"),
                                   file("neuroglobin.fasta")));
        waitForLog("hemoglobin.pdb: structure hemoglobin, 1 chain");
        waitForLog("myoglobin.pdb: structure myoglobin, 1 chain");
        waitForLog("neuroglobin.fasta: alignment neuroglobin, 1 × 147");
    }
    void makeAnAlignment()
    {
        inWorkbench("ctrl+n");
        m_Screen.pressKey(window("Sequences of a New Alignment"), "Return");
        waitForWindows("Sequences of a New Alignment", 0);
        m_Editor = window(kEditor);
        m_Grid = grid(m_Editor, "VLSPADKT");
        waitForLetter(1, 3, 'E');
        waitForLetter(2, 0, 'R');
    }
    void orderTheRows()
    {
        m_Screen.drag(m_Grid.middle(0, kName), m_Grid.middle(2, kName));
        waitForLetter(0, 3, 'E');
        waitForLetter(1, 0, 'R');
        waitForColor(m_Grid.ground(2, 0), selectedColorOf('V'));
        m_Screen.pressKey(m_Editor, "ctrl+shift+a");
        waitForLetter(2, 0, 'V');
    }
    void align()
    {
        choose(m_Editor, RangeMenu, 0);
        m_Screen.activate(m_Editor);
        m_Screen.click(m_Screen.geometryOf(m_Editor).topLeft() + kRealignButton);
        waitForLetter(1, 0, '-');
        waitForLetter(1, 3, 'R');
    }
    void seeTheStructures()
    {
        inWorkbench("alt+t Down Return");
        // Out of the way of the editor's cells.
        m_Screen.moveWindow(window(kView), {20, 640});
    }
    void superpose()
    {
        inWorkbench("alt+t s");
        m_Screen.pressKey(window("Superpose Structures"), "Return");
        waitForWindows("Superpose Structures", 0);
        waitForLog("Superposed hemoglobin_A on myoglobin_A: core RMSD 1.");
        const QColor color = colorOf('V');
        choose(m_Editor, ColorMenu, kByDistance);
        waitUntil([&] {
            return m_Screen.picture().pixelColor(m_Grid.ground(0, 0)) != color || !isRunning();
        });
        m_Screen.pressKey(m_Editor, "ctrl+z");
        waitForLetter(0, 0, 'V');
    }
    void findTheHistidine()
    {
        m_Screen.pressKey(m_Editor, "ctrl+g");
        waitUntil([this] { return isSettled() || !isRunning(); });
        m_Screen.typeText(m_Editor, "myoglobin_A:93");
        m_Screen.pressKey("Return");
        m_Grid = grid(m_Editor, kAroundHistidine);
        m_Screen.pressKey(m_Editor, "Escape");
        m_Grid = grid(m_Editor, kAroundHistidine);
        waitForLetter(1, kGap, '-');
        waitForLetter(2, kGap, 'H');
        waitForLetter(1, kGap + 4, 'H');
    }
    void correctByHand()
    {
        m_Screen.activate(m_Editor);
        m_Screen.drag(m_Grid.middle(0, kGaps), m_Grid.middle(0, kLoop), 2);
        waitForLetter(0, kHistidine, 'H');
        m_Screen.drag(m_Grid.middle(2, kGaps), m_Grid.middle(2, kLoop), 2);
        waitForLetter(2, kHistidine, 'H');
        m_Screen.drag(m_Grid.middle(1, kGap), m_Grid.middle(1, kGapBehind));
        waitForLetter(1, kHistidine, 'H');
        waitForLetter(1, kGapBehind, '-');
    }
    void saveTheSession()
    {
        const QString session = m_Folder.filePath("globins.tambo");
        inWorkbench("ctrl+alt+s");
        enterFile("Save Session", session);
        waitUntil([&] { return QFile::exists(session) || !isRunning(); });
        EXPECT_TRUE(isRunning());
    }
    void buildTheModel()
    {
        // The workbench has the session's name now, and the box that tells the end its own.
        choose(m_Editor, ModelMenu, 0);
        waitUntilWithin(kModelPatience, [&] {
            return !m_Screen.findWindows(kWorkbench).isEmpty() || !isRunning();
        });
        m_Screen.pressKey(window(kWorkbench), "Return");
        waitForWindows(kWorkbench, 0);
        waitForLog("neuroglobin: 147 of 147 residues have the coordinates of neuroglobin on "
                   "myoglobin_A");
    }

    QString m_Editor;
    CellGrid m_Grid;
};

TEST_F(TourByHand, TheFirstPageAndTheMenuHelpLeadToIt)
{
    start({});
    inWorkbench("alt+u");
    m_Screen.pressKey(window("Help: A tour"), "Escape");
    waitForWindows("Help: A tour", 0);
    inWorkbench("alt+h t");
    window("Help: A tour");
}

const TAMBO::AtomRecord *atomOf(const TAMBO::FileContents &contents, char letter,
                                const std::string &name, int number)
{
    for (const TAMBO::ResidueRecord &residue : contents.structures.front().chains.front().residues)
        for (const TAMBO::AtomRecord &atom : residue.atoms)
            if (residue.letter == letter && atom.name == name && residue.number.number() == number)
                return &atom;
    return nullptr;
}

double distance(const TAMBO::AtomRecord *a, const TAMBO::AtomRecord *b)
{
    if (a == nullptr || b == nullptr)
        return std::numeric_limits<double>::infinity();
    const TAMBO::Vertex &from = a->position;
    const TAMBO::Vertex &to = b->position;
    return std::hypot(from.x() - to.x(), from.y() - to.y(), from.z() - to.z());
}

TEST_F(TourByHand, EachStepOfThePageDoesWhatItSays)
{
    using Walk = void (TourByHand::*)();
    const std::vector<std::pair<Step, Walk>> walked = {
        {{"1. Open the files",
          {"File, Open…", "hemoglobin.pdb", "myoglobin.pdb", "neuroglobin.fasta"}},
         &TourByHand::openTheFiles},
        {{"2. Make an alignment", {"File, New Alignment…", "OK"}}, &TourByHand::makeAnAlignment},
        {{"3. Put the rows in order", {"hemoglobin_A", "neuroglobin", "Alignment, Select, None"}},
         &TourByHand::orderTheRows},
        {{"4. Let a program align them", {"Range, Full", "Realign"}}, &TourByHand::align},
        {{"5. See the structures", {"Tools, Structure View"}}, &TourByHand::seeTheStructures},
        {{"6. Superpose them", {"Tools, Superpose…", "Superpose", "Color, By Distance"}},
         &TourByHand::superpose},
        {{"7. Find what has to stand together", {"Alignment, Go To…", "myoglobin_A:93", "h"}},
         &TourByHand::findTheHistidine},
        {{"8. Correct the alignment by hand",
          {"HATKHK", "KKK", "KKK---GHH", "AHV---DDM", "GRKHRA", "H"}},
         &TourByHand::correctByHand},
        {{"9. Save your work", {"File, Save Session"}}, &TourByHand::saveTheSession},
        {{"10. Build the model", {"Model, Kestram"}}, &TourByHand::buildTheModel},
    };
    std::vector<Step> steps;
    for (const auto &[step, walk] : walked)
        steps.push_back(step);
    ASSERT_EQ(stepsOfPage(), steps);

    start({});
    for (const auto &[step, walk] : walked) {
        SCOPED_TRACE(step.heading.toStdString());
        (this->*walk)();
        if (HasFailure())
            return;
    }

    // What the job was given is the alignment that was corrected.
    const TAMBO::FileContents job = contentsOf(m_Folder.filePath("user/cache/tmp/seq.ali"));
    const auto &rows = job.alignments.front().rows;
    EXPECT_NE(rows.at(0).sequence.text().find("ILKKK---GHHEAELKPLAQSHATKHKIPIK"),
              std::string::npos);
    EXPECT_NE(rows.at(1).sequence.text().find("VTNVEDLSSLEEYLASLGRKHRA-VGVKLSS"),
              std::string::npos);
    // The promise of the last step.
    const TAMBO::FileContents model = contentsOf(m_Folder.filePath("user/cache/tmp/model.pdb"));
    const TAMBO::FileContents known = contentsOf(file("myoglobin.pdb"));
    const TAMBO::AtomRecord *const iron = atomOf(known, 'X', "FE", 155);
    EXPECT_NEAR(distance(atomOf(known, 'H', "NE2", 93), iron), 2.2, 0.05);
    EXPECT_NEAR(distance(atomOf(model, 'H', "NE2", 94), iron), 2.4, 0.2);
}

} // namespace TourByHandTest
