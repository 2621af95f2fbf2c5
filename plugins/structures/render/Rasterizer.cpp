// SPDX-License-Identifier: GPL-3.0-or-later
#include "Rasterizer.h"

#include "Light.h"
#include "Parallel.h"

#include <algorithm>
#include <cmath>

namespace structures {

namespace {

constexpr int kBandRows = 32;
constexpr std::size_t kShareSize = 32768;
constexpr std::size_t kCornersAtOnce = 32768;

// Of a pixel.
constexpr float kEdge = 1e-3F;
// Points side by side that are quicker asked than found out about.
constexpr int kFewPoints = 6;
// Pixels beyond which a place is not looked at more closely, so that it fits an int.
constexpr float kFarAway = 1e6F;

// By conversions alone, since a processor of the least kind has no instruction for it.
int floorOf(float value) noexcept
{
    value = std::min(std::max(-kFarAway, value), kFarAway);
    const int whole = int(value);
    return whole - int(value < float(whole));
}

// What is no number is the least.
int placeOf(float value, int most) noexcept
{
    return value > 0 ? value < float(most) ? int(value) : most : 0;
}

const Mesh &meshOf(const Shapes &shapes, bool isCoarse) noexcept
{
    return isCoarse ? shapes.coarseMesh : shapes.mesh;
}

} // namespace

struct Rasterizer::Share
{
    const ScenePart *part;
    const Mesh *mesh;
    // Of the mesh's first vertex.
    std::uint32_t firstCorner;
    enum class Kind { Triangles, Spheres, Sticks } kind;
    std::size_t begin;
    std::size_t end;
};

// Fills some rows of the raster. What it is given may reach beyond them.
class Rasterizer::Band
{
public:
    Band(const Projection &projection, const std::vector<Corner> &corners, int firstRow, int begin,
         int end, Samples &samples)
        : m_Projection(projection),
          m_Corners(corners),
          m_FirstRow(firstRow),
          m_Begin(begin),
          m_End(end),
          m_Samples(samples),
          m_FrontKey(projection.keyOf(projection.front())),
          m_BackKey(std::isfinite(projection.back()) ? projection.keyOf(projection.back())
                                                     : Samples::kNothing)
    { }

    void fill(const Triangle &triangle);
    void fill(const Ball &ball);
    void fill(const Rod &rod);

private:
    void fillStraight(const Ball &ball);
    // In perspective.
    void fillByRays(const Ball &ball);
    // size: of the axis.
    void fillStraight(const Rod &rod, float size);
    void fillByRays(const Rod &rod, float size);

    // The ray of view coordinates that is seen at a point of the raster, from origin to the back.
    struct Ray
    {
        Vec3 origin;
        Vec3 direction;
    };
    [[nodiscard]] Ray rayAt(int x, int y) const noexcept
    {
        const Vec3 place = m_Projection.toViewAt(float(x) + 0.5F, float(y + m_FirstRow) + 0.5F, 0);
        if (!m_Projection.isPerspective())
            return {place, {0, 0, -1}};
        return {{0, 0, m_Projection.eyeDistance()},
                normalized(place - Vec3{0, 0, m_Projection.eyeDistance()})};
    }
    void put(std::size_t at, float z, Vec3 normal, Pick pick)
    {
        const float key = m_Projection.keyOf(z);
        if (key <= m_Samples.keys[at] || key < m_BackKey)
            return;
        m_Samples.keys[at] = key;
        m_Samples.picks[at] = pick;
        m_Samples.shades[at] = shadeOf(normal);
    }

