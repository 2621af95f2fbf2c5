// SPDX-License-Identifier: GPL-3.0-or-later
// Writing the template of a modelling job: 10,000 residues with 100,000 atoms. "of_bytes" is the
// time in relation to that of writing the same bytes at once.
#include "Alignment.h"
#include "AlignmentTable.h"
#include "DataPointBase.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "WritePDB.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kResidues = 10'000;
constexpr int kAtoms = 10;

TAMBO::Alignment &makeTemplate()
{
    TAMBO::StructureRecord structure;
    structure.name = "known";
    TAMBO::ChainRecord &chain = structure.chains.emplace_back();
    chain.name = "A";
    for (int i = 0; i < kResidues; ++i) {
        TAMBO::ResidueRecord &residue = chain.residues.emplace_back();
        residue.typeName = "ALA";
        residue.letter = 'A';
        residue.number = TAMBO::SequenceNumber(i + 1);
        for (int atom = 0; atom < kAtoms; ++atom)
            residue.atoms.push_back(
                {"CA", "C", TAMBO::Vertex(float(i) * 0.1F, float(atom), -1.234F)});
    }
    TAMBO::AlignmentRecord alignment;
    alignment.name = "family";
    TAMBO::RowRecord &row = alignment.rows.emplace_back();
    row.name = "known";
    row.sequence.append(std::string(kResidues, 'A'));
    const DataPointBase guard(nullptr, Publisher::Add);
    TAMBO::ObjectFactory::adopt(std::move(structure));
    return *TAMBO::ObjectFactory::adopt(std::move(alignment));
}

void templateOfAJob(benchmark::State &state)
{
    TAMBO::Alignment &alignment = makeTemplate();
    const QTemporaryDir folder;
    const QString path = folder.filePath("str.pdb");
    const auto begin = Clock::now();
    for (auto run : state)
        ZEP::writePDB(path, &alignment);
    const double writing =
        std::chrono::duration<double>(Clock::now() - begin).count() / double(state.iterations());

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return state.SkipWithError("nothing was written");
    const QByteArray text = file.readAll();
    QFile plain(folder.filePath("plain"));
    const auto plainBegin = Clock::now();
    if (!plain.open(QIODevice::WriteOnly) || plain.write(text) != text.size())
        return state.SkipWithError("the disk is full");
    plain.close();
    state.counters["of_bytes"] =
        writing / std::chrono::duration<double>(Clock::now() - plainBegin).count();
    state.counters["atoms"] = double(text.count('\n'));
    TAMBO::ObjectSpace::get().reset();
}
BENCHMARK(templateOfAJob)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
