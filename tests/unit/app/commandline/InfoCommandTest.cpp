// SPDX-License-Identifier: GPL-3.0-or-later
// What stands in names does not break the JSON.
#include "InfoCommand.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace InfoCommandTest {

class InfoCommand : public testing::Test
{
protected:
    QJsonObject describe(const std::string &file)
    {
        std::ostringstream out;
        std::ostringstream err;
        m_Status = TAMBO::app::runInfo({file}, out, err);
        m_Text = out.str();
        EXPECT_EQ(m_Text.find('\n'), m_Text.size() - 1);
        const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(m_Text));
        EXPECT_TRUE(document.isObject()) << m_Text;
        return document.object();
    }

    int m_Status = -1;
    std::string m_Text;
};

TEST_F(InfoCommand, QuotesAndLettersOfAnyLanguageStay)
{
    const QTemporaryDir folder;
    const std::string file = folder.filePath("x.fasta").toStdString();
    std::ofstream(file) << ">a\"b\\c Åtta α 😀\nACD\n";
    const QJsonObject object = describe(file);
    EXPECT_EQ(m_Status, 0);
    const QJsonValue alignment = object["alignments"][0];
    EXPECT_TRUE(alignment["sequences"][0]["name"].toString().startsWith("a\"b\\c"));
    EXPECT_EQ(object["file"].toString().toStdString(), file);
}

TEST_F(InfoCommand, BytesThatAreNoTextAreReplaced)
{
    const QJsonObject object = describe("none\xff.ali");
    EXPECT_EQ(m_Status, 1);
    EXPECT_EQ(object["file"].toString(), QString("none") + QChar(0xfffd) + ".ali");
    EXPECT_FALSE(object["error"].toString().isEmpty());
}

} // namespace InfoCommandTest
