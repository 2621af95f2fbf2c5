// SPDX-License-Identifier: GPL-3.0-or-later
// The cells of an editor window as a client of AT-SPI meets them: another process, by way of a bus
// of the test's own.
#include "CompanionByHand.h"
#include "support/WaitUntil.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace ScreenReaderByHandTest {

class ScreenReader : public CompanionByHand
{
protected:
    ScreenReader()
    {
        m_Environment = m_Program.processEnvironment();
        m_Environment.insert("XDG_RUNTIME_DIR", m_Runtime.path());
        m_Environment.insert("HOME", m_Runtime.path());
        m_Environment.remove("NO_AT_BRIDGE");
        m_Environment.remove("AT_SPI_BUS_ADDRESS");
        m_Bus.setProcessEnvironment(m_Environment);
        // Who asks on it for the accessibility bus gets one that it starts.
        m_Bus.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address=1"});
        QByteArray address;
        while (!address.endsWith('\n') && m_Bus.waitForReadyRead(kPatienceMilliseconds))
            address += m_Bus.readAllStandardOutput();
        EXPECT_FALSE(address.isEmpty()) << "the bus does not start";
        m_Environment.insert("DBUS_SESSION_BUS_ADDRESS", QString::fromLatin1(address.trimmed()));
        m_Environment.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        m_Program.setProcessEnvironment(m_Environment);
    }
    ~ScreenReader() override
    {
        if (isRunning()) {
            m_Program.kill();
            m_Program.waitForFinished(kPatienceMilliseconds);
        }
        // What it has started ends with it.
        m_Bus.terminate();
        m_Bus.waitForFinished(kPatienceMilliseconds);
    }

    QJsonObject told(const QStringList &cells)
    {
        QProcess client;
        client.setProcessEnvironment(m_Environment);
        // Debian's, which another python3 in the path would not know.
        client.start("/usr/bin/python3",
                     QStringList{SOURCE_DIR "/tests/window/read-cells", "tambo"} + cells);
        client.waitForFinished(kPatienceMilliseconds);
        m_Complaint = client.readAllStandardError();
        return QJsonDocument::fromJson(client.readAllStandardOutput()).object();
    }
    QJsonObject toldCell(int row, int column)
    {
        return told({QString("%1,%2").arg(row).arg(column)})["cells"].toArray()[0].toObject();
    }
    void waitForTable()
    {
        EXPECT_TRUE(waitUntil([&] { return !told({}).isEmpty() || !isRunning(); }))
            << m_Complaint.toStdString();
    }

    QTemporaryDir m_Runtime;
    QProcessEnvironment m_Environment;
    QProcess m_Bus;
    QByteArray m_Complaint;
};

TEST_F(ScreenReader, MeetsATableWithTheNamesOfTheRowsAndTheLettersOfTheCells)
{
    open();
    waitForTable();
    const QJsonObject table = told({"0,0", "3,5", "30,122", "59,149"});
    EXPECT_EQ(table["name"].toString().toStdString(), "Alignment hand");
    EXPECT_EQ(table["rows"].toInt(), kRowCount);
    EXPECT_EQ(table["columns"].toInt(), kColumnCount);
    const QJsonArray cells = table["cells"].toArray();
    ASSERT_EQ(cells.size(), 4) << m_Complaint.toStdString();
    EXPECT_EQ(cells[0]["name"].toString(), QString(QChar(row(0)[0])));
    EXPECT_EQ(cells[1]["name"].toString(), QString(QChar(row(3)[5])));
    EXPECT_EQ(cells[1]["row"].toString().toStdString(), "sequence_3_of_the_example");
    EXPECT_TRUE(cells[1]["description"].toString().startsWith("sequence_3_of_the_example"))
        << cells[1]["description"].toString().toStdString();
    // Out of sight, too.
    EXPECT_EQ(cells[2]["name"].toString().toStdString(), "gap");
    EXPECT_EQ(cells[3]["name"].toString().toStdString(), "W");
    EXPECT_EQ(cells[3]["row"].toString().toStdString(), "sequence_59_of_the_example");
    EXPECT_TRUE(cells[3]["column"].toString().contains("150"))
        << cells[3]["column"].toString().toStdString();
}

TEST_F(ScreenReader, HearsWhyAResidueIsMarked)
{
    openWithAMark();
    waitForTable();
    const QString reason = "differs from the structure, which has Y here";
    const auto description = [this](int column) {
        return toldCell(0, column)["description"].toString();
    };
    EXPECT_TRUE(description(kMarked).contains(reason)) << description(kMarked).toStdString();
    EXPECT_FALSE(description(kMarked - 1).contains(reason));
}

TEST_F(ScreenReader, HearsWhichCellsAreSelected)
{
    open();
    waitForTable();
    EXPECT_FALSE(toldCell(2, 3)["selected"].toBool());
    keys("ctrl+i");
    waitForSelected(2, 3, row(2)[3]);
    EXPECT_TRUE(toldCell(2, 3)["selected"].toBool());
    keys("ctrl+shift+a");
    waitForSelected(2, 3, row(2)[3], false);
    EXPECT_FALSE(toldCell(2, 3)["selected"].toBool());
}

} // namespace ScreenReaderByHandTest
