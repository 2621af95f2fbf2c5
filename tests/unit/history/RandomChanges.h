// SPDX-License-Identifier: GPL-3.0-or-later
// Changes of all kinds to whatever there is, drawn by lot.
#pragma once

#include "unit/history/HistoryFixture.h"

#include "Element.h"
#include "ResidueTies.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

class RandomChanges : public HistoryFixture
{
protected:
    explicit RandomChanges(unsigned seed) : random(seed) { }

    // Drawn one after the other, each in a statement of its own: compilers differ in the order in
    // which they make the arguments of a call, and all are to meet the same work.
    unsigned below(std::size_t limit) { return unsigned(random() % limit); }

    template <typename Kind> std::vector<Kind *> all() const
    {
        std::vector<Kind *> found;
        for (TAMBO::Compound *object : space()) {
            if (auto *const kind = dynamic_cast<Kind *>(object))
                found.push_back(kind);
        }
        return found;
    }
    std::vector<TAMBO::Peptide *> sequences() const
    {
        std::vector<TAMBO::Compound *> found;
        TAMBO::GetPeptides(&space(), found, true);
        std::vector<TAMBO::Peptide *> result;
        for (TAMBO::Compound *object : found)
            result.push_back(TAMBO::Peptide::from(object));
        return result;
    }
    std::string letters()
    {
        std::string text;
        for (unsigned i = 3 + below(12); i > 0; --i)
            text += "ACDEFGHIKLMNPQRSTVWY"[below(20)];
        return text;
    }

    void changeSomething();
    void changeAlignment(TAMBO::Alignment &alignment);
    // What a file or a modelling job brings.
    void bringSomething();

    std::mt19937 random;
    int made = 0;
};

inline void RandomChanges::changeAlignment(TAMBO::Alignment &alignment)
{
    const unsigned long width = alignment.width();
    const unsigned long height = alignment.height();
    const std::vector<TAMBO::Peptide *> peptides = sequences();
    if (width == 0 || height == 0) {
        if (!peptides.empty())
            alignment.addRows({peptides[below(peptides.size())]});
        return;
    }
    switch (below(8)) {
    case 0: {
        const unsigned column = below(width);
        alignment.insertGap(below(height), column);
        break;
    }
    case 1:
    case 2: {
        const bool isWhole = below(2) == 0;
        const unsigned target = below(width);
        const unsigned column = below(width);
        alignment.moveGap(below(height), column, target, isWhole);
        break;
    }
    case 3: {
        const unsigned target = below(height);
        const unsigned from = below(height);
        if (target < from) {
            alignment.bubbleRow(from, target);
        } else {
            std::vector<unsigned long> order(height);
            std::iota(order.begin(), order.end(), 0);
            std::rotate(order.begin(), order.begin() + from, order.end());
            std::reverse(order.begin(), order.begin() + target + 1);
            alignment.reorderRows(order);
        }
        break;
    }
    case 4:
        alignment.remove({below(width), below(width)});
        break;
    case 5: {
        const unsigned count = 1 + below(3);
        alignment.insertGapCol(below(width + 1), count);
        break;
    }
    case 6:
        alignment.removeRow(below(height));
        break;
    default:
        alignment.combine(*all<TAMBO::Alignment>()[below(all<TAMBO::Alignment>().size())]);
        break;
    }
}

inline void RandomChanges::changeSomething()
{
    const std::vector<TAMBO::Peptide *> peptides = sequences();
    const std::vector<TAMBO::Alignment *> alignments = all<TAMBO::Alignment>();
    const unsigned kind = below(16);
    const std::string name = "object" + std::to_string(++made);
    if (kind == 0 || peptides.empty()) {
        peptide(name, letters());
    } else if (kind == 1) {
        structure(name, {{"A", letters()}, {"B", letters()}});
    } else if (kind == 2 || alignments.empty()) {
        std::vector<TAMBO::Compound *> rows;
        for (unsigned i = 1 + below(4); i > 0; --i)
            rows.push_back(peptides[below(peptides.size())]);
        TAMBO::DataMaker::makeAlignment(name, rows);
    } else if (kind == 3) {
        TAMBO::DataMaker::Destroy(*(space().begin() + below(space().objectCount())));
    } else if (kind == 4) {
        TAMBO::DataMaker::Destroy(peptides[below(peptides.size())]);
    } else if (kind == 5) {
        TAMBO::renameObject(**(space().begin() + below(space().objectCount())), name);
    } else if (kind == 6 || kind == 7) {
        TAMBO::Peptide &sequence = *peptides[below(peptides.size())];
        for (unsigned i = below(20); i > 0; --i)
            sequence.residue(below(sequence.residueCount()))->SetColor(Color(below(4)));
    } else if (kind == 8) {
        TAMBO::Peptide &sequence = *peptides[below(peptides.size())];
        for (unsigned i = below(5); i > 0; --i) {
            const char letter = below(2) ? 'A' : ' ';
            const TAMBO::SequenceNumber number(int(below(30)), letter);
            sequence.setNumber(below(sequence.residueCount()), number);
        }
    } else if (kind == 9) {
        TAMBO::Peptide &sequence = *peptides[below(peptides.size())];
        std::vector<TAMBO::Compound *> residues;
        for (std::size_t i = below(sequence.residueCount()); i < sequence.residueCount(); ++i)
            residues.push_back(sequence.residue(i));
        TAMBO::DataMaker::makeSSE(&sequence, name, residues, "HET"[below(3)]);
    } else if (kind == 10) {
        // A row that shares residues with chains of several structures.
        auto tied = std::make_unique<TAMBO::Peptide>(name, letters());
        TAMBO::Peptide &chain = *peptides[below(peptides.size())];
        if (dynamic_cast<TAMBO::Structure *>(chain.Parent()) != nullptr)
            tied->tie(1, chain, 0, std::min(tied->residueCount() - 1, chain.residueCount()));
        space().add(std::move(tied));
    } else {
        changeAlignment(*alignments[below(alignments.size())]);
    }
}

inline void RandomChanges::bringSomething()
{
    const std::string name = "arrived" + std::to_string(++made);
    const std::vector<TAMBO::Peptide *> peptides = sequences();
    if (below(3) == 0 || peptides.empty()) {
        peptide(name, letters());
        return;
    }
    TAMBO::Structure &built = structure(name, {{"A", letters()}});
    TAMBO::Peptide &target = *peptides[below(peptides.size())];
    if (target.Parent() != &space())
        return;
    TAMBO::ResidueTies ties;
    const std::size_t count = std::min(target.residueCount(), built.chain(0)->residueCount());
    ties.append({0, std::uint32_t(count), 0, built.chain(0)});
    target.retie(std::move(ties));
}
