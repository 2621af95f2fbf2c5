// SPDX-License-Identifier: GPL-3.0-or-later
// The command of the structure view, as scripts call it.
#include "ProgramFixture.h"

#include <QImage>

namespace PictureProgramTest {

class PictureProgram : public ProgramFixture
{
protected:
    // Of a small peptide, with these words more.
    QImage picture(const QStringList &words)
    {
        const QString out = m_Folder.filePath("out.png");
        const Finished call =
            run(QStringList{"picture", data("structures/six_residue_peptide_5e5z.pdb"), "--output",
                            out, "--size", "200x150"} +
                words);
        EXPECT_EQ(call.status, 0);
        EXPECT_EQ(call.errors, "");
        return QImage(out);
    }
    static int most(const QImage &image, int (*part)(QRgb))
    {
        int found = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                found = std::max(found, part(image.pixel(x, y)));
        return found;
    }
};

TEST_F(PictureProgram, HasAWhiteGroundUnlessItIsToHaveAnother)
{
    const QImage image = picture({});
    ASSERT_EQ(image.size(), QSize(200, 150));
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_LT(qGray(picture({"--ground", "dark"}).pixel(0, 0)), 80);
}

TEST_F(PictureProgram, ATransparentOneShowsWhatIsDrawnAlone)
{
    const QList<QStringList> calls{
        {"--transparent"}, {"--ground", "none"}, {"--ground", "dark", "--transparent"}};
    for (const QStringList &words : calls) {
        const QImage image = picture(words);
        ASSERT_EQ(image.size(), QSize(200, 150)) << words.join(' ').toStdString();
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << words.join(' ').toStdString();
        EXPECT_EQ(most(image, qAlpha), 255) << words.join(' ').toStdString();
    }
}

TEST_F(PictureProgram, AWrongCallWritesNothingAndSaysWhatIsKnown)
{
    const QString out = m_Folder.filePath("out.png");
    const Finished call = run({"picture", data("structures/six_residue_peptide_5e5z.pdb"),
                               "--output", out, "--ground", "green"});
    EXPECT_EQ(call.status, 2);
    EXPECT_EQ(call.errors, "tambo: --ground is one of dark, none, white, not green\n");
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(PictureProgram, SomeStructuresOfASessionAreDrawnAlone)
{
    const auto draw = [this](const QStringList &words) {
        const QString out = m_Folder.filePath("out.png");
        const Finished call = run(QStringList{"picture", data("sessions/version-4.tambo"),
                                              "--output", out, "--size", "200x150"} +
                                  words);
        EXPECT_EQ(call.status, 0) << call.errors.toStdString();
        return QImage(out);
    };
    const QImage all = draw({});
    const QImage first = draw({"--structures", "1"});
    const QImage second = draw({"--structures", "2"});
    ASSERT_EQ(all.size(), QSize(200, 150));
    EXPECT_NE(first, all);
    EXPECT_NE(second, all);
    EXPECT_NE(first, second);
    EXPECT_EQ(draw({"--structures", "2,1"}), all);
}

TEST_F(PictureProgram, AStructureThatIsNotThereIsTold)
{
    const QString session = data("sessions/version-4.tambo");
    const QString out = m_Folder.filePath("out.png");
    const Finished third = run({"picture", session, "--output", out, "--structures", "3"});
    EXPECT_EQ(third.status, 1);
    EXPECT_EQ(third.errors,
              "tambo: " + session.toUtf8() + ": there are 2 structures, and no number 3\n");
    const Finished wrong = run({"picture", session, "--output", out, "--structures", "1-2"});
    EXPECT_EQ(wrong.status, 2);
    const Finished late =
        run({"picture", data("structures/six_residue_peptide_5e5z.pdb"), session, "--output", out});
    EXPECT_EQ(late.status, 1);
    EXPECT_EQ(late.errors, "tambo: version-4.tambo: a session is opened before other files\n");
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(PictureProgram, ItsHelpHasAllWordsOfItsOptions)
{
    const Finished call = run({"picture", "--help"});
    EXPECT_EQ(call.status, 0);
    EXPECT_EQ(call.errors, "");
    for (const char *const words :
         {"--style balls|cartoon|spheres|sticks|trace", "--color alignment|bfactor|chain|fold",
          "--view back|bottom|front|left|right|top", "--ground dark|none|white"})
        EXPECT_TRUE(call.output.contains(words)) << call.output.toStdString();
}

TEST_F(PictureProgram, AFileThatIsNotThereIsNamed)
{
    const QString out = m_Folder.filePath("out.png");
    const Finished call = run({"picture", "missing.pdb", "--output", out, "--transparent"});
    EXPECT_EQ(call.status, 1);
    EXPECT_EQ(call.errorLines().size(), 1);
    EXPECT_TRUE(call.errors.contains("missing.pdb")) << call.errors.toStdString();
    EXPECT_FALSE(QFile::exists(out));
}

} // namespace PictureProgramTest
