// SPDX-License-Identifier: GPL-3.0-or-later
// Where the atoms of a chain or a group are in further models of their file: places of the file,
// model after model.
#pragma once

#include "Vertex.h"

#include <cstddef>
#include <limits>
#include <span>
#include <utility>
#include <vector>

namespace TAMBO {

class ObjectReader;
class ObjectWriter;

class ModelPlaces
{
public:
    using Place = Vector<float, 3>;

    // Of an atom that the model lacks.
    [[nodiscard]] static Place nowhere() noexcept
    {
        constexpr float none = std::numeric_limits<float>::quiet_NaN();
        return Place(none, none, none);
    }
    [[nodiscard]] static bool isSomewhere(const Place &place) noexcept
    {
        return place[0] == place[0];
    }

    ModelPlaces() = default;
    // As many for each model as there are atoms.
    explicit ModelPlaces(std::vector<Place> places) : m_Places(std::move(places)) { }
    // Of what write() has left.
    [[nodiscard]] static ModelPlaces read(ObjectReader &in, std::size_t atoms);
    void write(ObjectWriter &out, std::size_t atoms) const;

    [[nodiscard]] bool empty() const noexcept { return m_Places.empty(); }
    [[nodiscard]] std::size_t count(std::size_t atoms) const noexcept
    {
        return atoms == 0 ? 0 : m_Places.size() / atoms;
    }
    // None of a model that is not there.
    [[nodiscard]] std::span<const Place> of(std::size_t model, std::size_t atoms) const noexcept
    {
        if (model >= count(atoms))
            return {};
        return std::span(m_Places).subspan(model * atoms, atoms);
    }
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept { return m_Places.capacity() * sizeof(Place); }

private:
    std::vector<Place> m_Places;
};

} // namespace TAMBO
