// SPDX-License-Identifier: GPL-3.0-or-later
// What is asked before models of a family are built.
#include "FamilyDialog.h"

#include "FamilyFiles.h"
#include "ObjectOperations.h"
#include "TargetsModel.h"

#include "DataMaker.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTreeView>

namespace FamilyDialogTest {

using namespace TAMBO;
using app::FamilyDialog;
using app::RunOrder;

class FamilyDialogTest : public FamilyFiles
{
protected:
    FamilyDialogTest()
    {
        known();
        m_Other = &alignment("other", {"ACDE", "ACDE"});
        m_Family = &family({"known", "alpha", "beta", "gamma"});
        open(m_Family);
    }
    ~FamilyDialogTest() override
    {
        m_Dialog.reset();
        if (m_Path.isEmpty())
            qunsetenv("PATH");
        else
            qputenv("PATH", m_Path);
    }

    void open(const Alignment *chosen)
    {
        m_Dialog = std::make_unique<FamilyDialog>(
            std::vector<Alignment *>{m_Other, m_Family}, chosen,
            [this](const Alignment &) { return path("globins.ali").toStdString(); }, nullptr);
    }
    template <typename Widget> Widget &at(const char *name)
    {
        return *m_Dialog->findChild<Widget *>(QString::fromLatin1(name));
    }
    QString says() { return at<QLabel>("Says").text(); }
    bool canBuild() { return at<QPushButton>("Build").isEnabled(); }
    std::vector<std::string> targets() const
    {
        std::vector<std::string> names;
        for (const families::PlannedModel &model : m_Dialog->plan())
            names.push_back(m_Dialog->family().rows[model.target].name);
        return names;
    }
    using Names = std::vector<std::string>;

