// SPDX-License-Identifier: GPL-3.0-or-later
// An afternoon's work: a family with errors is opened, put right and saved, by keys alone and by
// the mouse alone.
#include "CompanionByHand.h"

#include <QFile>

namespace JourneyByHandTest {

// Gaps that stand elsewhere than they should.
struct Error
{
    int row;
    // Where they should begin, how many they are, and by how many columns they are wrong.
    int column;
    int count;
    int shift;
};
// Three gaps too far to the right, three too far to the left, and eight residues that stand too far
// to the right between gaps on both sides.
constexpr Error kLate{0, 12, 3, 3};
constexpr Error kEarly{9, 27, 3, -2};
constexpr Error kSlid{4, 52, 4, -8};

class Journey : public CompanionByHand
{
protected:
    Journey()
    {
        QFile file(TEST_DATA_DIR "/journeys/fibronectin3_ten.fasta");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        m_Right = file.readAll();
        QByteArray text = m_Right;
        for (const Error &error : {kLate, kEarly, kSlid})
            text = shifted(text, error);
        m_Wrong = text;
    }

    // The same with the gaps of a row moved; its residues keep their order and its lines their
    // length.
    static QByteArray shifted(const QByteArray &text, const Error &error)
    {
        QList<QByteArray> lines = text.split('\n');
        int row = -1;
        QByteArray all;
        QList<int> places;
        for (int i = 0; i < lines.size(); ++i) {
            row += lines[i].startsWith('>') ? 1 : 0;
            if (row == error.row && !lines[i].startsWith('>')) {
                all += lines[i];
                places << i;
            }
        }
        EXPECT_EQ(all.mid(error.column, error.count), QByteArray(error.count, '-'));
        all.remove(error.column, error.count);
        all.insert(error.column + error.shift, QByteArray(error.count, '-'));
        qsizetype begin = 0;
        for (const int place : places) {
            const qsizetype size = lines[place].size();
            lines[place] = all.mid(begin, size);
            begin += size;
        }
        return lines.join('\n');
    }
    // The letters of a row.
    static QByteArray rowOf(const QByteArray &text, int row)
    {
        return text.split('>')[row + 1].split('\n').mid(1).join();
    }
    void openWrong()
    {
        m_File = write("family.fasta", m_Wrong);
        start({m_File});
        m_Editor = window("Alignment Editor");
        m_Grid = grid(m_Editor, QString::fromLatin1(rowOf(m_Wrong, 0).left(3)));
        m_Place = m_Screen.geometryOf(m_Editor);
    }
    [[nodiscard]] QColor groundOf(char letter) const
    {
        return letter == '-' ? QColor(Qt::white) : colorOf(letter);
    }
    // All cells of the row that the error has been about show what they should.
    void waitForRight(const Error &error)
    {
        const QByteArray letters = rowOf(m_Right, error.row);
        const int begin = std::min(error.column, error.column + error.shift);
        const int end = std::max(error.column, error.column + error.shift) + error.count;
        waitFor([&] {
            const QImage image = m_Screen.picture();
            for (int column = begin; column < end; ++column)
                if (image.pixelColor(m_Grid.ground(error.row, column)) != groundOf(letters[column]))
                    return false;
            return true;
        });
    }
    void saveAndCompare()
    {
        const auto bytes = [this] {
            QFile file(m_File);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        EXPECT_EQ(bytes(), m_Wrong);
        m_Screen.pressKey(window("Tambo"), "ctrl+s");
        waitFor([&] { return bytes() != m_Wrong; });
        EXPECT_EQ(bytes().toStdString(), m_Right.toStdString());
    }

    QByteArray m_Right;
    QByteArray m_Wrong;
    QString m_File;
};

class JourneyByKeys : public Journey
{
protected:
    static QString times(const char *key, int count)
    {
        return (QString(key) + ' ').repeated(count).trimmed();
    }
    void goTo(int row, int column)
    {
        m_Screen.pressKey("ctrl+Home");
        if (row > 0)
            m_Screen.pressKey(times("Down", row));
        if (column > 0)
            m_Screen.pressKey(times("Right", column));
        waitFor([&] { return isSettled(); });
    }
    // The cursor's frame would cover some of it.
    void leaveAndWaitForRight(const Error &error)
    {
        m_Screen.pressKey("ctrl+Home");
        waitForRight(error);
    }
};

TEST_F(JourneyByKeys, PutsThreeErrorsRightAndSavesTheFile)
{
    openWrong();
    keys("F7");
    // The gaps go first: then there is room for them at the end of the row.
    goTo(kLate.row, kLate.column + kLate.shift);
    m_Screen.pressKey("3 Delete");
    m_Screen.pressKey(times("Left", kLate.shift));
    m_Screen.pressKey("3 space");
    leaveAndWaitForRight(kLate);

    // From behind them.
    goTo(kEarly.row, kEarly.column + kEarly.shift + kEarly.count);
    m_Screen.pressKey("3 BackSpace");
    m_Screen.pressKey(times("Right", -kEarly.shift));
    m_Screen.pressKey("3 space");
    leaveAndWaitForRight(kEarly);

    // The residues with their gaps on both sides.
    goTo(kSlid.row, kSlid.column + kSlid.shift + kSlid.count);
    m_Screen.pressKey("4 alt+Left");
    leaveAndWaitForRight(kSlid);
    saveAndCompare();
}

class JourneyByMouse : public Journey
{
};

TEST_F(JourneyByMouse, PutsThreeErrorsRightAndSavesTheFile)
{
    openWrong();
    // The whole run of gaps, by the middle button.
    for (const Error &error : {kLate, kEarly}) {
        m_Screen.drag(cell(error.row, error.column + error.shift), cell(error.row, error.column),
                      2);
        waitForRight(error);
    }
    // One gap after the other from before the residues to behind them.
    const QByteArray right = rowOf(m_Right, kSlid.row);
    for (int i = 0; i < kSlid.count; ++i) {
        const int from = kSlid.column + kSlid.shift;
        const int last = kSlid.column + kSlid.count - 1 - i;
        (void)settledEditor();
        m_Screen.drag(cell(kSlid.row, from), cell(kSlid.row, last));
    }
    waitForRight(kSlid);
    saveAndCompare();
}

} // namespace JourneyByHandTest
