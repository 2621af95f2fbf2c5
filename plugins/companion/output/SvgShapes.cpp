// SPDX-License-Identifier: GPL-3.0-or-later
#include "SvgShapes.h"

#include "MarkupText.h"

#include <QBrush>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPen>
#include <QTransform>

namespace companion {

namespace {

constexpr int kDotsOfShapes = 96;
constexpr double kMillimetersOfInch = 25.4;

QByteArray pathData(const QPainterPath &path)
{
    QByteArray data;
    const auto point = [&data](const QPainterPath::Element &element) {
        data += markupNumber(element.x) + ' ' + markupNumber(element.y);
    };
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        switch (element.type) {
        case QPainterPath::MoveToElement:
            data += 'M';
            break;
        case QPainterPath::LineToElement:
            data += 'L';
            break;
        case QPainterPath::CurveToElement:
            data += 'C';
            break;
        case QPainterPath::CurveToDataElement:
            data += ' ';
            break;
        }
        point(element);
    }
    return data;
}

} // namespace

class SvgShapes::Engine : public QPaintEngine
{
public:
    // The painter is to change nothing into pictures by itself.
    Engine() : QPaintEngine(AllFeatures) { }

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }

    void updateState(const QPaintEngineState &state) override
    {
        if (state.state() & DirtyBrush)
            m_Brush = state.brush();
        if (state.state() & DirtyPen)
            m_Pen = state.pen();
        if (state.state() & DirtyTransform)
            m_Transform = state.transform();
    }
    void drawRects(const QRectF *rects, int count) override
    {
        for (int i = 0; i < count; ++i) {
            if (m_Transform.type() > QTransform::TxScale) {
                QPainterPath path;
                path.addRect(rects[i]);
                drawPath(path);
                continue;
            }
            const QRectF rect = m_Transform.mapRect(rects[i]);
            elements += "<rect x=\"" + markupNumber(rect.x()) + "\" y=\"" + markupNumber(rect.y()) +
                        "\" width=\"" + markupNumber(rect.width()) + "\" height=\"" +
                        markupNumber(rect.height()) + '"' + look(true) + "/>";
        }
    }
    void drawPath(const QPainterPath &path) override { draw(path, true); }
    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override
    {
        QPainterPath path;
        for (int i = 0; i < count; ++i) {
            if (i == 0)
                path.moveTo(points[i]);
            else
                path.lineTo(points[i]);
        }
        if (mode != PolylineMode)
            path.closeSubpath();
        draw(path, mode != PolylineMode);
    }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { }
    void drawTextItem(const QPointF &, const QTextItem &) override { }

    QByteArray elements;

private:
    void draw(const QPainterPath &path, bool isFilled)
    {
        elements += "<path d=\"" + pathData(m_Transform.map(path)) + '"' + look(isFilled) + "/>";
    }
    QByteArray look(bool isFilled) const
    {
        QByteArray text = " fill=\"";
        text += isFilled && m_Brush.style() != Qt::NoBrush ? markupColor(m_Brush.color().rgb())
                                                           : QByteArray("none");
        if (m_Pen.style() != Qt::NoPen)
            text += "\" stroke=\"" + markupColor(m_Pen.color().rgb());
        return text + '"';
    }

    QBrush m_Brush = Qt::NoBrush;
    QPen m_Pen;
    QTransform m_Transform;
};

SvgShapes::SvgShapes(const QSize &size) : m_Size(size), m_Engine(std::make_unique<Engine>()) { }

SvgShapes::~SvgShapes() = default;

const QByteArray &SvgShapes::elements() const noexcept
{
    return m_Engine->elements;
}

QPaintEngine *SvgShapes::paintEngine() const
{
    return m_Engine.get();
}

int SvgShapes::metric(PaintDeviceMetric which) const
{
    switch (which) {
    case PdmWidth:
        return m_Size.width();
    case PdmHeight:
        return m_Size.height();
    case PdmWidthMM:
        return qRound(m_Size.width() * kMillimetersOfInch / kDotsOfShapes);
    case PdmHeightMM:
        return qRound(m_Size.height() * kMillimetersOfInch / kDotsOfShapes);
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return kDotsOfShapes;
    case PdmNumColors:
        return 0;
    case PdmDepth:
        return 32;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return int(devicePixelRatioFScale());
    default:
        return 0;
    }
}

} // namespace companion