    QByteArray m_Path = qgetenv("PATH");
    Alignment *m_Other = nullptr;
    Alignment *m_Family = nullptr;
    std::unique_ptr<FamilyDialog> m_Dialog;
};

TEST_F(FamilyDialogTest, BeginsWithTheAlignmentThatIsPickedAndItsRowsWithoutAStructure)
{
    EXPECT_EQ(m_Dialog->alignment(), m_Family);
    EXPECT_EQ(targets(), (Names{"alpha", "beta", "gamma"}));
    EXPECT_TRUE(canBuild());
    open(m_Other);
    EXPECT_EQ(m_Dialog->alignment(), m_Other);
    EXPECT_FALSE(canBuild());
    EXPECT_TRUE(says().contains("has a structure that could be a template"))
        << says().toStdString();
}

TEST_F(FamilyDialogTest, TheTemplateIsTheBestOneOrARowWithAStructure)
{
    auto &templates = at<QComboBox>("Template");
    ASSERT_EQ(templates.count(), 2);
    EXPECT_EQ(templates.itemText(0), "Best for each target");
    EXPECT_EQ(templates.itemText(1), "known");
    templates.setCurrentIndex(1);
    ASSERT_EQ(m_Dialog->plan().size(), 3U);
    EXPECT_EQ(m_Dialog->plan().front().templateRow, 0U);
}

TEST_F(FamilyDialogTest, TicksOfTheRowsThatTheFilterShows)
{
    at<QLineEdit>("Filter").setText("ET");
    EXPECT_EQ(at<QTreeView>("Targets").model()->rowCount(), 1);
    at<QPushButton>("None").click();
    EXPECT_EQ(targets(), (Names{"alpha", "gamma"}));
    at<QLineEdit>("Filter").clear();
    at<QPushButton>("None").click();
    EXPECT_EQ(targets(), Names());
    EXPECT_EQ(says(), "Tick the targets that models are to be built of.");
    EXPECT_FALSE(canBuild());
    at<QPushButton>("All").click();
    EXPECT_EQ(targets(), (Names{"alpha", "beta", "gamma"})) << "the only template has none";
}

TEST_F(FamilyDialogTest, TheFolderStandsBesideTheFile)
{
    EXPECT_EQ(m_Dialog->folder(), path("globins-models").toStdString());
    at<QLineEdit>("Folder").clear();
    EXPECT_EQ(says(), "Name the folder for the models.");
    at<QLineEdit>("Folder").setText(path("none/models"));
    EXPECT_EQ(says(), "There is no folder " + path("none") + ".");
    at<QLineEdit>("Folder").setText(write("file", ""));
    EXPECT_EQ(says(), path("file") + " is a file.");
    EXPECT_FALSE(canBuild());
}

TEST_F(FamilyDialogTest, AFolderThatTheUserHasNamedStaysWithAnotherAlignment)
{
    auto &alignments = at<QComboBox>("Alignment");
    alignments.setCurrentIndex(0);
    EXPECT_EQ(m_Dialog->folder(), path("other-models").toStdString());
    at<QLineEdit>("Folder").setText(path("mine"));
    alignments.setCurrentIndex(1);
    EXPECT_EQ(m_Dialog->folder(), path("mine").toStdString());
}

TEST_F(FamilyDialogTest, SaysWhatItCosts)
{
    at<QSpinBox>("AtOnce").setValue(2);
    EXPECT_EQ(says(), "3 models: about 10 to 30 s and 1 GB of memory each, 20 s to 60 s with 2 at "
                      "once.");
    makeFolder({"alpha"});
    at<QLineEdit>("Folder").setText(path("models"));
    EXPECT_TRUE(says().endsWith("only what is missing or has changed is built."));
}

TEST_F(FamilyDialogTest, SaysThatSnakemakeIsMissing)
{
    qputenv("PATH", m_Folder.path().toUtf8());
    open(m_Family);
    auto &where = at<QComboBox>("Where");
    where.setCurrentIndex(where.findData(int(RunOrder::Where::SnakemakeHere)));
    EXPECT_TRUE(says().contains("install the package snakemake")) << says().toStdString();
    EXPECT_FALSE(canBuild());
    where.setCurrentIndex(where.findData(int(RunOrder::Where::Here)));
    EXPECT_TRUE(canBuild());
}

TEST_F(FamilyDialogTest, AProfileTakesItsProgramsToo)
{
    QFile snakemake(write("snakemake", "#!/bin/sh\n"));
    snakemake.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    qputenv("PATH", m_Folder.path().toUtf8());
    open(m_Family);
    auto &where = at<QComboBox>("Where");
    EXPECT_TRUE(at<QLineEdit>("Profile").isHidden());
    where.setCurrentIndex(where.findData(int(RunOrder::Where::Profile)));
    EXPECT_FALSE(at<QLineEdit>("Profile").isHidden());
    EXPECT_TRUE(says().contains("\"sbatch\"")) << says().toStdString();
    at<QLineEdit>("Profile").clear();
    EXPECT_EQ(says(), "Name the profile.");
    at<QLineEdit>("Profile").setText("ours");
    EXPECT_TRUE(canBuild());
    at<QSpinBox>("AtOnce").setValue(5);
    EXPECT_EQ(m_Dialog->order().words(), QStringList({"--jobs", "5", "--profile", "ours"}));
}

TEST_F(FamilyDialogTest, HereMeansThePoolAndNotSnakemake)
{
    at<QSpinBox>("AtOnce").setValue(3);
    EXPECT_EQ(m_Dialog->order().words(), QStringList({"--jobs", "3", "--pool"}));
}

TEST_F(FamilyDialogTest, AnAlignmentMayGoMeanwhile)
{
    DataMaker::Destroy(m_Family);
    EXPECT_EQ(m_Dialog->alignment(), nullptr);
    at<QLineEdit>("Folder").setText(path("mine"));
    EXPECT_EQ(says(), "The alignment is not loaded any more.");
    EXPECT_FALSE(canBuild());
}

TEST_F(FamilyDialogTest, EachFieldIsReachedByAKey)
{
    QSet<QChar> keys;
    const auto take = [&keys](const QString &text) {
        const qsizetype mark = text.indexOf(u'&');
        if (mark < 0)
            return;
        EXPECT_FALSE(keys.contains(text[mark + 1].toLower())) << text.toStdString();
        keys.insert(text[mark + 1].toLower());
    };
    for (const QLabel *label : m_Dialog->findChildren<QLabel *>()) {
        if (label->buddy() != nullptr)
            take(label->text());
    }
    for (const QPushButton *button : m_Dialog->findChildren<QPushButton *>()) {
        if (button->text().contains(u'&') && button->objectName() != "")
            take(button->text());
    }
    EXPECT_GE(keys.size(), 11);
}

} // namespace FamilyDialogTest
