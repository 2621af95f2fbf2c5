// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileBytes.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

double readBytes(const std::filesystem::path &path)
{
    double best = 1e9;
    for (int repeat = 0; repeat < 5; ++repeat) {
        const auto start = std::chrono::steady_clock::now();
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        const auto size = std::filesystem::file_size(path);
        const std::unique_ptr<char[]> bytes(new char[size]);
        std::size_t done = 0;
        for (ssize_t got = 1; got > 0 && done < size; done += static_cast<std::size_t>(got))
            got = read(file, bytes.get() + done, size - done);
        close(file);
        benchmark::DoNotOptimize(bytes.get()[size / 2]);
        best = std::min(
            best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}
