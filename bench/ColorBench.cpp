// SPDX-License-Identifier: GPL-3.0-or-later
// The colouring, search and selection commands of an editor window, from the last dialog's answer
// to the return of the command: history and another window told, the repaint left aside. Each
// beside the reading of all letters in the same run; the time is the processor's. Of an alignment
// of other size: bench_color TEXT ROWS COLUMNS, where TEXT is in the names of the commands to be
// run.
#include "AcidColor.h"
#include "Alignment.h"
#include "ColumnSpread.h"
#include "ConfigStore.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "History.h"
#include "IdentityReport.h"
#include "KALMO2.h"
#include "Logger.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "RowMatcher.h"
#include "RowSearch.h"
#include "Structure.h"

#include <QApplication>
#include <QColorDialog>
#include <QInputDialog>
#include <QProgressDialog>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int kMostTimes = 11;
// Of a family of a million rows fewer are enough.
int s_Times = kMostTimes;
constexpr const char *kLetters = "ARNDCQEGHILKMFPSTWYV";

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "bench_color: %s\n", what);
    std::exit(1);
}

double now()
{
    timespec time{};
    // A search has a thread of its own.
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double median(std::vector<double> times)
{
    std::ranges::sort(times);
    return times[times.size() / 2];
}

// Accepts the dialogs that open, and knows when the last one was answered.
class Answers : public QObject
{
public:
    using Answer = std::function<void(QDialog &)>;

    Answers() { qApp->installEventFilter(this); }
    void expect(Answer answer) { m_Answers.push_back(std::move(answer)); }
    [[nodiscard]] double answered() const { return m_Answered; }
    void start() { m_Answered = now(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *dialog = qobject_cast<QDialog *>(watched);
        // A search of many rows tells how far it is.
        if (qobject_cast<QProgressDialog *>(dialog) != nullptr)
            return false;
        if (event->type() == QEvent::Show && dialog != nullptr && dialog->isModal())
            QTimer::singleShot(0, dialog, [this, dialog] {
                if (m_Answers.empty())
                    fail("a dialog came unexpectedly");
                m_Answers.front()(*dialog);
                m_Answers.pop_front();
                start();
                dialog->accept();
            });
        return false;
    }

private:
    std::deque<Answer> m_Answers;
    double m_Answered = 0;
};

Answers::Answer pick(const QColor &color)
{
    return
        [color](QDialog &dialog) { dynamic_cast<QColorDialog &>(dialog).setCurrentColor(color); };
}

Answers::Answer number(int value)
{
    return [value](QDialog &dialog) { dynamic_cast<QInputDialog &>(dialog).setIntValue(value); };
}

Answers::Answer text(const QString &value)
{
    return [value](QDialog &dialog) { dynamic_cast<QInputDialog &>(dialog).setTextValue(value); };
}

// Runs of 1 to 5 gaps between runs of 1 to 13 residues: 30 of 100 cells. One residue of so many
// differs from the column's usual one; 1 leaves nothing in common.
TAMBO::AlignmentRecord makeRecord(unsigned long rows, unsigned long columns, unsigned long oneOf)
{
    std::mt19937 random(rows * 31 + columns);
    std::string usual;
    for (unsigned long col = 0; col < columns; ++col)
        usual += kLetters[random() % 20];
    TAMBO::AlignmentRecord record;
    record.name = "made";
    for (unsigned long i = 0; i < rows; ++i) {
        std::string text;
        while (text.size() < columns) {
            text.append(1 + random() % 5, '-');
            for (unsigned long count = 1 + random() % 13; count > 0; --count)
                text += random() % oneOf == 0 ? kLetters[random() % 20]
                                              : usual[std::min(text.size(), columns - 1)];
        }
        text.resize(columns);
        TAMBO::RowRecord &row = record.rows.emplace_back();
        row.name = "row" + std::to_string(i);
        row.sequence.append(text);
    }
    return record;
}

// Chains of CA atoms that lie within some Angstrom of each other.
std::vector<TAMBO::Compound *> makeChains(unsigned long rows, unsigned long columns)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> apart(-3, 3);
    std::vector<TAMBO::Compound *> chains;
    for (unsigned long i = 0; i < rows; ++i) {
        TAMBO::StructureRecord record;
        record.name = "made" + std::to_string(i);
        TAMBO::ChainRecord &chain = record.chains.emplace_back();
        chain.name = "A";
        for (unsigned long k = 0; k < columns; ++k) {
            TAMBO::ResidueRecord &residue = chain.residues.emplace_back();
            residue.letter = kLetters[random() % 20];
            residue.number = TAMBO::SequenceNumber(static_cast<long>(k + 1));
            const auto along = static_cast<float>(k) * 3.8F;
            for (const char *name : {"N", "CA", "C", "O"})
                residue.atoms.push_back(
                    {name, std::string(1, name[0]),
                     TAMBO::Vertex(along + apart(random), apart(random), apart(random))});
        }
        chains.push_back(TAMBO::ObjectFactory::adopt(std::move(record))->Child(0));
    }
    return chains;
}

class ColorBench
{
public:
    ColorBench() { TAMBO::setEditRecorder(&m_History); }
    ~ColorBench()
    {
        m_Window.Populate(nullptr);
        m_Other.Populate(nullptr);
        TAMBO::setEditRecorder(nullptr);
        m_History.clear();
        TAMBO::ObjectSpace::get().reset();
    }
    ColorBench(const ColorBench &) = delete;
    ColorBench &operator=(const ColorBench &) = delete;

    void makeSequences(unsigned long rows, unsigned long columns, unsigned long oneOf)
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        m_Alignment = TAMBO::ObjectFactory::adopt(makeRecord(rows, columns, oneOf));
    }
    void makeStructures(unsigned long rows, unsigned long columns)
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        m_Alignment = TAMBO::DataMaker::makeAlignment("made", makeChains(rows, columns));
    }

    // Only commands whose names hold the text are run.
    static void setFilter(std::string text) { s_Filter = std::move(text); }

    void readLetters()
    {
        std::vector<double> byColumn;
        std::vector<double> byCell;
        std::vector<double> inMemory;
        std::array<unsigned long, 256> counts{};
        unsigned long residues = 0;
        std::vector<char> letters;
        for (int i = 0; i < s_Times; ++i) {
            // A copy has read nothing yet.
            TAMBO::Alignment &copy = *m_Alignment->duplicate(m_Alignment->height());
            double start = now();
            for (unsigned long col = 0; col < copy.width(); ++col) {
                letters.clear();
                copy.readColumn(col, letters);
                residues += letters.empty() ? 0UL : letters.back() != '\0';
            }
            byColumn.push_back(now() - start);
            start = now();
            for (unsigned long row = 0; row < copy.height(); ++row) {
                for (unsigned long col = 0; col < copy.width(); ++col)
                    residues += copy.letterAt(row, col) != '\0';
            }
            byCell.push_back(now() - start);
            start = now();
            for (unsigned long row = 0; row < copy.height(); ++row) {
                for (const char letter : TAMBO::Peptide::from(copy.GetSeq(row))->letters())
                    ++counts[static_cast<unsigned char>(letter)];
            }
            inMemory.push_back(now() - start);
            TAMBO::DataMaker::Destroy(&copy);
        }
        m_ByColumn = median(byColumn);
        m_ByCell = median(byCell);
        m_InMemory = median(inMemory);
        std::printf("\n%lu x %lu, %lu residues\n", m_Alignment->height(), m_Alignment->width(),
                    residues / s_Times);
        std::printf("  %-34s %8.2f ms\n", "all letters, column by column", m_ByColumn);
        std::printf("  %-34s %8.2f ms\n", "all letters, cell by cell", m_ByCell);
        std::printf("  %-34s %8.2f ms, %lu of them A\n", "all letters, as they are in memory",
                    m_InMemory, counts['A'] / static_cast<unsigned long>(s_Times));
        std::printf("  %-34s %8s %9s %9s %9s %9s\n", "", "ms", "/ columns", "/ cells", "/ memory",
                    "step, kB");
    }

    // The distances of all pairs by themselves: of n residues of a column n - 1 each, which no pass
    // over the cells can spare.
    void readDistances()
    {
        std::vector<std::vector<TAMBO::Vertex>> columns(m_Alignment->width());
        for (unsigned long row = 0; row < m_Alignment->height(); ++row) {
            std::vector<TAMBO::Vertex> positions;
            m_Alignment->readPositions(row, 0, columns.size(), positions);
            for (std::size_t col = 0; col < positions.size(); ++col) {
                if (positions[col].isDefined())
                    columns[col].push_back(positions[col]);
            }
        }
        std::vector<double> times;
        double sum = 0;
        for (int i = 0; i < s_Times; ++i) {
            const double start = now();
            for (const std::vector<TAMBO::Vertex> &positions : columns)
                sum += ZEP::meanDistance(positions);
            times.push_back(now() - start);
        }
        m_Distances = median(times);
        std::printf("  %-34s %8.2f ms, %.2f on average\n", "the distances of all pairs",
                    m_Distances, sum / static_cast<double>(s_Times * columns.size()));
    }

    // What a search cannot spare: the matching of texts that are there already, and one line of the
    // log for each row, which only expressions write.
    void match(const char *what, const char *pattern, RowSearch::Language language)
    {
        if (std::string(what).find(s_Filter) == std::string::npos)
            return;
        std::vector<std::string> texts;
        for (unsigned long row = 0; row < m_Alignment->height(); ++row)
            texts.push_back(m_Alignment->GetSequence(row, false));
        std::vector<double> times;
        std::vector<double> logTimes;
        for (int i = 0; i < s_Times; ++i) {
            TAMBO::services::RowMatcher matcher(QString::fromLatin1(pattern), language);
            const std::atomic<bool> isCancelled = false;
            std::vector<RowSearch::Row> found;
            found.reserve(texts.size());
            double start = now();
            for (const std::string &text : texts)
                found.push_back(matcher.find(text, isCancelled));
            times.push_back(now() - start);
            start = now();
            Logger::WriteLines(found.size(), [&](std::size_t row) {
                return Logger::Line{QStringLiteral("Pattern '%1' found %2 time(s) from %3")
                                        .arg(QLatin1String(pattern),
                                             QStringLiteral("%1").arg(found[row].count, 2),
                                             QStringLiteral("a row of the alignment"))};
            });
            logTimes.push_back(now() - start);
        }
        std::printf("  the matching alone: %-14s %8.2f ms, log lines %.2f ms\n", pattern,
                    median(times), median(logTimes));
        const bool hasLines = language == RowSearch::Language::Expression;
        m_Matching[what] = {median(times), hasLines ? median(logTimes) : 0};
    }

    // Of the first two rows, beside the reading of their letters.
    void compareTwo()
    {
        constexpr int kRepeats = 200;
        std::vector<double> times;
        std::vector<double> inMemory;
        std::array<unsigned long, 256> counts{};
        qsizetype length = 0;
        for (int i = 0; i < s_Times; ++i) {
            double start = now();
            for (int k = 0; k < kRepeats; ++k)
                length += identityReport(*m_Alignment, 1)->size();
            times.push_back(now() - start);
            start = now();
            for (int k = 0; k < kRepeats; ++k) {
                for (const unsigned long row : {0UL, 1UL}) {
                    const auto *const sequence = TAMBO::Peptide::from(m_Alignment->GetSeq(row));
                    for (const char letter : sequence->letters())
                        ++counts[static_cast<unsigned char>(letter)];
                }
            }
            inMemory.push_back(now() - start);
        }
        if (length == 0 || counts['A'] == 0)
            fail("there is nothing to be compared");
        std::printf("  %-34s %8.4f ms %28.2f\n", "identity of two rows", median(times) / kRepeats,
                    median(times) / median(inMemory));
    }

    // Runs a command that the expected answers belong to; those depend on how often it has run.
    void run(const char *what, const char *slot,
             const std::function<void(Answers &, int)> &expect = {})
    {
        measure(what, [&](int time) {
            if (expect)
                expect(m_Answers, time);
            m_Answers.start();
            if (!QMetaObject::invokeMethod(&m_Window, slot))
                fail(slot);
        });
    }
    // Swaps two tables, so that every residue changes each time.
    void colorByProperty()
    {
        QColor tables[2][21];
        for (int i = 0; i < 21; ++i) {
            tables[0][i] = QColor::fromHsv(i * 17, 90, 255);
            tables[1][i] = QColor::fromHsv(i * 17, 200, 200);
        }
        measure("Color, By Property", [&](int time) {
            m_Answers.start();
            m_Window.setColor(tables[time % 2]);
        });
    }
    void select(bool selected)
    {
        for (unsigned long row = 0; row < m_Alignment->height(); ++row)
            m_Alignment->GetSeq(row)->SetSelected(selected);
    }
    void selectSome()
    {
        select(false);
        for (unsigned long col = 0; col < m_Alignment->width(); col += 2)
            m_Alignment->select({col, col + 1}, true);
    }

