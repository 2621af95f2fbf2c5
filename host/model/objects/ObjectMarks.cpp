// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectMarks.h"

#include "ValueBytes.h"

#include <limits>

namespace TAMBO {

namespace {

constexpr unsigned kSelected = 1;
constexpr unsigned kLocked = 2;
constexpr unsigned kHasRange = 4;
constexpr unsigned kHasResidues = 8;
constexpr unsigned kHasAtoms = 16;
constexpr unsigned kAllMarks = 2 * kHasAtoms - 1;

void writeRuns(const ObjectMarks::Runs &runs, ValueWriter &out)
{
    if (runs.empty())
        return;
    out.number(runs.size());
    std::uint64_t end = 0;
    for (const auto &[first, second] : runs) {
        out.number(first - end);
        out.number(second - first);
        end = second;
    }
}

void readRuns(ValueReader &in, ObjectMarks::Runs &runs)
{
    constexpr std::size_t kLeastBytes = 2;
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
    const std::size_t count = in.count(kLeastBytes);
    std::uint64_t end = 0;
    for (std::size_t i = 0; i < count && !in.failed(); ++i) {
        const std::uint64_t first = end + in.number(kMost);
        end = first + in.number(kMost);
        if (end == first || end > kMost)
            in.fail("something is selected that cannot be there");
        ObjectMarks::append(runs, first, end);
    }
}

} // namespace

void ObjectMarks::clear() noexcept
{
    isSelected = false;
    isLocked = false;
    range.reset();
    residues.clear();
    atoms.clear();
}

void ObjectMarks::write(ValueWriter &out) const
{
    out.number((isSelected ? kSelected : 0U) | (isLocked ? kLocked : 0U) |
               (range ? kHasRange : 0U) | (residues.empty() ? 0U : kHasResidues) |
               (atoms.empty() ? 0U : kHasAtoms));
    if (range) {
        out.number(range->first);
        out.number(range->second);
    }
    writeRuns(residues, out);
    writeRuns(atoms, out);
}

void ObjectMarks::read(ValueReader &in)
{
    clear();
    const std::uint64_t flags = in.number(kAllMarks);
    isSelected = (flags & kSelected) != 0;
    isLocked = (flags & kLocked) != 0;
    if ((flags & kHasRange) != 0) {
        const std::uint64_t first = in.number();
        range.emplace(first, in.number());
    }
    if ((flags & kHasResidues) != 0)
        readRuns(in, residues);
    if ((flags & kHasAtoms) != 0)
        readRuns(in, atoms);
}

} // namespace TAMBO
