// SPDX-License-Identifier: GPL-3.0-or-later
#include "PngPages.h"

#include "Texts.h"

#include <QImageWriter>
#include <QLocale>

#include <cmath>

namespace companion {

namespace {

constexpr double kInchesOfMeter = 1 / 0.0254;
constexpr QColor kPageEdge(200, 200, 200);

int pixels(double points, double dotsOfInch)
{
    return int(std::lround(points * dotsOfInch / kPointsOfInch));
}

// Takes nothing more once it is given up.
class GivenUpDevice : public QIODevice
{
public:
    GivenUpDevice(QIODevice &target, const std::atomic<bool> &isGivenUp)
        : m_Target(target), m_IsGivenUp(isGivenUp)
    {
        open(WriteOnly | Unbuffered);
    }
    // Something did not fit; what came behind it was not written either.
    [[nodiscard]] bool hasFailed() const noexcept { return m_HasFailed; }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 size) override
    {
        if (m_IsGivenUp)
            return -1;
        // The toolkit's writer loses memory when it is interrupted, so it is not told.
        m_HasFailed = m_HasFailed || m_Target.write(data, size) != size;
        return size;
    }

private:
    QIODevice &m_Target;
    const std::atomic<bool> &m_IsGivenUp;
    bool m_HasFailed = false;
};

} // namespace

QString PngPages::obstacle(const PagePlan &plan, double dotsOfInch)
{
    const double scale = dotsOfInch / kPointsOfInch;
    const double width = plan.layout.pageSize().width() * scale;
    const double height = plan.layout.pageSize().height() * scale * double(plan.layout.pages());
    if (width <= kMostPixelsOfSide && height <= kMostPixelsOfSide && width * height <= kMostPixels)
        return {};
    const QLocale locale;
    return tr("The picture would have %1 × %2 pixels; PNG is written with up to %3 on a side and "
              "%4 in all. Choose a lower resolution, a smaller font, or fewer rows or columns; or "
              "write PDF, SVG or HTML.")
        .arg(locale.toString(width, 'f', 0), locale.toString(height, 'f', 0),
             locale.toString(kMostPixelsOfSide, 'f', 0), locale.toString(kMostPixels, 'f', 0));
}

PngPages::PngPages(const PagePlan &plan, QIODevice &device, double dotsOfInch)
    : m_Device(device),
      m_PageHeight(pixels(plan.layout.pageSize().height(), dotsOfInch)),
      m_Image(pixels(plan.layout.pageSize().width(), dotsOfInch),
              m_PageHeight * int(plan.layout.pages()), QImage::Format_RGB32)
{
    if (m_Image.isNull()) {
        m_HasFailed = true;
        return;
    }
    const int dotsOfMeter = int(std::lround(dotsOfInch * kInchesOfMeter));
    m_Image.setDotsPerMeterX(dotsOfMeter);
    m_Image.setDotsPerMeterY(dotsOfMeter);
    m_Image.fill(Qt::white);
    m_Painter.begin(&m_Image);
    m_Painter.setRenderHint(QPainter::TextAntialiasing);
    m_Pages.emplace(plan, m_Painter, dotsOfInch / kPointsOfInch, [this](std::size_t number) {
        return QPointF(0, double(number) * m_PageHeight);
    });
}

PngPages::~PngPages()
{
    m_IsGivenUp = true;
    if (m_Packing.joinable())
        m_Packing.join();
}

void PngPages::beginPage(const Page &page)
{
    if (!m_Pages)
        return;
    if (page.number > 0) {
        m_Painter.setPen(kPageEdge);
        const int edge = int(page.number) * m_PageHeight;
        m_Painter.drawLine(0, edge, m_Image.width() - 1, edge);
    }
    m_Pages->beginPage(page);
}

void PngPages::beginPart(const PagePart &part)
{
    if (m_Pages)
        m_Pages->beginPart(part);
}

void PngPages::addRow(const PagePart &part, const PageRow &row)
{
    if (m_Pages)
        m_Pages->addRow(part, row);
}

void PngPages::addTracks(const PagePart &part, const ColumnOfTrack &columns)
{
    if (m_Pages)
        m_Pages->addTracks(part, columns);
}

void PngPages::addLine(const PagePart &part, std::size_t place, const std::string &text)
{
    if (m_Pages)
        m_Pages->addLine(part, place, text);
}

bool PngPages::finish(std::chrono::microseconds most)
{
    if (!m_Pages || m_IsPacked)
        return true;
    if (!m_Packing.joinable()) {
        m_Painter.end();
        m_Packing = std::thread([this] { pack(); });
    }
    std::this_thread::sleep_for(most);
    return m_IsPacked;
}

void PngPages::pack()
{
    GivenUpDevice device(m_Device, m_IsGivenUp);
    QImageWriter writer(&device, "png");
    if (!writer.write(m_Image) || device.hasFailed())
        m_HasFailed = true;
    m_IsPacked = true;
}

} // namespace companion