private:
    template <typename Command> void measure(const char *what, const Command &command)
    {
        if (std::string(what).find(s_Filter) == std::string::npos)
            return;
        std::vector<double> times;
        std::size_t bytes = 0;
        for (int i = 0; i < s_Times; ++i) {
            TAMBO::Alignment &copy = *m_Alignment->duplicate(m_Alignment->height());
            m_Window.Populate(&copy);
            m_Other.Populate(&copy);
            m_History.clear();
            command(i);
            times.push_back(now() - m_Answers.answered());
            bytes = std::max(bytes, m_History.bytes());
            m_Window.Populate(nullptr);
            m_Other.Populate(nullptr);
            m_History.clear();
            TAMBO::DataMaker::Destroy(&copy);
            QCoreApplication::processEvents();
        }
        const double time = median(times) - m_Distances;
        std::printf("  %-34s %8.2f %9.2f %9.2f %9.2f %9.1f", what, time, time / m_ByColumn,
                    time / m_ByCell, time / m_InMemory, static_cast<double>(bytes) / 1024);
        const auto matching = m_Matching.find(what);
        if (matching != m_Matching.end())
            std::printf(", %.2f of the matching",
                        (time - matching->second.log) / matching->second.alone);
        std::printf("\n");
        std::fflush(stdout);
    }

    static std::string s_Filter;

    TAMBO::History m_History;
    TAMBO::Alignment *m_Alignment = nullptr;
    ZEP::KALMO2 m_Window;
    ZEP::KALMO2 m_Other;
    Answers m_Answers;
    double m_ByColumn = 0;
    double m_ByCell = 0;
    double m_InMemory = 0;
    struct Matching
    {
        double alone;
        double log;
    };
    // By the search of which it is a part.
    std::map<std::string, Matching> m_Matching;
    // Left out of what is told.
    double m_Distances = 0;
};