    const Projection &m_Projection;
    const std::vector<Corner> &m_Corners;
    int m_FirstRow;
    int m_Begin;
    int m_End;
    Samples &m_Samples;
    float m_FrontKey;
    float m_BackKey;
};

void Rasterizer::Band::fill(const Triangle &triangle)
{
    const Corner &a = m_Corners[triangle.corners[0]];
    // Counterclockwise is clockwise on a raster of which y points downwards.
    const Corner *second = &m_Corners[triangle.corners[2]];
    const Corner *third = &m_Corners[triangle.corners[1]];
    const auto twice = [&](const Corner &p, const Corner &q) {
        return (p.place.x - a.place.x) * (q.place.y - a.place.y) -
               (q.place.x - a.place.x) * (p.place.y - a.place.y);
    };
    float area = twice(*second, *third);
    float facing = 1;
    if (area < 0) {
        std::swap(second, third);
        area = -area;
        facing = -1;
    }
    if (!(area > 1e-9F))
        return;
    const Corner &b = *second;
    const Corner &c = *third;
    const float inverse = 1 / area;
    const int top = std::max(m_Begin, floorOf(std::min({a.place.y, b.place.y, c.place.y}) + 0.5F));
    const int bottom = std::min(m_End, floorOf(std::max({a.place.y, b.place.y, c.place.y}) + 0.5F));
    const int left = std::max(0, floorOf(std::min({a.place.x, b.place.x, c.place.x}) + 0.5F));
    const int right =
        std::min(m_Samples.width(), floorOf(std::max({a.place.x, b.place.x, c.place.x}) + 0.5F));
    if (top >= bottom || left >= right)
        return;

    // Shares of b and c in a point, linear in x and y; that of a is what is left of 1.
    const float bx = (c.place.y - a.place.y) * inverse;
    const float by = -(c.place.x - a.place.x) * inverse;
    const float cx = -(b.place.y - a.place.y) * inverse;
    const float cy = (b.place.x - a.place.x) * inverse;
    const float slopes[3] = {-(bx + cx), bx, cx};
    const Vec3 toB = b.normal - a.normal;
    const Vec3 toC = c.normal - a.normal;

    const auto fillPoint = [&](std::size_t at, float sb, float sc) {
        const float key = a.place.z + (b.place.z - a.place.z) * sb + (c.place.z - a.place.z) * sc;
        if (key <= m_Samples.keys[at] || key > m_FrontKey || key < m_BackKey)
            return;
        const Vec3 normal = a.normal + toB * sb + toC * sc;
        m_Samples.keys[at] = key;
        m_Samples.picks[at] = triangle.pick;
        m_Samples.shades[at] = shadeOf(normalized(normal) * facing);
    };
    const float dx = float(left) + 0.5F - a.place.x;
    const int width = right - left;
    // Of a point on an edge that two triangles share, one of them at least must know.
    const float slack[3] = {-kEdge * std::abs(slopes[0]), -kEdge * std::abs(slopes[1]),
                            -kEdge * std::abs(slopes[2])};
    for (int y = top; y < bottom; ++y) {
        const float dy = float(y) + 0.5F - a.place.y;
        const float shareB = dx * bx + dy * by;
        const float shareC = dx * cx + dy * cy;
        const std::size_t row = m_Samples.at(left, y);
        int first = 0;
        int last = width;
        if (width > kFewPoints) {
            // Where all three shares are positive.
            const float shares[3] = {1 - shareB - shareC, shareB, shareC};
            float begin = 0;
            float end = float(width);
            for (int i = 0; i < 3; ++i) {
                if (slopes[i] > 0)
                    begin = std::max(begin, -shares[i] / slopes[i]);
                else if (slopes[i] < 0)
                    end = std::min(end, shares[i] / -slopes[i] + 1);
            }
            if (!(begin < end + kEdge))
                continue;
            first = std::max(0, int(begin - 0.5F));
            last = std::min(int(end) + 1, width);
        }
        for (int i = first; i < last; ++i) {
            const float sb = shareB + bx * float(i);
            const float sc = shareC + cx * float(i);
            if (1 - sb - sc >= slack[0] && sb >= slack[1] && sc >= slack[2])
                fillPoint(row + std::size_t(i), sb, sc);
        }
    }
}

void Rasterizer::Band::fill(const Ball &ball)
{
    if (m_Projection.isPerspective())
        fillByRays(ball);
    else
        fillStraight(ball);
}

void Rasterizer::Band::fillStraight(const Ball &ball)
{
    const int top = std::max(m_Begin, ball.extent.top);
    const int bottom = std::min(m_End, ball.extent.bottom);
    const float inverse = 1 / ball.radius;
    const float step = 1 / m_Projection.scale();
    const float nearest = ball.centre.z + ball.radius;
    const float front = m_Projection.front();
    const Vec3 corner = rayAt(ball.extent.left, top).origin - ball.centre;
    for (int y = top; y < bottom; ++y) {
        const float dy = corner.y - float(y - top) * step;
        const float square = ball.radius * ball.radius - dy * dy;
        if (square <= 0)
            continue;
        // Only where the sphere is.
        const float half = std::sqrt(square);
        const int width = ball.extent.right - ball.extent.left;
        const int first = std::clamp(int(std::ceil((-half - corner.x) / step)), 0, width);
        const int last = std::clamp(int(std::floor((half - corner.x) / step)) + 1, first, width);
        const std::size_t row = m_Samples.at(ball.extent.left, y);
        for (int i = first; i < last; ++i) {
            const std::size_t at = row + std::size_t(i);
            if (nearest <= m_Samples.keys[at])
                continue;
            const float dx = corner.x + float(i) * step;
            const float dz = std::sqrt(std::max(0.0F, square - dx * dx));
            float z = ball.centre.z + dz;
            Vec3 normal{dx * inverse, dy * inverse, dz * inverse};
            if (z > front) {
                // Cut open: its inside is flat and of its own color.
                if (ball.centre.z - dz > front)
                    continue;
                z = front;
                normal = {0, 0, 1};
            }
            put(at, z, normal, ball.pick);
        }
    }
}

void Rasterizer::Band::fillByRays(const Ball &ball)
{
    const int top = std::max(m_Begin, ball.extent.top);
    const int bottom = std::min(m_End, ball.extent.bottom);
    const float inverse = 1 / ball.radius;
    const float nearest =
        m_Projection.keyOf(std::min(ball.centre.z + ball.radius, m_Projection.front()));
    for (int y = top; y < bottom; ++y) {
        for (int x = ball.extent.left; x < ball.extent.right; ++x) {
            const std::size_t at = m_Samples.at(x, y);
            if (nearest <= m_Samples.keys[at])
                continue;
            const auto [origin, direction] = rayAt(x, y);
            const Vec3 way = origin - ball.centre;
            const float along = dot(way, direction);
            const float square = along * along - dot(way, way) + ball.radius * ball.radius;
            if (square < 0)
                continue;
            const float root = std::sqrt(square);
            Vec3 hit = origin + direction * (-along - root);
            if (hit.z <= m_Projection.front()) {
                put(at, hit.z, (hit - ball.centre) * inverse, ball.pick);
                continue;
            }
            hit = origin + direction * (-along + root);
            if (hit.z < m_Projection.front())
                put(at, m_Projection.front(), {0, 0, 1}, ball.pick);
        }
    }
}

void Rasterizer::Band::fill(const Rod &rod)
{
    const float size = distance(rod.from, rod.to);
    if (!(size > 0))
        return;
    if (m_Projection.isPerspective())
        fillByRays(rod, size);
    else
        fillStraight(rod, size);
}

void Rasterizer::Band::fillStraight(const Rod &rod, float size)
{
    const Vec3 axis = (rod.to - rod.from) * (1 / size);
    // Of a direction at right angles to the picture.
    const float a = axis.x * axis.x + axis.y * axis.y;
    // Seen along its axis it is as its ends are.
    if (!(a > 1e-8F))
        return;
    const int top = std::max(m_Begin, rod.extent.top);
    const int bottom = std::min(m_End, rod.extent.bottom);
    const float inverse = 1 / rod.radius;
    const float nearest = std::max(rod.from.z, rod.to.z) + rod.radius;
    const float front = m_Projection.front();
    const float step = 1 / m_Projection.scale();
    const float squareRadius = rod.radius * rod.radius;
    const float inverseA = 1 / a;
    // How far a ray passes by the axis, seen in the picture, grows by so much from point to point.
    const float across = 1 / std::sqrt(a);
    const Vec3 corner = rayAt(rod.extent.left, top).origin - rod.from;
    const int width = rod.extent.right - rod.extent.left;
    for (int y = top; y < bottom; ++y) {
        const float sy = corner.y - float(y - top) * step;
        // |sx * axis.y - sy * axis.x| * across <= radius.
        int first = 0;
        int last = width;
        if (std::abs(axis.y) > 1e-4F) {
            const float middle = sy * axis.x / axis.y;
            const float half = rod.radius / (across * std::abs(axis.y));
            first = placeOf((middle - half - corner.x) / step - 1, width);
            last = placeOf((middle + half - corner.x) / step + 2, width);
        }
        const std::size_t row = m_Samples.at(rod.extent.left, y);
        for (int i = first; i < last; ++i) {
            const std::size_t at = row + std::size_t(i);
            if (nearest <= m_Samples.keys[at])
                continue;
            const float sx = corner.x + float(i) * step;
            const float past = sx * axis.y - sy * axis.x;
            const float square = squareRadius * a - past * past;
            if (square < 0)
                continue;
            // Along the axis in the picture, and from there to the front.
            const float along = sx * axis.x + sy * axis.y;
            const float z = (along * axis.z + std::sqrt(square)) * inverseA;
            const float height = along + z * axis.z;
            const float depth = rod.from.z + z;
            if (height < 0 || height > size || depth > front)
                continue;
            put(at, depth, (Vec3{sx, sy, z} - axis * height) * inverse,
                height * 2 < size ? rod.fromPick : rod.toPick);
        }
    }
}

void Rasterizer::Band::fillByRays(const Rod &rod, float size)
{
    const int top = std::max(m_Begin, rod.extent.top);
    const int bottom = std::min(m_End, rod.extent.bottom);
    const Vec3 axis = (rod.to - rod.from) * (1 / size);
    const float inverse = 1 / rod.radius;
    const float nearest = m_Projection.keyOf(
        std::min(std::max(rod.from.z, rod.to.z) + rod.radius, m_Projection.front()));
    for (int y = top; y < bottom; ++y) {
        for (int x = rod.extent.left; x < rod.extent.right; ++x) {
            const std::size_t at = m_Samples.at(x, y);
            if (nearest <= m_Samples.keys[at])
                continue;
            const auto [origin, direction] = rayAt(x, y);
            const Vec3 start = origin - rod.from;
            const Vec3 acrossWay = direction - axis * dot(direction, axis);
            const Vec3 acrossStart = start - axis * dot(start, axis);
            const float a = dot(acrossWay, acrossWay);
            const float b = dot(acrossWay, acrossStart);
            const float c = dot(acrossStart, acrossStart) - rod.radius * rod.radius;
            const float square = b * b - a * c;
            // Seen along its axis it is as its ends are.
            if (square < 0 || a < 1e-8F)
                continue;
            const Vec3 hit = start + direction * ((-b - std::sqrt(square)) / a);
            const float height = dot(hit, axis);
            const float z = hit.z + rod.from.z;
            if (height < 0 || height > size || z > m_Projection.front())
                continue;
            put(at, z, (hit - axis * height) * inverse,
                height * 2 < size ? rod.fromPick : rod.toPick);
        }
    }
}

void Rasterizer::project(std::span<const ScenePart> parts, const Projection &projection,
                         int firstRow, bool isCoarse)
{
    std::size_t count = 0;
    for (const ScenePart &part : parts)
        count += meshOf(*part.shapes, isCoarse).vertices.size();
    m_Corners.resize(count);
    std::size_t first = 0;
    for (const ScenePart &part : parts) {
        const Projection own = projection.moved(part.offset);
        const std::vector<MeshVertex> &vertices = meshOf(*part.shapes, isCoarse).vertices;
        inParallel((vertices.size() + kCornersAtOnce - 1) / kCornersAtOnce, [&](std::size_t piece) {
            const std::size_t begin = piece * kCornersAtOnce;
            const std::size_t end = std::min(vertices.size(), begin + kCornersAtOnce);
            for (std::size_t i = begin; i < end; ++i) {
                const Vec3 view = own.toView(vertices[i].position);
                Vec3 place{0, 0, std::numeric_limits<float>::quiet_NaN()};
                if (!projection.isPerspective() || view.z < 0.95F * projection.eyeDistance()) {
                    place = projection.toPicture(view);
                    place.y -= float(firstRow);
                }
                m_Corners[first + i] = {place, projection.matrix() * vertices[i].normal};
            }
        });
        first += vertices.size();
    }
}

void Rasterizer::bin(const Share &share, const Projection &projection, int firstRow, int width,
                     int height, std::vector<Bin> &bins) const
{
    const Pick added = share.part->firstPick;
    const Projection own = projection.moved(share.part->offset);
    const bool isCut = std::isfinite(projection.front()) && !projection.isPerspective();
    const auto bandsOf = [&](int top, int bottom, const auto &put) {
        top = std::max(top, 0);
        bottom = std::min(bottom, height);
        if (top >= bottom)
            return;
        for (int band = top / kBandRows; band <= (bottom - 1) / kBandRows; ++band)
            put(bins[std::size_t(band)]);
    };
    // May reach beyond the raster.
    const auto extentOf = [&](Vec3 view, float radius) -> Extent {
        float scale = projection.scale();
        const float nearest = 0.95F * projection.eyeDistance();
        const Vec3 place = projection.toPicture(
            {view.x, view.y, projection.isPerspective() ? std::min(view.z, nearest) : view.z});
        if (projection.isPerspective())
            // Seen from near by it covers more than its radius, on the side away from the middle.
            scale *= 1.3F * projection.eyeDistance() /
                     std::max(projection.eyeDistance() - nearest,
                              projection.eyeDistance() - view.z - radius);
        const float reach = radius * scale + 1;
        return {floorOf(place.x - reach), floorOf(place.x + reach) + 1,
                floorOf(place.y - reach) - firstRow, floorOf(place.y + reach) + 1 - firstRow};
    };
    const auto clipped = [&](Extent extent) {
        extent.left = std::max(extent.left, 0);
        extent.right = std::min(extent.right, width);
        return extent;
    };

    switch (share.kind) {
    case Share::Kind::Triangles:
        for (std::size_t i = share.begin; i < share.end; ++i) {
            const MeshTriangle &triangle = share.mesh->triangles[i];
            const std::uint32_t a = share.firstCorner + triangle.corners[0];
            const std::uint32_t b = share.firstCorner + triangle.corners[1];
            const std::uint32_t c = share.firstCorner + triangle.corners[2];
            const Vec3 pa = m_Corners[a].place;
            const Vec3 pb = m_Corners[b].place;
            const Vec3 pc = m_Corners[c].place;
            const float area = (pb.x - pa.x) * (pc.y - pa.y) - (pc.x - pa.x) * (pb.y - pa.y);
            // The back of closed meshes is seen where they are cut open alone. NaN: a corner is
            // behind the eye.
            if (std::isnan(pa.z + pb.z + pc.z) || (area >= 0 && !isCut))
                continue;
            // Between the points there is nothing to be seen.
            const int left = std::max(0, floorOf(std::min({pa.x, pb.x, pc.x}) + 0.5F));
            const int right = std::min(width, floorOf(std::max({pa.x, pb.x, pc.x}) + 0.5F));
            if (left >= right)
                continue;
            bandsOf(floorOf(std::min({pa.y, pb.y, pc.y}) + 0.5F),
                    floorOf(std::max({pa.y, pb.y, pc.y}) + 0.5F), [&](Bin &bin) {
                        bin.triangles.push_back({{a, b, c}, triangle.pick + added});
                    });
        }
        break;
    case Share::Kind::Spheres:
        for (std::size_t i = share.begin; i < share.end; ++i) {
            const Sphere &sphere = share.part->shapes->spheres[i];
            const Vec3 view = own.toView(sphere.centre);
            if (view.z - sphere.radius > projection.front() ||
                view.z + sphere.radius < projection.back())
                continue;
            const Extent extent = clipped(extentOf(view, sphere.radius));
            if (extent.left < extent.right)
                bandsOf(extent.top, extent.bottom, [&](Bin &bin) {
                    bin.balls.push_back({view, sphere.radius, sphere.pick + added, extent});
                });
        }
        break;
    case Share::Kind::Sticks:
        for (std::size_t i = share.begin; i < share.end; ++i) {
            const Stick &stick = share.part->shapes->sticks[i];
            const Vec3 from = own.toView(stick.from);
            const Vec3 to = own.toView(stick.to);
            if (std::min(from.z, to.z) - stick.radius > projection.front() ||
                std::max(from.z, to.z) + stick.radius < projection.back())
                continue;
            const Extent one = extentOf(from, stick.radius);
            const Extent other = extentOf(to, stick.radius);
            Extent both{std::min(one.left, other.left), std::max(one.right, other.right),
                        std::min(one.top, other.top), std::max(one.bottom, other.bottom)};
            // What is seen of one that reaches behind the eye may be anywhere.
            if (projection.isPerspective() &&
                std::max(from.z, to.z) > 0.95F * projection.eyeDistance())
                both = {0, width, 0, height};
            both = clipped(both);
            if (both.left < both.right)
                bandsOf(both.top, both.bottom, [&](Bin &bin) {
                    bin.rods.push_back({from, to, stick.radius, stick.fromPick + added,
                                        stick.toPick + added, both});
                });
        }
        break;
    }
}

bool Rasterizer::draw(std::span<const ScenePart> parts, const Projection &projection, int firstRow,
                      bool isCoarse, const std::atomic<bool> *stop, Samples &samples)
{
    const auto isStopped = [stop] { return stop && stop->load(std::memory_order_relaxed); };
    const int width = samples.width();
    const int height = samples.height();
    if (width <= 0 || height <= 0)
        return true;
    project(parts, projection, firstRow, isCoarse);

    std::vector<Share> shares;
    std::uint32_t firstCorner = 0;
    for (const ScenePart &part : parts) {
        const Mesh &mesh = meshOf(*part.shapes, isCoarse);
        const auto addShares = [&](Share::Kind kind, std::size_t count) {
            for (std::size_t begin = 0; begin < count; begin += kShareSize)
                shares.push_back(
                    {&part, &mesh, firstCorner, kind, begin, std::min(count, begin + kShareSize)});
        };
        addShares(Share::Kind::Triangles, mesh.triangles.size());
        addShares(Share::Kind::Spheres, part.shapes->spheres.size());
        addShares(Share::Kind::Sticks, part.shapes->sticks.size());
        firstCorner += std::uint32_t(mesh.vertices.size());
    }
    const auto bands = std::size_t((height + kBandRows - 1) / kBandRows);
    m_Bins.resize(shares.size());
    inParallel(shares.size(), [&](std::size_t i) {
        if (isStopped())
            return;
        m_Bins[i].resize(bands);
        for (Bin &bin : m_Bins[i]) {
            bin.triangles.clear();
            bin.balls.clear();
            bin.rods.clear();
        }
        bin(shares[i], projection, firstRow, width, height, m_Bins[i]);
        // The nearest first: what is behind it is left out early.
        for (Bin &bin : m_Bins[i])
            std::sort(bin.balls.begin(), bin.balls.end(), [](const Ball &a, const Ball &b) {
                return a.centre.z + a.radius > b.centre.z + b.radius;
            });
    });
    inParallel(bands, [&](std::size_t i) {
        if (isStopped())
            return;
        const int begin = int(i) * kBandRows;
        const int end = std::min(height, begin + kBandRows);
        samples.clearRows(begin, end);
        Band band(projection, m_Corners, firstRow, begin, end, samples);
        for (const std::vector<Bin> &bins : m_Bins) {
            const Bin &bin = bins[i];
            for (const Triangle &triangle : bin.triangles)
                band.fill(triangle);
            for (const Ball &ball : bin.balls)
                band.fill(ball);
            for (const Rod &rod : bin.rods)
                band.fill(rod);
        }
        samples.findStretches(begin, end);
    });
    return !isStopped();
}

} // namespace structures
