// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenedSequences.h"

#include "Alignment.h"
#include "Loader.h"
#include "ObjectReferences.h"
#include "PointerSet.h"
#include "Structure.h"

#include <QTimer>

#include <algorithm>
#include <memory>
#include <utility>

namespace TAMBO::app {

namespace {

std::vector<Compound *> sequencesOf(const LoadReport &report)
{
    std::vector<Compound *> all;
    for (const Alignment *const alignment : report.alignments)
        for (unsigned long row = 0; row < alignment->height(); ++row)
            all.push_back(alignment->GetSeq(row));
    for (std::size_t i = 0; i < report.structures.size(); ++i) {
        // Others have come because rows name them.
        const std::filesystem::path &file = report.structureOrigins[i].file;
        if (std::ranges::find(report.asked, file) != report.asked.end())
            GetPeptides(report.structures[i], all, true);
    }
    PointerSet<Compound> seen;
    std::vector<Compound *> sequences;
    for (Compound *const sequence : all)
        if (sequence != nullptr && seen.insert(sequence))
            sequences.push_back(sequence);
    return sequences;
}

} // namespace

void OpenedSequences::await(std::vector<std::filesystem::path> files, Use use)
{
    m_Waiting.push_back({std::move(files), std::move(use)});
}

void OpenedSequences::arrived(const LoadReport &report)
{
    const auto found = std::ranges::find(m_Waiting, report.asked, &Waiting::files);
    if (found == m_Waiting.end())
        return;
    const Use use = std::move(found->use);
    m_Waiting.erase(found);
    if (report.isCancelled || report.read.empty())
        return;
    // The next command is about to begin, and whoever uses them may wait for something.
    const auto sequences = std::make_shared<ObjectReferences>(sequencesOf(report));
    QTimer::singleShot(0, this, [use, sequences] { use(sequences->objects()); });
}

} // namespace TAMBO::app