std::string ColorBench::s_Filter;

const QColor &colorOf(int time)
{
    static const QColor colors[] = {Qt::red, Qt::green};
    return colors[time % 2];
}

void runAll(ColorBench &bench, unsigned long rows)
{
    const auto pickOnly = [](Answers &answers, int time) { answers.expect(pick(colorOf(time))); };
    const auto pickAndCount = [](int count) {
        return [count](Answers &answers, int time) {
            answers.expect(pick(colorOf(time)));
            answers.expect(number(count));
        };
    };
    const auto search = [](const char *pattern) {
        return [pattern](Answers &answers, int) {
            answers.expect(text(QString::fromLatin1(pattern)));
        };
    };
    bench.readLetters();
    bench.compareTwo();
    bench.colorByProperty();
    bench.run("Color, Selected: none", "setColor", pickOnly);
    bench.selectSome();
    bench.run("Color, Selected: every second", "setColor", pickOnly);
    bench.select(true);
    bench.run("Color, Selected: all", "setColor", pickOnly);
    bench.select(false);
    bench.run("Color, Conserved", "colorConserved", pickOnly);
    bench.run("Color, ConservedN: 0", "colorConservedN", pickAndCount(0));
    bench.run("Color, ConservedN: half", "colorConservedN", pickAndCount(int(rows / 2)));
    bench.run("Color, By Distance", "colorDistance");
    bench.run("Select, ConservedN: 0", "selectConservedN",
              [](Answers &answers, int) { answers.expect(number(0)); });
    bench.select(false);
    using Language = RowSearch::Language;
    bench.match("Select, SubSequence: AC", "AC", Language::Expression);
    bench.match("Select, SubSequence: A", "A", Language::Expression);
    bench.match("Select, SubSequence: A-?C", "A-?C", Language::Expression);
    bench.match("Select, SubSequence: [AC]D", "[AC]D", Language::Expression);
    bench.match("Select, SubSequence, simple: A.C", "A.C", Language::Cells);
    bench.match("Select, SubSequence, simple: ...", "...", Language::Cells);
    bench.run("Select, SubSequence: AC", "selectSubSequence", search("AC"));
    bench.run("Select, SubSequence: A", "selectSubSequence", search("A"));
    bench.run("Select, SubSequence: A-?C", "selectSubSequence", search("A-?C"));
    bench.run("Select, SubSequence: [AC]D", "selectSubSequence", search("[AC]D"));
    TAMBO::services::ConfigStore::instance().setValue("KALMO2", "SimpleRegExp", "true");
    bench.run("Select, SubSequence, simple: A.C", "selectSubSequence", search("A.C"));
    bench.run("Select, SubSequence, simple: ...", "selectSubSequence", search("..."));
    TAMBO::services::ConfigStore::instance().setValue("KALMO2", "SimpleRegExp", "false");
    bench.select(false);
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir directory;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TAMBO_USER_DIR", directory.path().toUtf8());
    // What the editor tells the log is written as in the workbench; the rest is not measured.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QApplication application(argc, argv);
    ColorBench::setFilter(argc > 1 ? argv[1] : "");
    TAMBO::services::ConfigStore::setInstance(std::make_unique<TAMBO::services::ConfigStore>(
        QString(), directory.filePath(QStringLiteral("settings.ini"))));

    if (argc > 3) {
        s_Times = 3;
        const unsigned long rows = std::strtoul(argv[2], nullptr, 10);
        ColorBench bench;
        bench.makeSequences(rows, std::strtoul(argv[3], nullptr, 10), 20);
        runAll(bench, rows);
        return 0;
    }
    constexpr unsigned long kRows = 1000;
    for (const unsigned long oneOf : {1UL, 20UL}) {
        ColorBench bench;
        bench.makeSequences(kRows, 2000, oneOf);
        runAll(bench, kRows);
    }
    {
        ColorBench bench;
        bench.makeStructures(200, 500);
        bench.readLetters();
        bench.readDistances();
        bench.run("Color, By Distance: all but these", "colorDistance");
    }
    TAMBO::services::ConfigStore::setInstance(nullptr);
}
