// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureExtras.h"

#include "ObjectReader.h"
#include "TextBytes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TAMBO {

namespace {

enum class PartTag : char { Motion = 'm', Waters = 'w', Bonds = 'b' };

constexpr std::size_t kWatersInPart = 8192;
constexpr std::size_t kBondsInPart = 8192;
constexpr std::size_t kLeastBytesOfBond = 7;
// Of three coordinates, B factor, number and letter.
constexpr std::size_t kLeastBytesOfWater = 18;

std::size_t pieces(std::size_t count, std::size_t size)
{
    return (count + size - 1) / size;
}

float finiteValue(ObjectReader &in)
{
    const float value = in.real32();
    if (!std::isfinite(value))
        in.fail("a water is nowhere");
    return value;
}

// Those of one chain after the other.
void writeWaters(const Waters &waters, std::size_t begin, ObjectWriter &out)
{
    const std::size_t end = std::min(begin + kWatersInPart, waters.places.size());
    while (begin < end) {
        const std::uint32_t chain = waters.places[begin].chain;
        std::size_t next = begin;
        while (next < end && waters.places[next].chain == chain)
            ++next;
        out.text(waters.chains[chain]);
        out.number(next - begin);
        for (; begin < next; ++begin) {
            const Water &water = waters.places[begin];
            for (std::size_t i = 0; i < 3; ++i)
                out.real(water.position[i]);
            out.real(water.bFactor);
            out.signedNumber(water.number);
            out.character(water.insertionCode);
        }
    }
    // Of none.
    out.text({});
    out.number(0);
}

void readWaters(ObjectReader &in, Waters &waters)
{
    while (!in.failed()) {
        const std::string_view chain = in.text();
        const std::size_t count = in.count(kLeastBytesOfWater);
        if (count == 0)
            return;
        for (std::size_t i = 0; i < count && !in.failed(); ++i) {
            using Limits = std::numeric_limits<std::int32_t>;
            Water water;
            for (std::size_t k = 0; k < 3; ++k)
                water.position[k] = finiteValue(in);
            water.bFactor = finiteValue(in);
            water.number = static_cast<std::int32_t>(in.signedNumber(Limits::min(), Limits::max()));
            water.insertionCode = in.character();
            waters.add(chain, water);
        }
    }
}

void writeEnd(const KeptBond::End &end, ObjectWriter &out)
{
    out.number(end.owner);
    out.number(end.residue);
    out.number(end.atom);
}

KeptBond::End readEnd(ObjectReader &in)
{
    KeptBond::End end;
    end.owner = in.index();
    end.residue = in.index();
    end.atom = in.index();
    return end;
}

void writeBonds(const std::vector<KeptBond> &bonds, std::size_t begin, ObjectWriter &out)
{
    const std::size_t end = std::min(begin + kBondsInPart, bonds.size());
    out.number(end - begin);
    for (; begin < end; ++begin) {
        out.number(static_cast<unsigned>(bonds[begin].kind));
        writeEnd(bonds[begin].first, out);
        writeEnd(bonds[begin].second, out);
    }
}

void readBonds(ObjectReader &in, std::vector<KeptBond> &bonds)
{
    for (std::size_t count = in.count(kLeastBytesOfBond); count > 0 && !in.failed(); --count) {
        KeptBond bond;
        bond.kind = static_cast<BondKind>(in.number(std::uint64_t(BondKind::Hydrogen)));
        if (bond.kind < BondKind::Covalent)
            in.fail("a bond is of no known kind");
        bond.first = readEnd(in);
        bond.second = readEnd(in);
        bonds.push_back(bond);
    }
}

} // namespace

std::size_t StructureExtras::bytes() const noexcept
{
    std::size_t sum = sizeof(*this) + waters.places.capacity() * sizeof(Water) +
                      waters.chains.capacity() * sizeof(std::string) +
                      bonds.capacity() * sizeof(KeptBond);
    for (const std::string &chain : waters.chains)
        sum += textBytes(chain);
    return sum;
}

std::size_t StructureExtras::waterParts() const noexcept
{
    return pieces(waters.places.size(), kWatersInPart);
}

std::size_t StructureExtras::partCount() const noexcept
{
    return 1 + waterParts() + pieces(bonds.size(), kBondsInPart);
}

void StructureExtras::writePart(std::size_t part, ObjectWriter &out) const
{
    if (part == 0) {
        out.character(char(PartTag::Motion));
        motion.write(out);
        return;
    }
    --part;
    if (part < waterParts()) {
        out.character(char(PartTag::Waters));
        writeWaters(waters, part * kWatersInPart, out);
        return;
    }
    out.character(char(PartTag::Bonds));
    writeBonds(bonds, (part - waterParts()) * kBondsInPart, out);
}

void StructureExtras::readPart(ObjectReader &in)
{
    switch (static_cast<PartTag>(in.character())) {
    case PartTag::Motion:
        motion = RigidMotion::read(in);
        return;
    case PartTag::Waters:
        return readWaters(in, waters);
    case PartTag::Bonds:
        return readBonds(in, bonds);
    }
    in.fail("a structure has a part of no known kind");
}

} // namespace TAMBO
