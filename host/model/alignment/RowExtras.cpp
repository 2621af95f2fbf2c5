// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowExtras.h"

#include "AlignmentAnnotation.h"
#include "TextBytes.h"

#include <mutex>
#include <utility>

namespace TAMBO {

static_assert(sizeof(void *) == sizeof(std::uint64_t));

namespace {

std::size_t bytesOfLink(const StructureLink &link) noexcept
{
    return textBytes(link.structure) + textBytes(link.chain) + textBytes(link.first) +
           textBytes(link.last) + textBytes(link.lastChain);
}

} // namespace

RowExtras::Segments::Segments(const Skip &skip) noexcept
{
    if (skip.ordinal > 0)
        ++m_Made;
    m_Here[m_Made++] = {skip.ordinal, skip.ordinal + skip.count};
}

RowExtras::RowExtras(const RowExtras &other)
    : m_Bits(other.hasTable() ? reinterpret_cast<std::uintptr_t>(new Table(other.table()))
                              : other.m_Bits)
{ }

RowExtras::~RowExtras()
{
    if (hasTable())
        delete &table();
}

RowExtras::Table &RowExtras::ownTable()
{
    if (!hasTable()) {
        auto made = std::make_unique<Table>();
        const Segments now = segments();
        made->segments.assign(now.all().begin(), now.all().end());
        m_Bits = reinterpret_cast<std::uintptr_t>(made.release());
    }
    return table();
}

RowLabel &RowExtras::changeLabel()
{
    // Rows that share one may be changed at the same time.
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    std::shared_ptr<RowLabel> &kept = ownTable().label;
    if (kept.use_count() > 1)
        kept = std::make_shared<RowLabel>(*kept);
    return *kept;
}

void RowExtras::setSegments(std::vector<Segment> segments)
{
    if (label() == nullptr && segments.empty()) {
        setSkip({});
        return;
    }
    segments.shrink_to_fit();
    ownTable().segments = std::move(segments);
    // One that could do without its table.
    if (const std::optional<Skip> only = skip(); only && label() == nullptr)
        setSkip(*only);
}

std::optional<RowExtras::Skip> RowExtras::skipOfTable() const noexcept
{
    const std::span<const Segment> all = segments().all();
    if (all.empty())
        return Skip();
    const Segment &last = all.back();
    if (all.size() == 1 || (all.size() == 2 && all.front().index == 0))
        return Skip{last.ordinal, last.index - last.ordinal};
    return std::nullopt;
}

void RowExtras::setTableSkip(const Skip &skip)
{
    if (label() == nullptr && skip.ordinal <= kMostOrdinal) {
        delete &table();
        m_Bits = 0;
        setSkip(skip);
        return;
    }
    std::vector<Segment> &kept = ownTable().segments;
    if (skip.count == 0) {
        kept = std::vector<Segment>();
        return;
    }
    const Segments made(skip);
    kept.assign(made.all().begin(), made.all().end());
}

std::size_t RowExtras::bytes() const noexcept
{
    if (!hasTable())
        return 0;
    std::size_t sum = sizeof(Table) + table().segments.capacity() * sizeof(Segment);
    if (const RowLabel *const kept = label())
        sum += sizeof(RowLabel) + textBytes(kept->name) + textBytes(kept->description) +
               (kept->link.isUsual() ? 0 : sizeof(StructureLink) + bytesOfLink(*kept->link)) +
               kept->chainBreaks.capacity() * sizeof(ChainBreak) + bytesOf(kept->annotations) +
               bytesOf(kept->residueAnnotations);
    return sum;
}

} // namespace TAMBO
