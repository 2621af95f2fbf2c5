// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureMaker.h"

#include <QElapsedTimer>
#include <QRect>

#include <algorithm>
#include <utility>

namespace structures {

namespace {

// Both together stay below 64 MB.
constexpr std::size_t kQuickBytes = 22U << 20;
constexpr std::size_t kFineBytes = 40U << 20;
// Milliseconds, for thirty pictures a second.
constexpr qint64 kLongest = 33;
// In a row, before less is drawn: one alone may have waited for a processor.
constexpr int kSlowPictures = 2;
// Pixels an Angstrom, below which a coarse mesh looks as a fine one does.
constexpr float kCoarseBelow = 4;

} // namespace

PictureMaker::PictureMaker(QObject *parent)
    : QObject(parent), m_Quick(kQuickBytes), m_Fine(kFineBytes)
{ }

PictureMaker::~PictureMaker()
{
    stop();
}

void PictureMaker::stop()
{
    if (!m_Thread.joinable())
        return;
    m_Stop = true;
    m_Thread.join();
    m_Stop = false;
    ++m_Run;
}

void PictureMaker::setScene(std::shared_ptr<const PictureScene> scene)
{
    stop();
    m_Scene = std::move(scene);
    m_Effort = Effort::Full;
    m_SlowPictures = 0;
    m_IsStale = true;
}

void PictureMaker::setPalette(Palette palette)
{
    const bool wasDrawing = isDrawing();
    stop();
    m_Palette = std::move(palette);
    m_Marked.clear();
    markPointed();
    if (m_IsStale)
        return;
    if (!m_Shown->recolor(m_Palette))
        drawNow(m_Camera, m_Look, m_Size);
    if (wasDrawing)
        drawWell();
}

void PictureMaker::point(std::vector<Pick> picks)
{
    m_Pointed = std::move(picks);
    // The thread reads the marks.
    if (isDrawing() || m_Pointed == m_Marked)
        return;
    markPointed();
    if (!m_IsStale)
        m_Shown->repoint(m_Palette);
}

void PictureMaker::markPointed()
{
    const auto mark = [this](Pick pick, bool isPointed) {
        if (pick == 0 || pick >= m_Palette.marks.size())
            return;
        std::uint8_t &marks = m_Palette.marks[pick];
        marks = std::uint8_t(isPointed ? marks | Palette::kPointed : marks & ~Palette::kPointed);
    };
    for (const Pick pick : m_Marked)
        mark(pick, false);
    for (const Pick pick : m_Pointed)
        mark(pick, true);
    m_Marked = m_Pointed;
}

PictureRequest PictureMaker::request() const
{
    PictureRequest request;
    request.parts = m_Scene->parts;
    request.bounds = m_Scene->bounds;
    request.camera = m_Camera;
    request.look = m_Look;
    request.size = m_Size;
    return request;
}

void PictureMaker::drawNow(const Camera &camera, const Look &look, const QSize &size)
{
    stop();
    m_Camera = camera;
    m_Look = look;
    m_Size = size;
    if (!m_Scene || size.isEmpty())
        return;
    PictureRequest quick = request();
    quick.isCoarse =
        m_Effort != Effort::Full || float(size.height()) < kCoarseBelow * camera.height;
    if (m_Effort == Effort::Half)
        quick.size = (size / 2).expandedTo({1, 1});
    QElapsedTimer timer;
    timer.start();
    m_Quick.draw(quick, m_Palette);
    m_Shown = &m_Quick;
    m_IsStale = false;
    m_SlowPictures = timer.elapsed() > kLongest ? m_SlowPictures + 1 : 0;
    if (m_SlowPictures == kSlowPictures) {
        m_SlowPictures = 0;
        if (m_Effort != Effort::Half)
            m_Effort = m_Effort == Effort::Full ? Effort::Coarse : Effort::Half;
    }
}

void PictureMaker::drawWell()
{
    stop();
    if (!m_Scene || m_Size.isEmpty())
        return;
    // What is shown is not painted over while it is looked at.
    if (m_Shown == &m_Fine)
        drawNow(m_Camera, m_Look, m_Size);
    PictureRequest fine = request();
    fine.perAxis = 2;
    fine.stop = &m_Stop;
    m_Thread = std::thread([this, fine, scene = m_Scene, run = m_Run] {
        const bool isComplete = m_Fine.draw(fine, m_Palette);
        QMetaObject::invokeMethod(
            this,
            [this, isComplete, run] {
                if (run == m_Run)
                    show(isComplete);
            },
            Qt::QueuedConnection);
    });
}

void PictureMaker::show(bool isComplete)
{
    m_Thread.join();
    ++m_Run;
    if (!isComplete)
        return;
    m_Shown = &m_Fine;
    // The next motion may be quicker.
    if (m_Effort != Effort::Full)
        m_Effort = m_Effort == Effort::Half ? Effort::Coarse : Effort::Full;
    point(std::exchange(m_Pointed, {}));
    emit finished();
}

Pick PictureMaker::pickAt(int x, int y) const noexcept
{
    if (m_Size.isEmpty() || image().isNull() || x < 0 || y < 0)
        return 0;
    return m_Shown->pickAt(x * image().width() / m_Size.width(),
                           y * image().height() / m_Size.height());
}

std::vector<Pick> PictureMaker::picksIn(const QRect &rect) const
{
    std::vector<Pick> found;
    if (m_Size.isEmpty() || image().isNull())
        return found;
    const QRect scaled = QRect(QPoint(rect.left() * image().width() / m_Size.width(),
                                      rect.top() * image().height() / m_Size.height()),
                               QPoint(rect.right() * image().width() / m_Size.width(),
                                      rect.bottom() * image().height() / m_Size.height())) &
                         image().rect();
    for (int y = scaled.top(); y <= scaled.bottom(); ++y)
        for (int x = scaled.left(); x <= scaled.right(); ++x)
            if (const Pick pick = m_Shown->pickAt(x, y); pick != 0)
                found.push_back(pick);
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

} // namespace structures

#include "moc_PictureMaker.cpp"
