// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of an alignment as bytes, and back.
#include "AlignmentAnnotation.h"
#include "AlignmentRow.h"
#include "ObjectReader.h"

#include <string>
#include <utility>

namespace TAMBO {

namespace {

// What few rows have.
constexpr unsigned kHasSegments = 1;
constexpr unsigned kHasLabel = 2;

void writeLabel(const RowLabel &label, ValueWriter &out)
{
    out.text(label.name);
    out.text(label.description);
    out.flag(!label.link.isUsual());
    if (!label.link.isUsual()) {
        for (const std::string *const text :
             {&label.link->structure, &label.link->chain, &label.link->first, &label.link->last,
              &label.link->lastChain})
            out.text(*text);
    }
    out.number(label.firstResidue);
    out.number(label.chainBreaks.size());
    for (const ChainBreak &chainBreak : label.chainBreaks) {
        out.number(chainBreak.letters);
        out.flag(chainBreak.column.has_value());
        if (chainBreak.column)
            out.number(*chainBreak.column);
    }
    writeAnnotations(label.annotations, out);
    writeAnnotations(label.residueAnnotations, out);
}

RowLabel readLabel(ObjectReader &in)
{
    RowLabel label;
    label.name = in.text();
    label.description = in.text();
    if (in.flag()) {
        StructureLink &link = label.link.change();
        for (std::string *const text :
             {&link.structure, &link.chain, &link.first, &link.last, &link.lastChain})
            *text = in.text();
    }
    label.firstResidue = in.index();
    const std::size_t breaks = in.count(2);
    label.chainBreaks.reserve(breaks);
    for (std::size_t i = 0; i < breaks; ++i) {
        ChainBreak &made = label.chainBreaks.emplace_back();
        made.letters = in.number();
        if (in.flag())
            made.column = in.number();
    }
    label.annotations = readAnnotations(in);
    label.residueAnnotations = readAnnotations(in);
    return label;
}

} // namespace

void AlignmentRow::write(ObjectWriter &out) const
{
    const RowExtras::Segments kept = m_Extras.segments();
    const std::span<const Segment> segments = kept.all();
    out.number(m_Sequence->identity());
    out.number((segments.empty() ? 0U : kHasSegments) | (label() == nullptr ? 0U : kHasLabel));
    out.number(m_Cells.allWords().size());
    out.words(m_Cells.allWords());
    if (!segments.empty()) {
        out.number(segments.size());
        std::uint32_t last = 0;
        for (const Segment &segment : segments) {
            out.number(segment.ordinal - last);
            out.number(segment.index);
            last = segment.ordinal;
        }
    }
    if (label() != nullptr)
        writeLabel(*label(), out);
}

std::unique_ptr<AlignmentRow> AlignmentRow::read(ObjectReader &in, Column width,
                                                 std::vector<OccupancyRow::Word> &scratch)
{
    Peptide *const sequence = Peptide::from(in.object());
    const std::uint64_t has = in.number(kHasSegments | kHasLabel);
    const std::size_t words = in.count(sizeof(OccupancyRow::Word));
    if (sequence == nullptr)
        in.fail("a row shows what is no sequence");
    if (words > bits::wordsFor(width))
        in.fail("a row is wider than its alignment");
    if (in.failed())
        return nullptr;
    scratch.resize(words);
    in.words(scratch);
    auto made = std::make_unique<AlignmentRow>(*sequence, OccupancyRow(scratch));
    if (made->m_Cells.end() > width)
        in.fail("a row is wider than its alignment");
    if ((has & kHasSegments) != 0)
        made->readSegments(in);
    if (!made->isOfSequence())
        in.fail("a row has residues that its sequence has not");
    if ((has & kHasLabel) != 0)
        made->m_Extras.setLabel(std::make_shared<RowLabel>(readLabel(in)));
    return made;
}

void AlignmentRow::readSegments(ObjectReader &in)
{
    const std::size_t count = in.count(2);
    std::vector<Segment> segments;
    segments.reserve(count);
    std::uint64_t ordinal = 0;
    for (std::size_t i = 0; i < count && !in.failed(); ++i) {
        const std::uint64_t step = in.index();
        ordinal += step;
        // The first one begins with the first residue, also of a row that has none.
        if ((step == 0) != (i == 0) || (i > 0 && ordinal >= m_Cells.residues()))
            in.fail("residues of a row are out of order");
        segments.push_back({static_cast<std::uint32_t>(ordinal), in.index()});
    }
    if (!segments.empty() && !in.failed())
        m_Extras.setSegments(std::move(segments));
}

bool AlignmentRow::isOfSequence() const noexcept
{
    const RowExtras::Segments kept = m_Extras.segments();
    const std::span<const Segment> all = kept.all();
    const std::uint64_t count = m_Sequence->residueCount();
    if (all.empty())
        return m_Cells.residues() <= count;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::uint64_t end = i + 1 < all.size() ? all[i + 1].ordinal : m_Cells.residues();
        const std::uint64_t length = end - all[i].ordinal;
        if (length > 0 && all[i].index + length > count)
            return false;
    }
    return true;
}

} // namespace TAMBO
