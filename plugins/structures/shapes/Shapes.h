// SPDX-License-Identifier: GPL-3.0-or-later
// What is drawn: triangles, spheres and sticks in space, each with a number that says what it
// belongs to.
#pragma once

#include "Vec3.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace structures {

// What a pixel belongs to: an atom or a residue of one of the molecules in view. 0: the background.
using Pick = std::uint32_t;

struct MeshVertex
{
    Vec3 position;
    // Of unit length, to the outside.
    Vec3 normal;
};

// Counterclockwise, as seen from the outside.
struct MeshTriangle
{
    std::uint32_t corners[3];
    Pick pick;
};

struct Mesh
{
    std::vector<MeshVertex> vertices;
    std::vector<MeshTriangle> triangles;
};

struct Sphere
{
    Vec3 centre;
    float radius;
    Pick pick;
};

// A cylinder without ends, which spheres or other sticks close. Each half belongs to its end.
struct Stick
{
    Vec3 from;
    Vec3 to;
    float radius;
    Pick fromPick;
    Pick toPick;
};

// What is drawn of one molecule, with picks that count from 1: its atoms, then its residues.
struct Shapes
{
    Mesh mesh;
    // The same in fewer triangles, for pictures that follow each other.
    Mesh coarseMesh;
    std::vector<Sphere> spheres;
    std::vector<Stick> sticks;

    [[nodiscard]] bool isEmpty() const noexcept
    {
        return mesh.triangles.empty() && spheres.empty() && sticks.empty();
    }
};

} // namespace structures
