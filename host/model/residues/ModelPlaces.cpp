// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelPlaces.h"

#include "ObjectReader.h"

#include <cmath>

namespace TAMBO {

ModelPlaces ModelPlaces::read(ObjectReader &in, std::size_t atoms)
{
    constexpr std::size_t kBytesOfPlace = 3 * sizeof(float);
    const std::uint64_t models = in.number();
    if (models == 0 || in.failed())
        return {};
    if (atoms == 0 || models > in.left() / kBytesOfPlace / atoms) {
        in.fail("places of further models are missing");
        return {};
    }
    std::vector<Place> places(models * atoms);
    for (Place &place : places) {
        bool isFinite = true;
        for (std::size_t i = 0; i < 3; ++i) {
            place[i] = in.real32();
            isFinite = isFinite && std::isfinite(place[i]);
        }
        if (!isFinite)
            place = nowhere();
    }
    return ModelPlaces(std::move(places));
}

void ModelPlaces::write(ObjectWriter &out, std::size_t atoms) const
{
    out.number(count(atoms));
    for (const Place &place : m_Places) {
        for (std::size_t i = 0; i < 3; ++i)
            out.real(place[i]);
    }
}

} // namespace TAMBO
