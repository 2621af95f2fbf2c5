// SPDX-License-Identifier: GPL-3.0-or-later
// Writing a loaded alignment as a file, beside reading that file's bytes: the whole of it, which
// puts the file on the disk, reads it back and compares ("of_reading"), and the making of its text
// alone ("text_of_reading"). What all this occupies at most, the alignment included, is compared
// with the alignment ("peak_of_loaded"); the bar is 3.
#include "Alignment.h"
#include "AlignmentWriters.h"
#include "ChangeScope.h"
#include "DataMaker.h"
#include "FileBytes.h"
#include "FileWriter.h"
#include "HeapCount.h"
#include "MadeAlignment.h"
#include "ObjectFactory.h"
#include "RecordMaker.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

using namespace TAMBO;
using Clock = std::chrono::steady_clock;

struct Loaded
{
    const Alignment *alignment = nullptr;
    std::size_t bytes = 0;

    Loaded()
    {
        const std::size_t before = heapBytes();
        const ChangeScope scope;
        alignment = ObjectFactory::adopt(madeAlignment(10000, 2000));
        bytes = heapBytes() - before;
    }
};

const Loaded &loaded()
{
    static const Loaded instance;
    return instance;
}

class NullSink final : public formats::TextSink
{
public:
    void write(std::string_view text) override { benchmark::DoNotOptimize(text.data()); }
};

using Write = void (*)(const formats::FittedAlignment &alignment, formats::TextSink &sink);

void writeAlignment(benchmark::State &state, const char *format, Write write)
{
    const WriteOptions options = writeOptionsNamed(format).value();
    const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                       ("writer-" + std::to_string(getpid()) + '.' + format);
    const std::size_t loadedBytes = loaded().bytes;
    const std::size_t begin = heapBytes() - loadedBytes;
    restartHeapPeak();
    double seconds = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        const AlignmentSnapshot snapshot = makeSnapshot(*loaded().alignment);
        if (const auto written = writeFile(path, snapshot, options); !written) {
            state.SkipWithError(written.error().message().c_str());
            return;
        }
        seconds += std::chrono::duration<double>(Clock::now() - start).count();
    }
    const double peak = double(heapPeak() - begin);
    const AlignmentSnapshot snapshot = makeSnapshot(*loaded().alignment);
    // The best of a few, as of the reading.
    double text = 1e9;
    for (int repeat = 0; repeat < 5; ++repeat) {
        const auto start = Clock::now();
        NullSink sink;
        write(formats::FittedAlignment(snapshot, options), sink);
        text = std::min(text, std::chrono::duration<double>(Clock::now() - start).count());
    }
    const double bytesAlone = readBytes(path);
    state.counters["of_reading"] = seconds / double(state.iterations()) / bytesAlone;
    state.counters["text_of_reading"] = text / bytesAlone;
    state.counters["peak_of_loaded"] = peak / double(loadedBytes);
    std::filesystem::remove(path);
}

// What the window's thread does before another one writes, and what that keeps meanwhile: the time
// and the memory of a snapshot ("megabytes"), and those of a record beside it.
template <typename Make> void keepAlignment(benchmark::State &state, Make make)
{
    const auto rows = static_cast<unsigned long>(state.range(0));
    const auto columns = static_cast<unsigned long>(state.range(1));
    Alignment *alignment = nullptr;
    {
        const ChangeScope scope;
        alignment = ObjectFactory::adopt(madeAlignment(rows, columns));
    }
    double bytes = 0;
    for (auto _ : state) {
        const std::size_t before = heapBytes();
        const auto kept = make(*alignment);
        bytes = double(heapBytes() - before);
    }
    state.counters["megabytes"] = bytes / 1e6;
    DataMaker::Destroy(alignment);
}

void takeSnapshot(benchmark::State &state)
{
    keepAlignment(state, [](const Alignment &alignment) { return makeSnapshot(alignment); });
}

void copyRecord(benchmark::State &state)
{
    keepAlignment(state, [](const Alignment &alignment) { return makeRecord(alignment); });
}

BENCHMARK(takeSnapshot)
    ->Args({100, 500})
    ->Args({10000, 10000})
    ->Args({1000000, 200})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(copyRecord)
    ->Args({100, 500})
    ->Args({10000, 10000})
    ->Args({1000000, 200})
    ->Unit(benchmark::kMillisecond);

#define TAMBO_WRITER(format, write)                                                                \
    BENCHMARK_CAPTURE(writeAlignment, format, #format, write)                                      \
        ->Unit(benchmark::kMillisecond)                                                            \
        ->UseRealTime()

TAMBO_WRITER(pir, formats::writePir);
TAMBO_WRITER(fasta, formats::writeFasta);
TAMBO_WRITER(stockholm, formats::writeStockholm);
TAMBO_WRITER(a3m, formats::writeInsertions);
TAMBO_WRITER(clustal, formats::writeClustal);
TAMBO_WRITER(msf, formats::writeMsf);
TAMBO_WRITER(phylip, formats::writePhylip);
TAMBO_WRITER(nexus, formats::writeNexus);

} // namespace

BENCHMARK_MAIN();
