// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureView.h"

#include "ViewOverlay.h"

#include <QCursor>
#include <QEnterEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace structures {

namespace {

using namespace std::chrono_literals;

// After the last change, until the picture is drawn well.
constexpr auto kRest = 120ms;
constexpr auto kWayStep = 15ms;
constexpr float kWayMilliseconds = 200;
// Less is a click.
constexpr int kDragDistance = 4;
// Radians: over the width of the view, and by a key.
constexpr float kTurn = std::numbers::pi_v<float>;
constexpr float kKeyTurn = 0.1F;
constexpr float kKeyZoom = 1.15F;
// Angstrom.
constexpr float kLeastHeight = 2;
constexpr float kMostHeight = 2e7F;

} // namespace

StructureView::StructureView(QWidget *parent) : QWidget(parent), m_Maker(this)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(120, 90);
    m_Rest.setSingleShot(true);
    m_Rest.setInterval(kRest);
    connect(&m_Rest, &QTimer::timeout, this, [this] { m_Maker.drawWell(); });
    m_WaySteps.setInterval(kWayStep);
    connect(&m_WaySteps, &QTimer::timeout, this, &StructureView::goOn);
    connect(&m_Maker, &PictureMaker::finished, this, [this] {
        m_IsComplete = true;
        pointAgain();
        update();
        emit completed();
    });
}

StructureView::~StructureView() = default;

QSize StructureView::sizeHint() const
{
    return {800, 600};
}

QSize StructureView::pixelSize() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

void StructureView::setScene(std::shared_ptr<const PictureScene> scene)
{
    m_Scene = scene;
    m_Maker.setScene(std::move(scene));
    m_Pointed = 0;
    m_Maker.point({});
    draw();
}

void StructureView::setOverlay(const ViewOverlay *overlay)
{
    m_Overlay = overlay;
    update();
}

void StructureView::setPalette(Palette palette)
{
    m_Maker.setPalette(std::move(palette));
    update();
}

void StructureView::setLook(const Look &look)
{
    if (look == m_Look)
        return;
    m_Look = look;
    draw();
    emit lookChanged();
}

Camera StructureView::wholeCamera() const
{
    return m_Scene ? cameraOnAll(m_Camera, m_Scene->bounds, size()) : m_Camera;
}

void StructureView::setCamera(const Camera &camera)
{
    endWay();
    change(camera);
}

void StructureView::moveCamera(const Camera &camera)
{
    if (camera == m_Camera)
        return;
    m_Way = Way{m_Camera, camera};
    m_WayTime.start();
    m_WaySteps.start();
}

void StructureView::endWay()
{
    m_WaySteps.stop();
    m_Way.reset();
}

void StructureView::goOn()
{
    if (!m_Way)
        return;
    const float share = std::min(1.0F, float(m_WayTime.elapsed()) / kWayMilliseconds);
    const float t = share * share * (3 - 2 * share);
    Camera camera = m_Way->to;
    if (share < 1) {
        const Camera &from = m_Way->from;
        camera.rotation = Rotation::between(from.rotation, camera.rotation, t);
        camera.target = from.target + (camera.target - from.target) * t;
        camera.height = from.height * std::pow(camera.height / from.height, t);
    } else {
        endWay();
    }
    change(camera);
}

void StructureView::change(const Camera &camera)
{
    m_Camera = camera;
    m_Camera.height = std::clamp(m_Camera.height, kLeastHeight, kMostHeight);
    draw();
    emit cameraChanged();
}

void StructureView::draw()
{
    m_NeedsDrawing = true;
    m_IsComplete = false;
    m_Rest.start();
    update();
}

Pick StructureView::pickAt(const QPoint &position) const
{
    const qreal ratio = devicePixelRatioF();
    return m_Maker.pickAt(int(position.x() * ratio), int(position.y() * ratio));
}

std::optional<QPointF> StructureView::placeOf(Vec3 point) const
{
    const Projection projection(m_Camera, float(width()), float(height()));
    const Vec3 view = projection.toView(point);
    if (view.z > projection.front())
        return std::nullopt;
    const Vec3 place = projection.toPicture(view);
    return QPointF(double(place.x), double(place.y));
}

void StructureView::paintEvent(QPaintEvent *)
{
    // Of another size on a screen of another scale.
    if (m_NeedsDrawing || m_DrawnSize != pixelSize()) {
        m_NeedsDrawing = false;
        m_DrawnSize = pixelSize();
        m_Maker.drawNow(m_Camera, m_Look, m_DrawnSize);
        if (!m_Rest.isActive())
            m_Rest.start();
    }
    QPainter painter(this);
    const QImage &image = m_Maker.image();
    if (image.isNull()) {
        painter.fillRect(rect(), QColor(QRgb(m_Look.background)));
    } else {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(rect()), image);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    if (m_Overlay) {
        m_Overlay->paintOver(painter, m_Camera, size(), m_Look, 1);
        m_Overlay->paintMarks(painter, m_Camera, size(), m_Look);
    }
    if (m_Drag == Drag::Frame && m_HasMoved) {
        const QRect frame = QRect(m_Pressed, m_Last).normalized();
        painter.setPen(QPen(QColor(0xff, 0, 0xd0), 1, Qt::DashLine));
        painter.setBrush(QColor(0xff, 0, 0xd0, 24));
        painter.drawRect(frame);
    }
}

void StructureView::resizeEvent(QResizeEvent *)
{
    draw();
}

