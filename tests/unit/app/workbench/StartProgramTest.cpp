// SPDX-License-Identifier: GPL-3.0-or-later
// What a start of the program has to wait for, told by the linker.
#include "../commandline/ProgramFixture.h"

#include <QFileInfo>
#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>

namespace StartProgramTest {

class StartProgram : public ProgramFixture
{
protected:
    void SetUp() override
    {
        m_Environment.insert("LD_DEBUG", "libs");
        m_Environment.insert("LD_DEBUG_OUTPUT", m_Folder.filePath("linker"));
        m_Environment.insert("QT_QPA_PLATFORM", "offscreen");
        m_Environment.insert("TAMBO_EXIT_WHEN_PAINTED", "1");
    }
    QString alignment() { return write("small.fasta", ">first\nACDEFG\n>second\nAC-EFG\n"); }
    // The names of what was opened, from the start of the process to its end.
    QStringList openedLibraries() const
    {
        QStringList names;
        for (const QString &file : QDir(m_Folder.path()).entryList({"linker.*"}, QDir::Files))
            for (const QByteArray &line : read(m_Folder.filePath(file)).split('\n'))
                if (const qsizetype at = line.indexOf("calling init: "); at >= 0)
                    names << QFileInfo(QFile::decodeName(line.sliced(at + 14))).fileName();
        return names;
    }
    QStringList thatBeginWith(const QStringList &beginnings) const
    {
        QStringList found = openedLibraries();
        found.removeIf([&](const QString &name) {
            return std::ranges::none_of(
                beginnings, [&](const QString &beginning) { return name.startsWith(beginning); });
        });
        return found;
    }
};

// They bring many others with them.
const QStringList kOfPages = {"libpoppler", "libcairo", "libnss", "libtambo-page-painter"};

TEST_F(StartProgram, AnEditorOpensWithoutTheLibrariesOfPages)
{
    EXPECT_EQ(run({alignment()}).status, 0);
    EXPECT_TRUE(openedLibraries().contains("libKALMO2.so.0"));
    EXPECT_EQ(thatBeginWith(kOfPages), QStringList());
}

TEST_F(StartProgram, PdfIsWrittenWithoutTheLibrariesThatReadIt)
{
    EXPECT_EQ(run({"print", alignment(), "--style", "bw", "--output", m_Folder.filePath("out.pdf")})
                  .status,
              0);
    EXPECT_EQ(thatBeginWith(kOfPages), QStringList());
}

TEST_F(StartProgram, PicturesOpenTheLibrariesThatReadPages)
{
    EXPECT_EQ(run({"print", alignment(), "--style", "bw", "--output", m_Folder.filePath("out.png")})
                  .status,
              0);
    EXPECT_TRUE(openedLibraries().contains("libtambo-page-painter.so"));
}

TEST_F(StartProgram, PostScriptOpensTheLibrariesThatMakeIt)
{
    EXPECT_EQ(run({"print", alignment(), "--style", "bw", "--output", m_Folder.filePath("out.ps")})
                  .status,
              0);
    EXPECT_FALSE(thatBeginWith({"libcairo"}).isEmpty());
}

TEST_F(StartProgram, AToolThatIsUnknownIsRefusedWithThoseThatThereAre)
{
    m_Environment.remove("LD_DEBUG");
    for (const QStringList &words :
         {QStringList{alignment()},
          QStringList{"--picture", m_Folder.filePath("out.png"), alignment()}}) {
        const Finished call = run(QStringList{"--tool", "Structure"} + words);
        EXPECT_EQ(call.status, 2);
        EXPECT_EQ(call.errors.count("tambo: "), 1);
        EXPECT_TRUE(call.errors.endsWith("tambo: there is no tool called \"Structure\"; there are "
                                         "\"Alignment Editor\", \"Structure View\"\n"))
            << call.errors.toStdString();
    }
    EXPECT_FALSE(QFile::exists(m_Folder.filePath("out.png")));
}

// The toolkit's own library of windows brings the loaders of OpenGL; nothing asks them for a
// driver, and none would be there.
TEST_F(StartProgram, TheStructureViewDrawsWithoutOpenGl)
{
    for (const char *name :
         {"LIBGL_DRIVERS_PATH", "__EGL_VENDOR_LIBRARY_DIRS", "GBM_BACKENDS_PATH"})
        m_Environment.insert(name, m_Folder.filePath("nothing"));
    m_Environment.insert("__GLX_VENDOR_LIBRARY_NAME", "none");
    const QStringList ofOpenGl = {"libGL",      "libEGL",    "libOpenGL", "libQt6OpenGL",
                                  "libgallium", "libvulkan", "libglapi",  "swrast"};
    const auto opened = [&] {
        QStringList names = thatBeginWith(ofOpenGl);
        names.removeDuplicates();
        names.sort();
        return names;
    };
    const QString example = SOURCE_DIR "/examples/serine_proteases.ali";
    EXPECT_EQ(run({example}).status, 0);
    const QStringList without = opened();
    EXPECT_EQ(run({"--tool", "Structure View", example}).status, 0);
    EXPECT_TRUE(openedLibraries().contains("structure-view.so"));
    EXPECT_EQ(opened(), without);
    for (const QString &name : without)
        EXPECT_FALSE(name.contains("mesa") || name.contains("nvidia")) << name.toStdString();
}

// Beside the program stands what it opens at run time.
TEST_F(StartProgram, WhatCannotMakePicturesIsNamed)
{
    ASSERT_TRUE(QDir(m_Folder.path()).mkpath("lib/tambo/plugins"));
    for (const QString file : {"libKALMO2.so.0", "libKALMO2.plugin"})
        ASSERT_TRUE(QFile::copy(BUILD_DIR "/lib/tambo/plugins/" + file,
                                m_Folder.filePath("lib/tambo/plugins/" + file)));
    const Finished call =
        runAlone({"print", alignment(), "--style", "bw", "--output", m_Folder.filePath("out.png")});
    EXPECT_EQ(call.status, 1);
    EXPECT_EQ(call.errors.count('\n'), 1) << call.errors.toStdString();
    EXPECT_TRUE(call.errors.contains("out.png was not written: ")) << call.errors.toStdString();
    EXPECT_TRUE(call.errors.contains("tambo-page-painter")) << call.errors.toStdString();
}

} // namespace StartProgramTest
