// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModellingTools.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ModellingToolsTest {

using TAMBO::app::ModellingTools;

class ModellingToolsTest : public testing::Test
{
protected:
    ModellingToolsTest()
    {
        QDir(m_Folder.path()).mkdir("bin");
        QDir(m_Folder.path()).mkdir("path");
        qputenv("PATH", searchPath());
        qunsetenv("KESTRAM");
    }
    ~ModellingToolsTest() override
    {
        qputenv("PATH", m_Path);
        if (m_Switch.isNull())
            qunsetenv("KESTRAM");
        else
            qputenv("KESTRAM", m_Switch);
    }

    [[nodiscard]] QString programFolder() const { return m_Folder.filePath("bin"); }
    [[nodiscard]] QByteArray searchPath() const { return m_Folder.filePath("path").toUtf8(); }
    void install(const QString &program) const
    {
        QFile file(m_Folder.filePath(program));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n");
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }
    [[nodiscard]] ModellingTools tools() const { return ModellingTools(programFolder()); }
    [[nodiscard]] QString textAfterOffer() const
    {
        tools().offer();
        return tools().stateText();
    }

private:
    QTemporaryDir m_Folder;
    QByteArray m_Path = qgetenv("PATH");
    QByteArray m_Switch = qgetenv("KESTRAM");
};

TEST_F(ModellingToolsTest, AnAdapterBesideTheProgramIsFoundByNameAfterwards)
{
    install("bin/kestram");
    install("path/promod");
    tools().offer();
    EXPECT_EQ(qgetenv("KESTRAM"), "1");
    EXPECT_EQ(qgetenv("PATH"), searchPath() + ":" + programFolder().toUtf8());
    EXPECT_EQ(tools().stateText(), "Modelling is possible: ProMod3 was found.");
}

TEST_F(ModellingToolsTest, AnAdapterOnTheSearchPathComesFirst)
{
    install("bin/kestram");
    install("path/kestram");
    install("path/promod");
    tools().offer();
    EXPECT_EQ(qgetenv("KESTRAM"), "1");
    EXPECT_EQ(qgetenv("PATH"), searchPath());
}

TEST_F(ModellingToolsTest, WithoutTheEngineNothingIsOfferedAndTheTextSaysWhatToInstall)
{
    install("bin/kestram");
    const QString text = textAfterOffer();
    EXPECT_FALSE(qEnvironmentVariableIsSet("KESTRAM"));
    EXPECT_TRUE(text.contains("ProMod3")) << text.toStdString();
    EXPECT_TRUE(text.contains("install the package promod3")) << text.toStdString();
}

TEST_F(ModellingToolsTest, WithoutTheAdapterNothingIsOfferedAndTheTextSaysSo)
{
    install("path/promod");
    const QString text = textAfterOffer();
    EXPECT_FALSE(qEnvironmentVariableIsSet("KESTRAM"));
    EXPECT_EQ(qgetenv("PATH"), searchPath());
    EXPECT_TRUE(text.contains("\"kestram\"")) << text.toStdString();
}

TEST_F(ModellingToolsTest, AUserWhoEmptiedTheSwitchIsRespected)
{
    install("bin/kestram");
    install("path/promod");
    qputenv("KESTRAM", "");
    EXPECT_TRUE(textAfterOffer().contains("switched off"));
    EXPECT_TRUE(qEnvironmentVariableIsSet("KESTRAM"));
    EXPECT_TRUE(qEnvironmentVariableIsEmpty("KESTRAM"));
}

TEST_F(ModellingToolsTest, TheUsersOwnValueStays)
{
    install("bin/kestram");
    install("path/promod");
    qputenv("KESTRAM", "mine");
    tools().offer();
    EXPECT_EQ(qgetenv("KESTRAM"), "mine");
}

TEST_F(ModellingToolsTest, AnEngineThatCameLaterIsThereAfterTheNextStart)
{
    install("bin/kestram");
    tools().offer();
    install("path/promod");
    EXPECT_TRUE(tools().stateText().contains("started again"));
}

} // namespace ModellingToolsTest
