// SPDX-License-Identifier: GPL-3.0-or-later
// Reading an alignment file into rows, beside reading the same file's bytes. The bar for the whole
// of opening a file is three times the bytes; "of_reading" says how much of it the reader takes.
#include "FileReader.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

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

    const std::filesystem::path &get(std::int64_t rows, std::int64_t columns,
                                     std::int64_t lineLength)
    {
        const auto [file, isNew] = m_Files.try_emplace(
            {rows, columns, lineLength}, m_Folder / (std::to_string(m_Files.size()) + ".fasta"));
        if (isNew)
            write(file->second, rows, columns, static_cast<std::size_t>(lineLength));
        return file->second;
    }

private:
    // Three cells in ten are gaps, in runs of five on average.
    static void write(const std::filesystem::path &path, std::int64_t rows, std::int64_t columns,
                      std::size_t lineLength)
    {
        std::mt19937 random(7);
        std::ofstream file(path);
        for (std::int64_t row = 0; row < rows; ++row) {
            file << ">sequence" << row << " a description\n";
            std::string text;
            bool gap = false;
            for (std::int64_t column = 0; column < columns; ++column) {
                const unsigned roll = random();
                gap = gap ? roll % 100 >= 20 : roll % 700 < 60;
                text += gap ? '-' : "ARNDCQEGHILKMFPSTWYV"[(roll >> 10U) % 20];
            }
            for (std::size_t at = 0; at < text.size(); at += lineLength)
                file << std::string_view(text).substr(at, lineLength) << '\n';
        }
    }

    std::filesystem::path m_Folder;
    std::map<std::vector<std::int64_t>, std::filesystem::path> m_Files;
};

Files &files()
{
    static Files instance;
    return instance;
}

// Seconds for the bytes alone, all of them in memory at the end, the best of a few.
double readBytes(const std::filesystem::path &path)
{
    double best = 1e9;
    for (int repeat = 0; repeat < 5; ++repeat) {
        const auto start = Clock::now();
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        const auto size = std::filesystem::file_size(path);
        const std::unique_ptr<char[]> bytes(new char[size]);
        std::size_t done = 0;
        for (ssize_t got = 1; got > 0 && done < size; done += static_cast<std::size_t>(got))
            got = read(file, bytes.get() + done, size - done);
        close(file);
        benchmark::DoNotOptimize(bytes.get()[size / 2]);
        best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
    }
    return best;
}

void readAlignment(benchmark::State &state)
{
    const std::filesystem::path &path = files().get(state.range(0), state.range(1), state.range(2));
    const double bytesAlone = readBytes(path);
    double seconds = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        const TAMBO::Result<TAMBO::FileContents> contents = TAMBO::readFile(path);
        seconds += std::chrono::duration<double>(Clock::now() - start).count();
        if (!contents)
            state.SkipWithError(contents.error().message.c_str());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(std::filesystem::file_size(path)) *
                            static_cast<std::int64_t>(state.iterations()));
    state.counters["of_reading"] = seconds / static_cast<double>(state.iterations()) / bytesAlone;
}

BENCHMARK(readAlignment)
    ->ArgNames({"rows", "columns", "line"})
    ->Args({100, 500, 60})
    ->Args({1000, 2000, 60})
    ->Args({20000, 2000, 60})
    ->Args({10000, 10000, 60})
    ->Args({10000, 10000, 10000})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace

BENCHMARK_MAIN();
