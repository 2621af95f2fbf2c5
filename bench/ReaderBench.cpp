// SPDX-License-Identifier: GPL-3.0-or-later
// Reading an alignment file into rows, beside reading the same file's bytes. The bar for the whole
// of opening a file is three times the bytes; "of_reading" says how much of it the reader takes.
// "peak_of_loaded" is the most memory on the way beside what is left at the end; the bar is 3.
// Making objects of a file is timed beside making them of the same alignment as FASTA ("of_fasta",
// the bar is 2), and so is the most memory on the way ("peak_of_fasta").
#include "Alignment.h"
#include "ChangeScope.h"
#include "DataMaker.h"
#include "FileBytes.h"
#include "FileReader.h"
#include "HeapCount.h"
#include "MadeAlignment.h"
#include "ObjectFactory.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <compare>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

enum class Manner {
    Fasta,
    Pir,
    Stockholm,
    StockholmBlocks,
    StockholmMarked,
    Clustal,
    Msf,
    Phylip,
    Nexus
};

struct Shape
{
    Manner manner = Manner::Fasta;
    std::int64_t rows = 0;
    std::int64_t columns = 0;
    // Columns a line; formats of their own kind have as many as they always have.
    std::int64_t line = 60;

    friend auto operator<=>(const Shape &, const Shape &) = default;
};

std::vector<std::string> makeRows(const Shape &shape)
{
    const TAMBO::AlignmentRecord made = madeAlignment(static_cast<unsigned long>(shape.rows),
                                                      static_cast<unsigned long>(shape.columns));
    std::vector<std::string> rows;
    for (const TAMBO::RowRecord &row : made.rows)
        rows.push_back(row.sequence.text());
    return rows;
}

std::string nameOf(std::size_t row)
{
    return "sequence" + std::to_string(row);
}

void writeRecords(std::ostream &file, const std::vector<std::string> &rows, const Shape &shape)
{
    const auto step = static_cast<std::size_t>(shape.line);
    const bool isPir = shape.manner == Manner::Pir;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        file << (isPir ? ">P1;" + nameOf(row) + "\nsequence:" + nameOf(row) + "::::::::\n"
                       : '>' + nameOf(row) + " a description\n");
        for (std::size_t at = 0; at < rows[row].size(); at += step)
            file << std::string_view(rows[row]).substr(at, step) << '\n';
        if (isPir)
            file << "*\n";
    }
}

void writeBlocks(std::ostream &file, const std::vector<std::string> &rows, std::size_t step,
                 bool hasNamesInEveryBlock)
{
    for (std::size_t at = 0; at < rows.front().size(); at += step) {
        for (std::size_t row = 0; row < rows.size(); ++row) {
            std::string name = at == 0 || hasNamesInEveryBlock ? nameOf(row) : std::string();
            name.resize(16, ' ');
            file << name << std::string_view(rows[row]).substr(at, step) << '\n';
        }
        file << '\n';
    }
}

void writeMarked(std::ostream &file, const std::vector<std::string> &rows)
{
    for (std::size_t row = 0; row < rows.size(); ++row) {
        std::string said = rows[row];
        for (char &character : said)
            character = character == '-' ? '.' : '9';
        file << "#=GS " << nameOf(row) << " DE a description\n"
             << nameOf(row) << ' ' << rows[row] << "\n#=GR " << nameOf(row) << " PP " << said
             << '\n';
    }
}

void write(const std::filesystem::path &path, const Shape &shape)
{
    const std::vector<std::string> rows = makeRows(shape);
    const auto columns = static_cast<std::size_t>(shape.columns);
    std::ofstream file(path);
    switch (shape.manner) {
    case Manner::Fasta:
    case Manner::Pir:
        return writeRecords(file, rows, shape);
    case Manner::Stockholm:
    case Manner::StockholmBlocks:
        file << "# STOCKHOLM 1.0\n\n";
        writeBlocks(file, rows,
                    shape.manner == Manner::Stockholm ? columns
                                                      : static_cast<std::size_t>(shape.line),
                    true);
        file << "//\n";
        return;
    case Manner::StockholmMarked:
        file << "# STOCKHOLM 1.0\n\n";
        writeMarked(file, rows);
        file << "//\n";
        return;
    case Manner::Clustal:
        file << "CLUSTAL W (1.83) multiple sequence alignment\n\n";
        return writeBlocks(file, rows, 60, true);
    case Manner::Msf:
        file << "PileUp\n\n MSF: " << columns << " Type: P Check: 0 ..\n\n";
        for (std::size_t row = 0; row < rows.size(); ++row)
            file << " Name: " << nameOf(row) << " Len: " << columns << " Check: 0\n";
        file << "\n//\n\n";
        return writeBlocks(file, rows, 50, true);
    case Manner::Phylip:
        file << rows.size() << ' ' << columns << '\n';
        return writeBlocks(file, rows, 60, false);
    case Manner::Nexus:
        file << "#NEXUS\nBEGIN DATA;\nDIMENSIONS NTAX=" << rows.size() << " NCHAR=" << columns
             << ";\nFORMAT DATATYPE=PROTEIN GAP=- INTERLEAVE;\nMATRIX\n";
        writeBlocks(file, rows, 60, true);
        file << ";\nEND;\n";
        return;
    }
}

// Files are made once and go with the program.
class Files
{
public:
    Files()
        : m_Folder(std::filesystem::temp_directory_path() / ("reader-" + std::to_string(getpid())))
    {
        std::filesystem::create_directory(m_Folder);
    }
    ~Files() { std::filesystem::remove_all(m_Folder); }
    Files(const Files &) = delete;
    Files &operator=(const Files &) = delete;

