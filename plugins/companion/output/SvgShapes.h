// SPDX-License-Identifier: GPL-3.0-or-later
// What a painter fills, as elements of SVG.
#pragma once

#include <QByteArray>
#include <QPaintDevice>

#include <memory>

namespace companion {

// Knows rectangles, paths, polygons and lines in plain colors; texts and pictures are left out.
// Units are pixels.
class SvgShapes : public QPaintDevice
{
public:
    explicit SvgShapes(const QSize &size);
    ~SvgShapes() override;

    // Of all painting that has ended.
    [[nodiscard]] const QByteArray &elements() const noexcept;

    QPaintEngine *paintEngine() const override;

protected:
    int metric(PaintDeviceMetric which) const override;

private:
    class Engine;

    QSize m_Size;
    std::unique_ptr<Engine> m_Engine;
};

} // namespace companion