void StructureView::mousePressEvent(QMouseEvent *event)
{
    endWay();
    if (m_Drag != Drag::None)
        return;
    const Qt::KeyboardModifiers keys = event->modifiers();
    if (event->button() == Qt::LeftButton)
        m_Drag = (keys & Qt::ShiftModifier) ? Drag::Frame : Drag::Rotate;
    else if (event->button() == Qt::MiddleButton)
        m_Drag = (keys & Qt::ControlModifier) ? Drag::Roll : Drag::Pan;
    else
        return;
    m_Button = event->button();
    m_Pressed = m_Last = event->position().toPoint();
    m_HasMoved = false;
}

void StructureView::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    if (m_Drag == Drag::None) {
        point(position);
        return;
    }
    if (!m_HasMoved && (position - m_Pressed).manhattanLength() < kDragDistance)
        return;
    m_HasMoved = true;
    const QPoint way = position - m_Last;
    const QPoint middle = rect().center();
    switch (m_Drag) {
    case Drag::Rotate:
        rotate(float(way.x()), float(way.y()));
        break;
    case Drag::Pan:
        pan(float(way.x()), float(way.y()));
        break;
    case Drag::Roll: {
        const QPoint before = m_Last - middle;
        const QPoint now = position - middle;
        roll(std::atan2(float(-now.y()), float(now.x())) -
             std::atan2(float(-before.y()), float(before.x())));
        break;
    }
    case Drag::Frame:
        update();
        break;
    case Drag::None:
        break;
    }
    m_Last = position;
}

void StructureView::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_Drag == Drag::None || event->button() != m_Button)
        return;
    const Drag drag = m_Drag;
    m_Drag = Drag::None;
    const QPoint position = event->position().toPoint();
    if (!m_HasMoved) {
        if (m_Button == Qt::LeftButton)
            emit clicked(pickAt(position), event->modifiers());
    } else if (drag == Drag::Frame) {
        const qreal ratio = devicePixelRatioF();
        const QRect frame = QRect(m_Pressed, position).normalized();
        update();
        emit framed(m_Maker.picksIn(QRect((QPointF(frame.topLeft()) * ratio).toPoint(),
                                          (QPointF(frame.bottomRight()) * ratio).toPoint())),
                    event->modifiers());
    }
    point(position);
}

void StructureView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit doubleClicked(pickAt(event->position().toPoint()));
}

void StructureView::wheelEvent(QWheelEvent *event)
{
    endWay();
    const float notches = float(event->angleDelta().y()) / 120;
    if (notches != 0)
        zoom(std::pow(kKeyZoom, -notches), event->position());
    event->accept();
}

void StructureView::keyPressEvent(QKeyEvent *event)
{
    endWay();
    const bool isPan = (event->modifiers() & Qt::ShiftModifier) != 0;
    const bool isRoll = (event->modifiers() & Qt::ControlModifier) != 0;
    const auto turn = [&](float right, float down) {
        const float pixels = kKeyTurn / kTurn * float(std::max(1, width()));
        if (isRoll)
            roll(-(right + down) * kKeyTurn);
        else if (isPan)
            pan(right * pixels, down * pixels);
        else
            rotate(right * pixels, down * pixels);
    };
    switch (event->key()) {
    case Qt::Key_Left:
        turn(-1, 0);
        break;
    case Qt::Key_Right:
        turn(1, 0);
        break;
    case Qt::Key_Up:
        turn(0, -1);
        break;
    case Qt::Key_Down:
        turn(0, 1);
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
    case Qt::Key_PageUp:
        zoom(1 / kKeyZoom, rect().center());
        break;
    case Qt::Key_Minus:
    case Qt::Key_PageDown:
        zoom(kKeyZoom, rect().center());
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void StructureView::outline(std::vector<Pick> picks)
{
    m_Maker.point(std::move(picks));
    update();
}

// A window that opens under the pointer is entered without a movement.
void StructureView::enterEvent(QEnterEvent *event)
{
    if (m_Drag == Drag::None)
        point(event->position().toPoint());
}

void StructureView::pointAgain()
{
    if (m_Drag == Drag::None && underMouse())
        point(mapFromGlobal(QCursor::pos()));
}

void StructureView::leaveEvent(QEvent *)
{
    point({-1, -1});
}

void StructureView::point(const QPoint &position)
{
    const Pick pick = rect().contains(position) ? pickAt(position) : 0;
    if (pick == m_Pointed)
        return;
    m_Pointed = pick;
    outline(pick != 0 ? std::vector<Pick>{pick} : std::vector<Pick>());
    emit pointed(pick);
}

void StructureView::rotate(float right, float down)
{
    const float unit = kTurn / float(std::max(1, width()));
    Camera camera = m_Camera;
    camera.rotation = Rotation::about({0, 1, 0}, right * unit) *
                      Rotation::about({1, 0, 0}, down * unit) * camera.rotation;
    change(camera);
}

void StructureView::pan(float right, float down)
{
    const Projection projection(m_Camera, float(width()), float(height()));
    const float unit = m_Camera.height / float(std::max(1, height()));
    Camera camera = m_Camera;
    camera.target = projection.fromView({-right * unit, down * unit, 0});
    change(camera);
}

void StructureView::roll(float angle)
{
    Camera camera = m_Camera;
    camera.rotation = Rotation::about({0, 0, 1}, angle) * camera.rotation;
    change(camera);
}

void StructureView::zoom(float factor, const QPointF &position)
{
    Camera camera = m_Camera;
    camera.height = std::clamp(camera.height * factor, kLeastHeight, kMostHeight);
    const float real = camera.height / m_Camera.height;
    const Projection projection(m_Camera, float(width()), float(height()));
    const Vec3 there = projection.toViewAt(float(position.x()), float(position.y()), 0);
    camera.target = projection.fromView(there * (1 - real));
    change(camera);
}

} // namespace structures

#include "moc_StructureView.cpp"
