// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowTie.h"

#include "Peptide.h"
#include "Structure.h"
#include "StructureLookup.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace TAMBO {

namespace {

// Fewer equal letters among those matched, in percent, mean that the row is not of this chain.
constexpr std::size_t kLeastIdentity = 70;
constexpr std::size_t kLeastIdentityByNameAlone = 95;

struct ChainRange
{
    std::size_t begin = 0;
    std::size_t end = 0;
};

std::vector<Peptide *> proteinChains(const Structure &structure)
{
    std::vector<Peptide *> chains;
    for (std::size_t i = 0; i < structure.objectCount(); ++i) {
        if (structure.chain(i)->residueCount() > 0)
            chains.push_back(structure.chain(i));
    }
    return chains;
}

bool hasChain(const Structure &structure, const std::string &name)
{
    return std::ranges::any_of(proteinChains(structure),
                               [&](const Peptide *chain) { return chain->Name() == name; });
}

std::optional<std::size_t> indexOf(const Peptide &chain, const std::string &number,
                                   std::size_t from)
{
    const SequenceNumber wanted(number);
    if (!wanted.isValid())
        return std::nullopt;
    for (std::size_t i = from; i < chain.residueCount(); ++i) {
        if (chain.number(i) == wanted)
            return i;
    }
    return std::nullopt;
}

// The residues that the row claims by number; "+485" is a count. None when the numbers are absent
// or not those of the chain.
std::optional<ChainRange> claimedRange(const Peptide &chain, const StructureLink &link)
{
    const std::optional<std::size_t> first = indexOf(chain, link.first, 0);
    if (!first)
        return std::nullopt;
    if (link.last.starts_with('+')) {
        const SequenceNumber count(link.last.substr(1));
        if (!count.isValid() || count.number() <= 0)
            return std::nullopt;
        const std::size_t end = *first + std::size_t(count.number());
        return end <= chain.residueCount() ? std::optional(ChainRange{*first, end}) : std::nullopt;
    }
    const std::optional<std::size_t> last = indexOf(chain, link.last, *first);
    return last ? std::optional(ChainRange{*first, *last + 1}) : std::nullopt;
}

// Where the numbering jumps, residues may be missing.
std::vector<std::size_t> numberingBreaks(const Peptide &chain)
{
    std::vector<std::size_t> breaks;
    SequenceNumber before = chain.number(0);
    for (std::size_t i = 1; i < chain.residueCount(); ++i) {
        const SequenceNumber number = chain.number(i);
        const int step = number.number() - before.number();
        if (step < 0 || step > 1)
            breaks.push_back(i);
        before = number;
    }
    return breaks;
}

// "M1-S5" for letters, as people count them.
std::string lettersText(std::string_view letters, std::size_t first, std::size_t count)
{
    std::string text = letters[first] + std::to_string(first + 1);
    if (count > 1)
        text += "-" + std::string(1, letters[first + count - 1]) + std::to_string(first + count);
    return text;
}

std::string joined(const std::vector<std::string> &parts)
{
    std::string text;
    for (const std::string &part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

} // namespace

RowTie::RowTie(const RowRecord &row, const StructureLookup &structures)
    : m_Row(row), m_Chain(row.link->chain)
{
    if (structures.isEmpty() || row.sequence.letters.empty())
        return;
    const bool isNamed = !row.link->structure.empty();
    const std::vector<Structure *> named = findStructures(structures);
    if (named.empty())
        return;

    Candidate best;
    const Structure *bestStructure = nullptr;
    for (const Structure *const structure : named) {
        Candidate candidate = tieTo(*structure);
        if (bestStructure == nullptr || candidate.identical > best.identical ||
            (candidate.isExact && !best.isExact)) {
            best = std::move(candidate);
            bestStructure = structure;
        }
        if (best.isExact)
            break;
    }
    // Few letters agree anyhow, so half of the shorter sequence at least must be matched. A name
    // alone may be a coincidence, so such a row must be of that chain beyond doubt.
    const std::size_t shorter = std::min(row.sequence.letters.size(), best.available);
    const std::size_t least = isNamed ? kLeastIdentity : kLeastIdentityByNameAlone;
    const std::size_t among =
        isNamed ? std::max(best.matched, shorter / 2) : row.sequence.letters.size();
    if (best.identical == 0 || best.identical * 100 < among * least) {
        if (isNamed)
            m_Remarks.push_back("\"" + row.name + "\": no chain of " + bestStructure->Name() +
                                " has this sequence; the row is not tied to it.");
        return;
    }
    m_Runs = std::move(best.runs);
    m_IsExact = best.isExact;
    if (isNamed || !m_IsExact)
        tellDifferences(*bestStructure);
}

std::vector<Structure *> RowTie::findStructures(const StructureLookup &structures)
{
    const std::string &name = m_Row.link->structure;
    NamedStructures found = structures.findWithChain(name.empty() ? m_Row.name : name);
    const bool isChainGiven = !name.empty() && !m_Chain.empty();
    if (found.structures.empty() || found.chain.empty() || isChainGiven)
        return std::move(found.structures);
    // "row_1" is no name of a structure that has no chain 1.
    m_Chain = found.chain;
    const std::string first = found.structures.front()->Name();
    std::erase_if(found.structures,
                  [this](const Structure *structure) { return !hasChain(*structure, m_Chain); });
    if (!name.empty() && found.structures.empty())
        m_Remarks.push_back("\"" + m_Row.name + "\": " + first + " has no chain " + m_Chain +
                            "; the row is not tied to it.");
    return std::move(found.structures);
}

RowTie::Candidate RowTie::tieTo(const Structure &structure) const
{
    const std::vector<Peptide *> chains = proteinChains(structure);
    const StructureLink &link = *m_Row.link;
    const auto named = std::ranges::find_if(
        chains, [&](const Peptide *chain) { return !m_Chain.empty() && chain->Name() == m_Chain; });

    // A row over several chains, in the order of the file.
    const bool endsInAnother = !link.lastChain.empty() && link.lastChain != m_Chain;
    if (endsInAnother || !m_Row.chainBreaks.empty()) {
        const auto begin = m_Chain.empty() ? chains.begin() : named;
        auto end = std::find_if(begin, chains.end(), [&](const Peptide *chain) {
            return chain->Name() == link.lastChain;
        });
        if (endsInAnother && end != chains.end())
            ++end;
        else
            end = begin + std::min<std::ptrdiff_t>(chains.end() - begin,
                                                   std::ptrdiff_t(m_Row.chainBreaks.size()) + 1);
        if (end - begin > 1)
            return tieToChains({begin, end});
    }
    if (named != chains.end()) {
        // The same identifier may come again, for what follows in the file.
        Candidate best;
        for (auto chain = named; chain != chains.end() && !best.isExact; ++chain) {
            if ((*chain)->Name() != m_Chain)
                continue;
            Candidate candidate = tieToChain(**chain);
            if (candidate.isExact || candidate.identical > best.identical)
                best = std::move(candidate);
        }
        return best;
    }
    // Blank, or an identifier that the structure does not use.
    Candidate best;
    for (Peptide *const chain : chains) {
        Candidate candidate = tieToChain(*chain);
        if (candidate.isExact)
            return candidate;
        if (candidate.identical > best.identical)
            best = std::move(candidate);
    }
    return best;
}

RowTie::Candidate RowTie::tieToChain(Peptide &chain) const
{
    const std::string_view letters = m_Row.sequence.letters;
    const std::string_view shown = chain.letters();
    const auto exact = [&](std::size_t begin) {
        return Candidate{{{0, letters.size(), &chain, begin}},
                         letters.size(),
                         letters.size(),
                         letters.size(),
                         true};
    };

    const std::optional<ChainRange> claimed = claimedRange(chain, *m_Row.link);
    if (claimed && shown.substr(claimed->begin, claimed->end - claimed->begin) == letters)
        return exact(claimed->begin);
    if (shown == letters)
        return exact(0);
    // A domain of the chain, when it is there only once.
    const std::size_t place = shown.find(letters);
    if (place != std::string_view::npos && shown.find(letters, place + 1) == std::string_view::npos)
        return exact(place);

    const auto match = [&](const ChainRange &range) {
        std::vector<std::size_t> breaks;
        for (const std::size_t position : numberingBreaks(chain)) {
            if (position >= range.begin && position < range.end)
                breaks.push_back(position - range.begin);
        }
        const SequenceMatch found =
            matchSequences(letters, shown.substr(range.begin, range.end - range.begin), breaks);
        Candidate candidate;
        candidate.identical = found.identical;
        candidate.matched = found.matched;
        candidate.available = range.end - range.begin;
        for (const MatchRun &run : found.runs)
            candidate.runs.push_back({run.first, run.count, &chain, range.begin + run.second});
        return candidate;
    };
    Candidate whole = match({0, chain.residueCount()});
    if (claimed) {
        // The numbers may be wrong, so they only decide when nothing speaks against them.
        Candidate part = match(*claimed);
        if (part.identical >= whole.identical)
            return part;
    }
    return whole;
}

RowTie::Candidate RowTie::tieToChains(const std::vector<Peptide *> &chains) const
{
    const std::string_view letters = m_Row.sequence.letters;
    Candidate all;
    for (const Peptide *const chain : chains)
        all.available += chain->residueCount();
    const auto add = [&all](Peptide &chain, std::size_t offset, const MatchRun &run) {
        all.runs.push_back({offset + run.first, run.count, &chain, run.second});
    };
    if (m_Row.chainBreaks.size() + 1 == chains.size()) {
        std::size_t begin = 0;
        for (std::size_t i = 0; i < chains.size(); ++i) {
            const std::size_t end =
                i < m_Row.chainBreaks.size()
                    ? std::min<std::size_t>(m_Row.chainBreaks[i].letters, letters.size())
                    : letters.size();
            const SequenceMatch found =
                matchSequences(letters.substr(begin, end - begin), chains[i]->letters(),
                               numberingBreaks(*chains[i]));
            all.identical += found.identical;
            all.matched += found.matched;
            for (const MatchRun &run : found.runs)
                add(*chains[i], begin, run);
            begin = end;
        }
        return all;
    }

    // The breaks are not in the file: the chains follow one another.
    std::string shown;
    std::vector<std::size_t> breaks;
    std::vector<std::size_t> begins;
    for (const Peptide *const chain : chains) {
        begins.push_back(shown.size());
        breaks.push_back(shown.size());
        for (const std::size_t position : numberingBreaks(*chain))
            breaks.push_back(shown.size() + position);
        shown += chain->letters();
    }
    begins.push_back(shown.size());
    const SequenceMatch found = matchSequences(letters, shown, breaks);
    all.identical = found.identical;
    all.matched = found.matched;
    for (MatchRun run : found.runs) {
        while (run.count > 0) {
            const std::size_t chain =
                std::size_t(std::ranges::upper_bound(begins, run.second) - begins.begin()) - 1;
            const std::size_t count = std::min(run.count, begins[chain + 1] - run.second);
            add(*chains[chain], 0, {run.first, run.second - begins[chain], count});
            run = {run.first + count, run.second + count, run.count - count};
        }
    }
    return all;
}

void RowTie::tellDifferences(const Structure &structure)
{
    if (m_IsExact)
        return;
    const std::string_view letters = m_Row.sequence.letters;
    std::vector<std::string> missing;
    std::vector<std::string> different;
    std::size_t next = 0;
    for (const RowTieRun &run : m_Runs) {
        if (run.first > next)
            missing.push_back(lettersText(letters, next, run.first - next));
        next = run.first + run.count;
        for (std::size_t i = 0; i < run.count; ++i) {
            if (letters[run.first + i] == run.chain->letter(run.chainFirst + i))
                continue;
            different.push_back(lettersText(letters, run.first + i, 1) + " is " +
                                run.chain->typeName(run.chainFirst + i) + " " +
                                run.chain->number(run.chainFirst + i).getValue());
        }
    }
    if (next < letters.size())
        missing.push_back(lettersText(letters, next, letters.size() - next));
    const std::string begin = "\"" + m_Row.name + "\": ";
    if (!missing.empty())
        m_Remarks.push_back(begin + "not in the coordinates of " + structure.Name() + ": " +
                            joined(missing) + ".");
    if (!different.empty())
        m_Remarks.push_back(begin + "different in the coordinates of " + structure.Name() + ": " +
                            joined(different) + ".");
}

} // namespace TAMBO
