// SPDX-License-Identifier: GPL-3.0-or-later
// Alignments, their pages, and what is to be found on these.
#pragma once

#include "PageFileRun.h"
#include "PageRun.h"
#include "window/AlignmentWindowFixture.h"

#include "CellLooks.h"
#include "DataPoint.h"
#include "Space.h"

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <random>

// What pages have, in their order.
struct Recording
{
    struct Line
    {
        std::size_t page = 0;
        companion::PagePart part;
        std::size_t place = 0;
        std::string name;
        std::string number;
        std::string letters;
        std::vector<QRgb> grounds;
    };

    std::size_t pages = 0;
    std::vector<companion::PagePart> parts;
    std::vector<Line> lines;
    std::size_t trackParts = 0;
    std::size_t unknownColumns = 0;
    // By their places.
    std::vector<std::string> notes;
};

// Remembers what it is handed.
class RecordedPages : public companion::PageSink
{
public:
    void beginPage(const companion::Page &page) override
    {
        m_Page = page.number;
        ++all.pages;
    }
    void beginPart(const companion::PagePart &part) override { all.parts.push_back(part); }
    void addRow(const companion::PagePart &part, const companion::PageRow &row) override
    {
        Recording::Line line{
            m_Page, part, row.place, row.name.toStdString(), row.number.toStdString(), {}, {}};
        for (const TAMBO::AlignmentCell &cell : row.cells) {
            line.letters += companion::letterOf(cell);
            line.grounds.push_back(companion::groundOf(cell));
        }
        all.lines.push_back(line);
    }
    void addTracks(const companion::PagePart &part,
                   const companion::ColumnOfTrack &columns) override
    {
        ++all.trackParts;
        for (unsigned long col = part.colBegin; col < part.colEnd; ++col)
            all.unknownColumns += columns(col) == nullptr;
    }

    void addLine(const companion::PagePart &part, std::size_t place,
                 const std::string &text) override
    {
        all.notes.resize(std::max(all.notes.size(), place + 1));
        all.notes[place] += text;
        EXPECT_EQ(text.size(), part.colEnd - part.colBegin);
    }

    Recording all;

private:
    std::size_t m_Page = 0;
};

class PagesFixture : public AlignmentWindowFixture
{
protected:
    static constexpr auto kNoTime = std::chrono::microseconds(0);
    static constexpr auto kSomeTime = std::chrono::milliseconds(5);

    static companion::PageOrder orderOfAll(const TAMBO::Alignment &alignment)
    {
        companion::PageOrder order;
        order.title = QString::fromStdString(alignment.Name());
        for (unsigned long row = 0; row < alignment.height(); ++row)
            order.rows.push_back(row);
        order.colEnd = alignment.width();
        return order;
    }
    static Recording recorded(const TAMBO::Alignment &alignment, const companion::PagePlan &plan)
    {
        RecordedPages pages;
        companion::PageRun run(alignment, plan, pages, 0, plan.layout.pages());
        while (run.goOn(kSomeTime)) {
        }
        return pages.all;
    }
    QString path(const QString &name) const { return m_Folder.filePath(name); }
    // The error, or empty.
    QString write(const TAMBO::Alignment &alignment, const companion::PagePlan &plan,
                  const QString &file, double dotsOfInch = 72) const
    {
        companion::PageFileRun run(alignment, plan, file, dotsOfInch);
        while (run.goOn(kSomeTime)) {
        }
        return run.error();
    }
    QStringList files() const
    {
        return QDir(m_Folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    static QByteArray read(const QString &file)
    {
        QFile in(file);
        EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << file.toStdString();
        return in.readAll();
    }
    static void put(const QString &file, const QByteArray &bytes)
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    // Of light and dark colors by letter, with some residues selected.
    void paint(TAMBO::Alignment &alignment)
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        std::array<Color, 256> colors{};
        for (unsigned i = 0; i < colors.size(); ++i)
            colors[i] = Color(((i * 2654435761U) >> 8U) & 0xffffffU);
        alignment.colorByLetter(colors);
        alignment.selectInRow(0, {1, 4});
    }
    // With gaps, of odd names.
    TAMBO::Alignment &randomRows(unsigned long rows, unsigned long columns)
    {
        Texts texts;
        Texts names;
        for (unsigned long row = 0; row < rows; ++row) {
            std::string text;
            for (unsigned long col = 0; col < columns; ++col)
                text += "ACDEFGHIKLMNPQRSTVWYX-----"[m_Random() % 26];
            // Nowhere else on the pages.
            text.back() = 'A';
            texts.push_back(text);
            names.push_back("row_" + std::to_string(row) + "/1-" + std::to_string(columns));
        }
        return alignment(texts, "random", names);
    }
    unsigned long upTo(unsigned long most) { return 1 + m_Random() % most; }

    std::mt19937 m_Random{11};
    QTemporaryDir m_Folder;
};
