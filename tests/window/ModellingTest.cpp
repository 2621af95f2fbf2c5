// SPDX-License-Identifier: GPL-3.0-or-later
// From two files to a model, as a user does it with the mouse and the real modelling engine.
#include "FileReader.h"
#include "WindowFixture.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace ModellingTest {

constexpr const char *kWorkbench = "Tambo";
constexpr const char *kEditor = "Alignment Editor";
// From the window's corner to "Model" in the menu bar, and to the menu's only entry.
constexpr QPoint kModelMenu(62, 12);
constexpr QPoint kKestramEntry(75, 33);
// From the workbench's corner to the first object in the tree, and to the next one.
constexpr QPoint kFirstObject(100, 90);
constexpr QPoint kNextObject(0, 23);
// The engine computes for half a minute when it has a processor to itself.
constexpr int kModelPatience = 2 * kPatienceMilliseconds;

// Of the scores of a model.
const QList<QColor> kFifths = {QColor(0x67, 0xa9, 0xcf), QColor(0xb6, 0xd5, 0xe7),
                               QColor(0xf7, 0xf7, 0xf7), QColor(0xf6, 0xc0, 0xa3),
                               QColor(0xef, 0x8a, 0x62)};

class Modelling : public WindowFixture
{
protected:
    // The template's coordinates are there, those of the target are not.
    QStringList files()
    {
        const QString folder = SOURCE_DIR "/examples/";
        const QString structure = m_Folder.filePath("1A0J_A_superposed.pdb");
        EXPECT_TRUE(QFile::copy(folder + "1A0J_A_superposed.pdb", structure));
        TAMBO::Result<TAMBO::FileContents> family =
            TAMBO::readFile((folder + "serine_proteases.ali").toStdString());
        const auto &rows = family->alignments.at(0).rows;
        const auto pir = [](const char *name, const char *title, const TAMBO::RowRecord &row) {
            return QByteArray(">P1;") + name + '\n' + title + '\n' +
                   QByteArray::fromStdString(row.sequence.text()) + "*\n";
        };
        return {write("elastase.ali",
                      pir("1A0J_A", "structureX:1A0J_A_superposed.pdb:16:A:245:A::::", rows.at(0)) +
                          pir("elastase", "sequence:::::::::", rows.at(4))),
                structure};
    }
    void chooseKestram(const QString &editor)
    {
        const QPoint corner = m_Screen.geometryOf(editor).topLeft();
        const QColor ground = m_Screen.picture().pixelColor(corner + kKestramEntry);
        m_Screen.click(corner + kModelMenu);
        waitUntil([&] {
            return m_Screen.picture().pixelColor(corner + kKestramEntry) != ground || !isRunning();
        });
        m_Screen.click(corner + kKestramEntry);
    }
};

TEST_F(Modelling, TwoFilesBecomeAModelThatIsTheTargetsStructure)
{
    start(files());
    const QString editor = window(kEditor);
    const CellGrid grid = this->grid(editor, "IVGGYECRKNSA");
    const QPoint target = grid.ground(1, 0);
    EXPECT_EQ(m_Screen.picture().pixelColor(target), colorOf('I'));
    chooseKestram(editor);
    // The box that says that the run is complete.
    waitUntilWithin(kModelPatience,
                    [&] { return m_Screen.findWindows(kWorkbench).size() == 2 || !isRunning(); });
    const QString box = window(kWorkbench, 2);
    m_Screen.pressKey(box, "Return");
    waitForWindows(kWorkbench, 1);

    TAMBO::Result<TAMBO::FileContents> model =
        TAMBO::readFile(m_Folder.filePath("user/cache/tmp/model.pdb").toStdString());
    ASSERT_TRUE(model.has_value());
    EXPECT_EQ(model->structures.at(0).chains.at(0).residues.size(), 216U);

    // Its residues are colored by the engine's score, in one step.
    m_Screen.pressKey(editor, "shift+F10");
    waitUntil([&] { return !m_Screen.findPopups().isEmpty() || !isRunning(); });
    m_Screen.pressKey("c");
    waitUntil([&] { return m_Screen.findPopups().isEmpty() || !isRunning(); });
    waitUntil(
        [&] { return kFifths.contains(m_Screen.picture().pixelColor(target)) || !isRunning(); });
    EXPECT_TRUE(kFifths.contains(m_Screen.picture().pixelColor(target)));
    EXPECT_EQ(m_Screen.picture().pixelColor(grid.ground(0, 0)), colorOf('I'));
    m_Screen.pressKey(editor, "ctrl+z");
    waitForColor(target, colorOf('I'));

    // Picking the model in the tree marks the target's row.
    const QPoint corner = m_Screen.geometryOf(window(kWorkbench)).topLeft();
    m_Screen.click(corner + kFirstObject + 2 * kNextObject);
    waitUntil(
        [&] { return m_Screen.picture().pixelColor(target) != colorOf('I') || !isRunning(); });
    EXPECT_EQ(m_Screen.picture().pixelColor(grid.ground(0, 0)), colorOf('I'));
    m_Screen.pressKey(editor, "ctrl+z");
    waitForColor(target, colorOf('I'));
    // Nothing of the user's was changed.
    m_Screen.pressKey(window(kWorkbench), "ctrl+q");
    EXPECT_EQ(waitForEnd(), 0);
}

