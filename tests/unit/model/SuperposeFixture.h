// SPDX-License-Identifier: GPL-3.0-or-later
// Structures in space and alignments of their chains, for superposing.
#pragma once

#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "Atom.h"
#include "SuperposePlan.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>

class SuperposeFixture : public ModelFixture
{
protected:
    using Points = std::vector<TAMBO::Vertex>;
    using Rows = std::vector<unsigned long>;

    // A chain of CA atoms 3.8 apart, folded at random.
    static Points randomFold(std::size_t length, unsigned seed)
    {
        std::mt19937 random(seed);
        std::normal_distribution<double> part;
        Points points;
        std::array<double, 3> place{20, -7, 3};
        for (std::size_t i = 0; i < length; ++i) {
            std::array<double, 3> step{part(random), part(random), part(random)};
            const double size = std::hypot(step[0], step[1], step[2]);
            for (std::size_t k = 0; k < 3; ++k)
                place[k] += step[k] / size * 3.8;
            points.emplace_back(float(place[0]), float(place[1]), float(place[2]));
        }
        return points;
    }

    // Any turn about any axis, then a shift of up to 100 along each.
    static Points turned(const Points &points, unsigned seed)
    {
        std::mt19937 random(seed);
        std::normal_distribution<double> part;
        std::uniform_real_distribution<double> shift(-100, 100);
        std::array<double, 4> q{part(random), part(random), part(random), part(random)};
        const double size = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
        for (double &value : q)
            value /= size;
        const auto [w, x, y, z] = q;
        const std::array<std::array<double, 3>, 3> matrix = {
            {{1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)},
             {2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)},
             {2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)}}};
        const std::array<double, 3> by{shift(random), shift(random), shift(random)};
        Points result;
        for (const TAMBO::Vertex &point : points) {
            std::array<float, 3> to{};
            for (std::size_t i = 0; i < 3; ++i)
                to[i] = float(matrix[i][0] * point.x() + matrix[i][1] * point.y() +
                              matrix[i][2] * point.z() + by[i]);
            result.emplace_back(to[0], to[1], to[2]);
        }
        return result;
    }

    // A chain of alanines, each with a nitrogen beside its CA atom, and a ligand.
    static TAMBO::ChainRecord chainAt(const std::string &name, const Points &points)
    {
        TAMBO::ChainRecord chain;
        chain.name = name;
        int number = 1;
        for (const TAMBO::Vertex &point : points) {
            TAMBO::ResidueRecord &residue = chain.residues.emplace_back();
            residue.typeName = "ALA";
            residue.letter = 'A';
            residue.number = TAMBO::SequenceNumber(number++);
            residue.atoms.push_back({"N", "N", beside(point)});
            residue.atoms.push_back({"CA", "C", point});
        }
        TAMBO::ResidueRecord &ligand = chain.residues.emplace_back();
        ligand.typeName = "HEM";
        ligand.isAminoAcid = false;
        ligand.number = TAMBO::SequenceNumber(number);
        ligand.atoms.push_back({"FE", "FE", beside(points.back())});
        return chain;
    }
    static TAMBO::Vertex beside(const TAMBO::Vertex &point)
    {
        return {point.x() + 1, point.y() - 1, point.z() + 0.5F};
    }
    static TAMBO::Structure &structureAt(const std::string &name, const Points &points)
    {
        TAMBO::StructureRecord record;
        record.name = name;
        record.chains.push_back(chainAt("A", points));
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }

    // Each row is a sequence and text, of which only the gaps ("-") matter.
    static TAMBO::Alignment &
    alignmentOf(const std::vector<std::pair<TAMBO::Peptide *, std::string>> &given)
    {
        TAMBO::AlignmentTable::Rows rows;
        for (const auto &[sequence, text] : given) {
            TAMBO::GappedSequence cells;
            cells.append(text);
            rows.push_back(std::make_unique<TAMBO::AlignmentRow>(
                *sequence, TAMBO::OccupancyRow(std::move(cells.occupancy))));
        }
        return static_cast<TAMBO::Alignment &>(
            space().add(TAMBO::AlignmentTable::make("family", std::move(rows))));
    }
    static TAMBO::Alignment &ungapped(const std::vector<TAMBO::Structure *> &structures)
    {
        std::vector<std::pair<TAMBO::Peptide *, std::string>> rows;
        for (TAMBO::Structure *structure : structures)
            rows.emplace_back(structure->chain(0),
                              std::string(structure->chain(0)->residueCount(), 'A'));
        return alignmentOf(rows);
    }

    static std::vector<TAMBO::Compound *> atomsOf(const TAMBO::Structure &structure)
    {
        std::vector<TAMBO::Compound *> atoms;
        for (std::size_t i = 0; i < structure.objectCount(); ++i)
            structure.chain(i)->appendAtoms(atoms);
        return atoms;
    }
    // The coordinates of every atom, to the bit.
    static std::vector<std::uint32_t> bitsOf(const TAMBO::Structure &structure)
    {
        std::vector<std::uint32_t> bits;
        for (const TAMBO::Compound *atom : atomsOf(structure)) {
            const TAMBO::Vertex place = atom->Position();
            for (std::size_t i = 0; i < 3; ++i)
                bits.push_back(std::bit_cast<std::uint32_t>(place.coordinates()[i]));
        }
        return bits;
    }

    // What a row's plan says, carried out.
    static TAMBO::SuperposePlan superpose(const TAMBO::Alignment &alignment, const Rows &rows,
                                          const TAMBO::FitChoice &choice = {})
    {
        auto plan = TAMBO::planSuperposition(alignment, rows, choice);
        EXPECT_TRUE(plan.has_value()) << (plan ? "" : plan.error().message());
        if (!plan)
            return {};
        std::vector<TAMBO::StructureMotion> motions;
        for (const TAMBO::PlannedMove &move : plan->moves)
            motions.push_back(move.motion);
        EXPECT_TRUE(TAMBO::moveStructures(motions));
        return std::move(plan).value();
    }
    static std::string refusal(const TAMBO::Alignment &alignment, const Rows &rows,
                               const TAMBO::FitChoice &choice = {})
    {
        const auto plan = TAMBO::planSuperposition(alignment, rows, choice);
        return plan ? "no failure" : plan.error().message();
    }
};
