// SPDX-License-Identifier: GPL-3.0-or-later
// Objects as bytes and back, in processor time: how long a piece of them takes that the window's
// thread writes between two events, how long all of them take, and how many bytes a row has.
// "of_copy" is the time in relation to that of copying so many bytes.
#include "MadeAlignment.h"

#include "Alignment.h"
#include "ChangeScope.h"
#include "ObjectFactory.h"
#include "ObjectIndex.h"
#include "ObjectLoader.h"
#include "ObjectSpace.h"
#include "ObjectStore.h"
#include "ObjectWriter.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace {

using Pieces = std::vector<std::string>;

constexpr std::size_t kPiece = std::size_t(256) << 10;

// Other programs do not count.
double processorTime()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

void fillSpace(const benchmark::State &state)
{
    TAMBO::ObjectSpace::get().reset();
    const TAMBO::ChangeScope scope;
    TAMBO::ObjectFactory::adopt(madeAlignment(static_cast<unsigned long>(state.range(0)),
                                              static_cast<unsigned long>(state.range(1))));
}

// All objects, or the alignment alone, which came last.
TAMBO::ObjectStore storeOf(bool isAll)
{
    const TAMBO::ObjectSpace &space = TAMBO::ObjectSpace::get();
    if (isAll)
        return TAMBO::ObjectStore(space);
    const TAMBO::Compound *const rows = space.object(space.objectCount() - 1);
    return TAMBO::ObjectStore(std::vector{TAMBO::StoredObject::from(rows)});
}

Pieces piecesOf(bool isAll)
{
    Pieces pieces;
    TAMBO::ObjectStore store = storeOf(isAll);
    TAMBO::ObjectWriter out;
    while (store.writeNext(out, kPiece))
        pieces.push_back(out.take());
    return pieces;
}

// Of copying them from one place to another, in seconds.
double copyTime(const Pieces &pieces)
{
    std::vector<char> room(2 * kPiece);
    const double begin = processorTime();
    for (const std::string &piece : pieces) {
        room.resize(std::max(room.size(), piece.size()));
        std::memcpy(room.data(), piece.data(), piece.size());
        benchmark::DoNotOptimize(room.data());
    }
    return processorTime() - begin;
}

void storeObjects(benchmark::State &state, bool isAll)
{
    fillSpace(state);
    double longest = 0;
    double all = 0;
    for (auto run : state) {
        TAMBO::ObjectStore store = storeOf(isAll);
        TAMBO::ObjectWriter out;
        for (bool isMore = true; isMore;) {
            out.clear();
            const double begin = processorTime();
            isMore = store.writeNext(out, kPiece);
            const double took = processorTime() - begin;
            longest = std::max(longest, took);
            all += took;
        }
    }
    const Pieces pieces = piecesOf(isAll);
    double bytes = 0;
    for (const std::string &piece : pieces)
        bytes += double(piece.size());
    state.counters["longest_piece_ms"] = longest * 1e3;
    state.counters["pieces"] = double(pieces.size());
    state.counters["bytes_a_row"] = bytes / double(state.range(0));
    state.counters["ns_a_row"] = all * 1e9 / double(state.iterations()) / double(state.range(0));
    state.counters["of_copy"] = all / double(state.iterations()) / copyTime(pieces);
    TAMBO::ObjectSpace::get().reset();
}

void store(benchmark::State &state)
{
    storeObjects(state, true);
}
BENCHMARK(store)->Args({10'000, 10'000})->Args({1'000'000, 200})->Unit(benchmark::kMillisecond);

void storeRows(benchmark::State &state)
{
    storeObjects(state, false);
}
BENCHMARK(storeRows)->Args({10'000, 10'000})->Args({1'000'000, 200})->Unit(benchmark::kMillisecond);

void load(benchmark::State &state)
{
    fillSpace(state);
    const Pieces pieces = piecesOf(true);
    double all = 0;
    for (auto run : state) {
        state.PauseTiming();
        TAMBO::ObjectSpace::get().reset();
        state.ResumeTiming();
        const double begin = processorTime();
        TAMBO::ObjectIndex index;
        TAMBO::ObjectLoader loader(index);
        for (const std::string &piece : pieces) {
            if (!loader.read(piece))
                return state.SkipWithError("a piece is damaged");
        }
        if (!loader.complete() || !loader.fill(TAMBO::ObjectSpace::get()))
            return state.SkipWithError("something is missing");
        all += processorTime() - begin;
    }
    state.counters["ns_a_row"] = all * 1e9 / double(state.iterations()) / double(state.range(0));
    state.counters["of_copy"] = all / double(state.iterations()) / copyTime(pieces);
    TAMBO::ObjectSpace::get().reset();
}
BENCHMARK(load)->Args({10'000, 10'000})->Args({1'000'000, 200})->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