TEST_F(Modelling, AJobGoesOnWhenTheWorkbenchIsQuit)
{
    QDir(m_Folder.path()).mkdir("bin");
    const QString go = m_Folder.filePath("go");
    ASSERT_EQ(mkfifo(go.toUtf8().constData(), 0600), 0);
    const QString program = write("bin/kestram", "#!/bin/sh\n"
                                                 "trap 'echo signal > \"$NOTES/signal\"' TERM HUP\n"
                                                 "echo up > \"$NOTES/up\"\n"
                                                 "read -r _ < \"$NOTES/go\"\n"
                                                 "echo end > \"$NOTES/end\"\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    QProcessEnvironment environment = m_Program.processEnvironment();
    environment.insert("PATH", m_Folder.filePath("bin") + ":" + environment.value("PATH"));
    environment.insert("NOTES", m_Folder.path());
    environment.insert("KESTRAM", "1");
    m_Program.setProcessEnvironment(environment);

    start(files());
    const QString editor = window(kEditor);
    grid(editor, "IVGGYECRKNSA");
    chooseKestram(editor);
    const auto exists = [this](const char *name) {
        return QFile::exists(m_Folder.filePath(QString::fromLatin1(name)));
    };
    waitUntil([&] { return exists("up") || !isRunning(); });
    m_Screen.pressKey(window(kWorkbench), "ctrl+q");
    // "Leave it running", of the question about it.
    const QString question = window(kWorkbench, 2);
    waitUntil([&] { return isSettled(); });
    m_Screen.pressKey(question, "alt+l Return");
    EXPECT_EQ(waitForEnd(), 0);
    EXPECT_FALSE(exists("end"));
    QFile pipe(go);
    ASSERT_TRUE(pipe.open(QIODevice::WriteOnly));
    pipe.write("\n");
    pipe.close();
    waitUntil([&] { return exists("end"); });
    EXPECT_FALSE(exists("signal"));
    EXPECT_FALSE(exists("user/cache/tmp/model.pdb"));
}

// The engine's place has a program that makes the template the model.
TEST_F(Modelling, AFamilyIsBuiltFromTheMenuAndItsModelsAreOpened)
{
    QDir(m_Folder.path()).mkdir("bin");
    const QString engine = write("bin/promod", "#!/bin/sh\ncp template.pdb model.pdb\n");
    QFile::setPermissions(engine, QFile::ReadOwner | QFile::ExeOwner);
    QProcessEnvironment environment = m_Program.processEnvironment();
    environment.insert("PATH", m_Folder.filePath("bin") + ":" + environment.value("PATH"));
    m_Program.setProcessEnvironment(environment);
    TAMBO::Result<TAMBO::FileContents> family =
        TAMBO::readFile(SOURCE_DIR "/examples/serine_proteases.ali");
    const QByteArray letters =
        QByteArray::fromStdString(family->alignments.at(0).rows.at(0).sequence.letters);
    const QString structure = m_Folder.filePath("1A0J_A_superposed.pdb");
    ASSERT_TRUE(QFile::copy(SOURCE_DIR "/examples/1A0J_A_superposed.pdb", structure));
    const QString rows =
        write("twins.ali", ">P1;1A0J_A\nstructureX:1A0J_A_superposed.pdb:16:A:245:A::::\n" +
                               letters + "*\n>P1;alpha\nsequence:::::::::\n" + letters +
                               "*\n>P1;beta\nsequence:::::::::\n" + letters + "*\n");

    start({rows, structure});
    const QString editor = window(kEditor);
    const CellGrid grid = this->grid(editor, "IVGGYECRKNSA");
    const QString workbench = window(kWorkbench);
    m_Screen.pressKey(workbench, "alt+t");
    waitUntil([&] { return !m_Screen.findPopups().isEmpty() || !isRunning(); });
    m_Screen.pressKey("f");
    const QString dialog = window("Models of a Family");
    waitUntil([&] { return isSettled(); });
    m_Screen.pressKey(dialog, "alt+b");
    const QString models = window("Models of twins");
    // Beside the editor.
    m_Screen.moveWindow(models, QPoint(600, 700));
    const auto exists = [this](const char *name) {
        return QFile::exists(m_Folder.filePath(QString::fromLatin1(name)));
    };
    waitUntilWithin(kModelPatience, [&] {
        return (exists("twins-models/models/alpha.pdb") &&
                exists("twins-models/models/beta.pdb")) ||
               !isRunning();
    });
    // The models are opened as soon as the window has seen them.
    const QPoint corner = m_Screen.geometryOf(workbench).topLeft();
    const QPoint beta = grid.ground(2, 0);
    waitForColor(beta, colorOf('I'));
    waitUntil([&] {
        m_Screen.pressKey(models, "alt+o");
        m_Screen.activate(workbench);
        m_Screen.click(corner + kFirstObject + 3 * kNextObject);
        return m_Screen.picture().pixelColor(beta) != colorOf('I') || !isRunning();
    });
    EXPECT_EQ(m_Screen.picture().pixelColor(grid.ground(0, 0)), colorOf('I'));
    // They lie in their folder, and are no work that could be lost.
    m_Screen.pressKey(workbench, "ctrl+q");
    EXPECT_EQ(waitForEnd(), 0);
    EXPECT_TRUE(exists("twins-models/results.tsv"));
}

} // namespace ModellingTest
