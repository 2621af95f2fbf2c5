// SPDX-License-Identifier: GPL-3.0-or-later
// Of 10,000 residues with 100,000 atoms: writing the template of a modelling job, where "of_bytes"
// is the time in relation to that of writing the same bytes at once; and reading all atoms as a
// picture of them needs it, at once and along the tree.
#include "Alignment.h"
#include "AlignmentTable.h"
#include "DataPointBase.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "StructureDetails.h"
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

void atomsAtOnce(benchmark::State &state)
{
    makeTemplate();
    const TAMBO::Compound *const structure = TAMBO::ObjectSpace::get().object(0);
    for (auto run : state)
        benchmark::DoNotOptimize(TAMBO::StructureDetails::read(structure).atoms.size());
    TAMBO::ObjectSpace::get().reset();
}
BENCHMARK(atomsAtOnce)->Unit(benchmark::kMillisecond);

void atomsByTheTree(benchmark::State &state)
{
    makeTemplate();
    const TAMBO::Compound *const chain = TAMBO::ObjectSpace::get().object(0)->Child(0);
    for (auto run : state) {
        float sum = 0;
        for (std::size_t i = 0; i < chain->ChildCount(); ++i) {
            const TAMBO::Compound *const residue = chain->Child(i);
            benchmark::DoNotOptimize(residue->TypeName());
            for (std::size_t k = 0; k < residue->ChildCount(); ++k) {
                const TAMBO::Compound *const atom = residue->Child(k);
                benchmark::DoNotOptimize(atom->Name());
                sum += atom->Position().x() + float(atom->TypeName().size()) +
                       TAMBO::StructureDetails::bFactor(atom);
            }
        }
        benchmark::DoNotOptimize(sum);
    }
    TAMBO::ObjectSpace::get().reset();
}
BENCHMARK(atomsByTheTree)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