    const std::filesystem::path &get(const Shape &shape)
    {
        const auto [file, isNew] =
            m_Files.try_emplace(shape, m_Folder / std::to_string(m_Files.size()));
        if (isNew)
            write(file->second, shape);
        return file->second;
    }

private:
    std::filesystem::path m_Folder;
    std::map<Shape, std::filesystem::path> m_Files;
};

Files &files()
{
    static Files instance;
    return instance;
}

void readAlignment(benchmark::State &state, Manner manner)
{
    const std::filesystem::path &path =
        files().get({manner, state.range(0), state.range(1), state.range(2)});
    const double bytesAlone = readBytes(path);
    double seconds = 0;
    double peak = 0;
    for (auto _ : state) {
        const std::size_t before = heapBytes();
        restartHeapPeak();
        const auto start = Clock::now();
        const TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readFile(path);
        seconds += std::chrono::duration<double>(Clock::now() - start).count();
        if (!contents) {
            state.SkipWithError(contents.error().message().c_str());
            return;
        }
        peak = double(heapPeak() - before) / double(heapBytes() - before);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(std::filesystem::file_size(path)) *
                            static_cast<std::int64_t>(state.iterations()));
    state.counters["of_reading"] = seconds / static_cast<double>(state.iterations()) / bytesAlone;
    state.counters["peak_of_loaded"] = peak;
}

struct Opening
{
    double seconds = 0;
    double peak = 0;
};

// From the file to objects, which are taken out again.
Opening openAlignment(const std::filesystem::path &path)
{
    const std::size_t before = heapBytes();
    restartHeapPeak();
    const auto start = Clock::now();
    TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readPackedFile(path);
    TAMBO::Alignment *alignment = nullptr;
    {
        const TAMBO::ChangeScope scope;
        alignment = TAMBO::ObjectFactory::adopt(std::move(contents.value().alignments.front()));
    }
    const Opening opening{std::chrono::duration<double>(Clock::now() - start).count(),
                          double(heapPeak() - before)};
    TAMBO::DataMaker::Destroy(alignment);
    return opening;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void openBesideFasta(benchmark::State &state, Manner manner)
{
    const std::filesystem::path fasta =
        files().get({Manner::Fasta, state.range(0), state.range(1), 60});
    const std::filesystem::path other =
        files().get({manner, state.range(0), state.range(1), state.range(2)});
    std::vector<double> seconds;
    std::vector<double> secondsOfFasta;
    double peak = 0;
    double peakOfFasta = 0;
    for (auto _ : state) {
        const Opening ofFasta = openAlignment(fasta);
        const Opening opening = openAlignment(other);
        state.SetIterationTime(opening.seconds);
        secondsOfFasta.push_back(ofFasta.seconds);
        seconds.push_back(opening.seconds);
        peakOfFasta = std::max(peakOfFasta, ofFasta.peak);
        peak = std::max(peak, opening.peak);
    }
    state.counters["of_fasta"] = median(seconds) / median(secondsOfFasta);
    state.counters["peak_of_fasta"] = peak / peakOfFasta;
}

void everySize(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"rows", "columns", "line"})
        ->Args({100, 500, 60})
        ->Args({1000, 2000, 60})
        ->Args({20000, 2000, 60})
        ->Args({10000, 10000, 60})
        ->Args({10000, 10000, 10000})
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

void oneSize(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"rows", "columns", "line"})
        ->Args({10000, 2000, 60})
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

// Blocks of the widths that they mostly have.
template <std::int64_t line> void largeSizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"rows", "columns", "line"})
        ->Args({10000, 10000, line})
        ->Args({1000000, 200, line})
        ->Unit(benchmark::kMillisecond)
        ->Iterations(9)
        ->UseManualTime();
}

BENCHMARK_CAPTURE(readAlignment, fasta, Manner::Fasta)->Apply(everySize);
BENCHMARK_CAPTURE(readAlignment, fasta, Manner::Fasta)->Apply(oneSize);
BENCHMARK_CAPTURE(readAlignment, pir, Manner::Pir)->Apply(oneSize);
BENCHMARK_CAPTURE(readAlignment, stockholm, Manner::Stockholm)->Apply(oneSize);
BENCHMARK_CAPTURE(readAlignment, stockholm_blocks, Manner::StockholmBlocks)->Apply(oneSize);
BENCHMARK_CAPTURE(readAlignment, stockholm_marked, Manner::StockholmMarked)->Apply(oneSize);
BENCHMARK_CAPTURE(readAlignment, clustal, Manner::Clustal)->Apply(oneSize);
BENCHMARK_CAPTURE(readAlignment, msf, Manner::Msf)->Apply(oneSize);
BENCHMARK_CAPTURE(readAlignment, phylip, Manner::Phylip)->Apply(oneSize);
BENCHMARK_CAPTURE(readAlignment, nexus, Manner::Nexus)->Apply(oneSize);

BENCHMARK_CAPTURE(openBesideFasta, pir, Manner::Pir)->Apply(largeSizes<75>);
BENCHMARK_CAPTURE(openBesideFasta, stockholm, Manner::Stockholm)->Apply(largeSizes<60>);
BENCHMARK_CAPTURE(openBesideFasta, stockholm_blocks, Manner::StockholmBlocks)
    ->Apply(largeSizes<200>);
BENCHMARK_CAPTURE(openBesideFasta, clustal, Manner::Clustal)->Apply(largeSizes<60>);

} // namespace

BENCHMARK_MAIN();
