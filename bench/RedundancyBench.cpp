// SPDX-License-Identifier: GPL-3.0-or-later
// The search for redundant rows, without the copying of the rows: families of rows that are alike,
// and rows that have nothing to do with each other, of which each is compared with all.
#include "RedundantRows.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

namespace {

using companion::IdentityOf;

constexpr int kRows = 10'000;
constexpr int kColumns = 500;

std::string randomRow(std::mt19937 &random)
{
    std::string text(kColumns, '-');
    for (char &letter : text)
        if (random() % 10 < 7)
            letter = "ACDEFGHIKLMNPQRSTVWY"[random() % 20];
    return text;
}

// Each is one of so many families, with a tenth to a half of its residues changed.
companion::ComparedRows madeRows(unsigned families)
{
    std::mt19937 random(1);
    std::vector<std::string> founders(families);
    for (std::string &each : founders)
        each = randomRow(random);
    companion::ComparedRows rows(kColumns);
    for (int row = 0; row < kRows; ++row) {
        std::string text = founders[random() % families];
        const unsigned percent = 10 + unsigned(random() % 40);
        for (char &letter : text)
            if (letter != '-' && random() % 100 < percent)
                letter = "ACDEFGHIKLMNPQRSTVWY"[random() % 20];
        rows.add(text, false);
    }
    return rows;
}

companion::ComparedRows strangers()
{
    std::mt19937 random(1);
    companion::ComparedRows rows(kColumns);
    for (int row = 0; row < kRows; ++row)
        rows.add(randomRow(random), false);
    return rows;
}

// The first number is the least identity in percent.
void search(benchmark::State &state, const companion::ComparedRows &rows, IdentityOf compared)
{
    std::size_t found = 0;
    for (auto _ : state) {
        const auto redundant =
            companion::redundantRows(rows, {double(state.range(0)) / 100, compared, true});
        found = redundant->size();
        benchmark::DoNotOptimize(found);
    }
    state.counters["redundant"] = double(found);
}

void Strangers(benchmark::State &state)
{
    search(state, strangers(), IdentityOf::ShorterSequence);
}

void OneFamily(benchmark::State &state)
{
    search(state, madeRows(1), IdentityOf::ShorterSequence);
}

void HundredFamilies(benchmark::State &state)
{
    search(state, madeRows(100), IdentityOf::ShorterSequence);
}

void OneFamilyByAlignedPairs(benchmark::State &state)
{
    search(state, madeRows(1), IdentityOf::AlignedPairs);
}

BENCHMARK(Strangers)->Arg(90)->Arg(40)->Unit(benchmark::kMillisecond);
BENCHMARK(OneFamily)->Arg(90)->Arg(70)->Arg(40)->Unit(benchmark::kMillisecond);
BENCHMARK(HundredFamilies)->Arg(90)->Arg(70)->Unit(benchmark::kMillisecond);
BENCHMARK(OneFamilyByAlignedPairs)->Arg(90)->Arg(70)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
