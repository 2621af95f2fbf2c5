// SPDX-License-Identifier: GPL-3.0-or-later
// The rotation comes from a unit quaternion (Horn, J Opt Soc Am A 1987, 4:629).
#include "Superposition.h"

#include <cmath>
#include <utility>

namespace TAMBO {

namespace {

constexpr std::size_t kSize = 4;
using Quaternion = std::array<double, kSize>;
using Matrix = std::array<Quaternion, kSize>;

std::array<double, 3> toPoint(const Vertex &vertex)
{
    return {vertex.x(), vertex.y(), vertex.z()};
}

// Turns matrix and vectors so that element (p, q) of the symmetric matrix becomes 0. False when it
// is no larger than what does not matter.
bool annihilate(Matrix &matrix, Matrix &vectors, std::size_t p, std::size_t q, double nothing)
{
    if (std::abs(matrix[p][q]) <= nothing)
        return false;
    const double theta = (matrix[q][q] - matrix[p][p]) / (2 * matrix[p][q]);
    const double tangent =
        std::copysign(1.0, theta) / (std::abs(theta) + std::sqrt(theta * theta + 1));
    const double cosine = 1 / std::sqrt(tangent * tangent + 1);
    const double sine = tangent * cosine;
    const auto turn = [cosine, sine](double &a, double &b) {
        const double first = a;
        a = cosine * first - sine * b;
        b = sine * first + cosine * b;
    };
    for (std::size_t i = 0; i < kSize; ++i)
        turn(matrix[i][p], matrix[i][q]);
    for (std::size_t i = 0; i < kSize; ++i)
        turn(matrix[p][i], matrix[q][i]);
    for (std::size_t i = 0; i < kSize; ++i)
        turn(vectors[i][p], vectors[i][q]);
    return true;
}

// The eigenvector of the largest eigenvalue of a symmetric matrix, by Jacobi's rotations.
Quaternion largestEigenvector(Matrix matrix)
{
    // They converge quadratically; as many rounds are never needed.
    constexpr int kRounds = 50;
    Matrix vectors{};
    for (std::size_t i = 0; i < kSize; ++i)
        vectors[i][i] = 1;
    // So far below the precision of the elements that no digit of the vectors changes.
    constexpr double kNothing = 1e-24;
    double squares = 0;
    for (const Quaternion &row : matrix)
        for (const double element : row)
            squares += element * element;
    const double nothing = kNothing * std::sqrt(squares);
    bool isDone = false;
    for (int round = 0; round < kRounds && !isDone; ++round) {
        isDone = true;
        for (std::size_t p = 0; p < kSize; ++p) {
            for (std::size_t q = p + 1; q < kSize; ++q)
                if (annihilate(matrix, vectors, p, q, nothing))
                    isDone = false;
        }
    }
    std::size_t largest = 0;
    for (std::size_t i = 1; i < kSize; ++i) {
        if (matrix[i][i] > matrix[largest][largest])
            largest = i;
    }
    Quaternion result{};
    for (std::size_t i = 0; i < kSize; ++i)
        result[i] = vectors[i][largest];
    return result;
}

} // namespace

double rootMeanSquareDistance(const std::vector<PointPair> &pairs)
{
    if (pairs.empty())
        return 0;
    double sum = 0;
    for (const PointPair &pair : pairs) {
        const auto a = toPoint(pair.moving);
        const auto b = toPoint(pair.fixed);
        for (std::size_t i = 0; i < a.size(); ++i)
            sum += (a[i] - b[i]) * (a[i] - b[i]);
    }
    return std::sqrt(sum / double(pairs.size()));
}

Superposition::Superposition(const std::vector<PointPair> &pairs)
    : m_Rotation{Point{1, 0, 0}, Point{0, 1, 0}, Point{0, 0, 1}}
{
    if (pairs.empty())
        return;
    for (const PointPair &pair : pairs) {
        const Point a = toPoint(pair.moving);
        const Point b = toPoint(pair.fixed);
        for (std::size_t i = 0; i < a.size(); ++i) {
            m_From[i] += a[i];
            m_To[i] += b[i];
        }
    }
    for (std::size_t i = 0; i < m_From.size(); ++i) {
        m_From[i] /= double(pairs.size());
        m_To[i] /= double(pairs.size());
    }
    std::array<Point, 3> s{};
    for (const PointPair &pair : pairs) {
        const Point a = toPoint(pair.moving);
        const Point b = toPoint(pair.fixed);
        for (std::size_t i = 0; i < a.size(); ++i) {
            for (std::size_t k = 0; k < b.size(); ++k)
                s[i][k] += (a[i] - m_From[i]) * (b[k] - m_To[k]);
        }
    }
    const auto [w, x, y, z] = largestEigenvector(
        {{{s[0][0] + s[1][1] + s[2][2], s[1][2] - s[2][1], s[2][0] - s[0][2], s[0][1] - s[1][0]},
          {s[1][2] - s[2][1], s[0][0] - s[1][1] - s[2][2], s[0][1] + s[1][0], s[2][0] + s[0][2]},
          {s[2][0] - s[0][2], s[0][1] + s[1][0], s[1][1] - s[0][0] - s[2][2], s[1][2] + s[2][1]},
          {s[0][1] - s[1][0], s[2][0] + s[0][2], s[1][2] + s[2][1], s[2][2] - s[0][0] - s[1][1]}}});
    m_Rotation = {Point{w * w + x * x - y * y - z * z, 2 * (x * y - w * z), 2 * (x * z + w * y)},
                  Point{2 * (x * y + w * z), w * w - x * x + y * y - z * z, 2 * (y * z - w * x)},
                  Point{2 * (x * z - w * y), 2 * (y * z + w * x), w * w - x * x - y * y + z * z}};
}

Vertex Superposition::operator()(const Vertex &point) const
{
    if (!point.isDefined())
        return point;
    const Point given = toPoint(point);
    Point result = m_To;
    for (std::size_t i = 0; i < result.size(); ++i) {
        for (std::size_t k = 0; k < given.size(); ++k)
            result[i] += m_Rotation[i][k] * (given[k] - m_From[k]);
    }
    return {float(result[0]), float(result[1]), float(result[2])};
}

} // namespace TAMBO
