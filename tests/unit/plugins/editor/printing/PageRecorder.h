// SPDX-License-Identifier: GPL-3.0-or-later
// A printer that puts nothing on paper, but keeps what is painted on its pages and where.
#pragma once

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QPaintEngine>
#include <QPrintEngine>
#include <QPrinter>
#include <QRectF>
#include <QString>
#include <QTransform>

#include <algorithm>
#include <vector>

struct PaintedText
{
    int page;
    // How many things had been painted before.
    std::size_t order;
    QString text;
    // Where the text begins on its baseline.
    QPointF place;
    // By the font's metrics.
    QRectF box;
    QColor color;
    QFont font;
};

struct PaintedRect
{
    int page;
    std::size_t order;
    QRectF rect;
    // Invalid without a fill or an outline.
    QColor fill;
    QColor outline;
};

class RecordingPaintEngine : public QPaintEngine
{
public:
    RecordingPaintEngine() : QPaintEngine(QPaintEngine::AllFeatures) { }

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    Type type() const override { return QPaintEngine::User; }
    void updateState(const QPaintEngineState &state) override
    {
        if (state.state() & DirtyPen)
            m_Pen = state.pen();
        if (state.state() & DirtyBrush)
            m_Brush = state.brush();
        if (state.state() & DirtyTransform)
            m_Transform = state.transform();
    }
    void drawTextItem(const QPointF &place, const QTextItem &item) override
    {
        const QRectF box(place.x(), place.y() - item.ascent(), item.width(),
                         item.ascent() + item.descent());
        texts.push_back({page, m_Order++, item.text(), m_Transform.map(place),
                         m_Transform.mapRect(box), m_Pen.color(), item.font()});
    }
    void drawRects(const QRectF *rects, int count) override
    {
        for (int i = 0; i < count; ++i) {
            this->rects.push_back({page, m_Order++, m_Transform.mapRect(rects[i]),
                                   m_Brush.style() == Qt::NoBrush ? QColor() : m_Brush.color(),
                                   m_Pen.style() == Qt::NoPen ? QColor() : m_Pen.color()});
        }
    }
    void drawRects(const QRect *rects, int count) override
    {
        for (int i = 0; i < count; ++i) {
            const QRectF rect(rects[i]);
            drawRects(&rect, 1);
        }
    }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { ++others; }
    void drawPath(const QPainterPath &) override { ++others; }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { ++others; }

    int page = 0;
    std::vector<PaintedText> texts;
    std::vector<PaintedRect> rects;
    int others = 0;

private:
    std::size_t m_Order = 0;
    QPen m_Pen;
    QBrush m_Brush;
    QTransform m_Transform;
};

class RecordingPrintEngine : public QPrintEngine
{
public:
    RecordingPrintEngine(RecordingPaintEngine &paint, const QSize &size)
        : m_Paint(paint), m_Size(size)
    { }

    void setProperty(PrintEnginePropertyKey, const QVariant &) override { }
    QVariant property(PrintEnginePropertyKey key) const override
    {
        return key == PPK_Resolution ? QVariant(kDotsPerInch) : QVariant();
    }
    bool newPage() override
    {
        ++m_Paint.page;
        return true;
    }
    bool abort() override { return false; }
    int metric(QPaintDevice::PaintDeviceMetric metric) const override
    {
        constexpr double kMillimetres = 25.4;
        switch (metric) {
        case QPaintDevice::PdmWidth:
            return m_Size.width();
        case QPaintDevice::PdmHeight:
            return m_Size.height();
        case QPaintDevice::PdmWidthMM:
            return qRound(m_Size.width() * kMillimetres / kDotsPerInch);
        case QPaintDevice::PdmHeightMM:
            return qRound(m_Size.height() * kMillimetres / kDotsPerInch);
        case QPaintDevice::PdmDpiX:
        case QPaintDevice::PdmDpiY:
        case QPaintDevice::PdmPhysicalDpiX:
        case QPaintDevice::PdmPhysicalDpiY:
            return kDotsPerInch;
        case QPaintDevice::PdmDevicePixelRatioScaled:
            return static_cast<int>(QPaintDevice::devicePixelRatioFScale());
        default:
            return 1;
        }
    }
    QPrinter::PrinterState printerState() const override { return QPrinter::Active; }

private:
    static constexpr int kDotsPerInch = 96;

    RecordingPaintEngine &m_Paint;
    QSize m_Size;
};

class PageRecorder : public QPrinter
{
public:
    explicit PageRecorder(const QSize &page)
        : QPrinter(QPrinter::ScreenResolution), m_Print(m_Paint, page)
    {
        setEngines(&m_Print, &m_Paint);
    }

    [[nodiscard]] const std::vector<PaintedText> &texts() const { return m_Paint.texts; }
    [[nodiscard]] const std::vector<PaintedRect> &rects() const { return m_Paint.rects; }
    // Things that are neither text nor rectangles.
    [[nodiscard]] int others() const { return m_Paint.others; }
    [[nodiscard]] bool isEmpty() const
    {
        return texts().empty() && rects().empty() && others() == 0;
    }
    [[nodiscard]] int pageCount() const { return isEmpty() ? 0 : m_Paint.page + 1; }
    [[nodiscard]] std::vector<PaintedText> textsOn(int page) const
    {
        std::vector<PaintedText> found;
        std::copy_if(texts().begin(), texts().end(), std::back_inserter(found),
                     [page](const PaintedText &text) { return text.page == page; });
        return found;
    }

private:
    RecordingPaintEngine m_Paint;
    RecordingPrintEngine m_Print;
};

// The measures of a print with a font.
struct PageMeasures
{
    PageMeasures(const QFont &font, QPaintDevice &device)
    {
        const QFontMetrics metrics(font, &device);
        for (const QChar letter : QStringLiteral("-ABCDEFGHIJKLMNOPQRSTUVWXYZ"))
            cell = std::max(cell, metrics.boundingRect(letter).width() + 4);
        number = metrics.boundingRect(QStringLiteral("000M")).width();
        line = metrics.lineSpacing();
    }
    // Of drawn text.
    [[nodiscard]] static int width(const QString &text, const QFont &font, QPaintDevice &device)
    {
        return QFontMetrics(font, &device).boundingRect(QRect(), Qt::AlignLeft, text).width();
    }

    int cell = 0;
    int number = 0;
    int line = 0;
};
