// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PictureMaker.h"

#include <QElapsedTimer>
#include <QPoint>
#include <QTimer>
#include <QWidget>

#include <optional>

namespace structures {

class ViewOverlay;

// The picture, and turning it with mouse and keys. Knows nothing of what it shows but picks.
class StructureView final : public QWidget
{
    Q_OBJECT

public:
    explicit StructureView(QWidget *parent);
    ~StructureView() override;

    void setScene(std::shared_ptr<const PictureScene> scene);
    void setPalette(Palette palette);
    void setLook(const Look &look);
    [[nodiscard]] const Look &look() const noexcept { return m_Look; }
    // At once, or on a way of 200 ms that any input ends.
    void setCamera(const Camera &camera);
    void moveCamera(const Camera &camera);
    [[nodiscard]] const Camera &camera() const noexcept { return m_Camera; }
    // Where the camera is when it has arrived.
    [[nodiscard]] const Camera &goal() const noexcept { return m_Way ? m_Way->to : m_Camera; }
    // From where everything is seen, with the rotation of now.
    [[nodiscard]] Camera wholeCamera() const;

    [[nodiscard]] Pick pickAt(const QPoint &position) const;
    // Gives them the outline of what is pointed at, until the pointer is over something else here.
    void outline(std::vector<Pick> picks);
    // The shown picture is the one that is drawn well.
    [[nodiscard]] bool isComplete() const noexcept { return m_IsComplete; }
    // In the widget's coordinates; nothing for what is behind the eye.
    [[nodiscard]] std::optional<QPointF> placeOf(Vec3 point) const;
    // Painted over the picture; null for none. It outlives the view, or is taken away.
    void setOverlay(const ViewOverlay *overlay);
    [[nodiscard]] const ViewOverlay *overlay() const noexcept { return m_Overlay; }
    [[nodiscard]] QImage picture() const { return m_Maker.image(); }

    [[nodiscard]] QSize sizeHint() const override;

signals:
    // 0 when the pointer is over the ground or has left.
    void pointed(structures::Pick pick);
    void clicked(structures::Pick pick, Qt::KeyboardModifiers modifiers);
    void doubleClicked(structures::Pick pick);
    // What is to be seen in a rectangle that was drawn with Shift held.
    void framed(const std::vector<structures::Pick> &picks, Qt::KeyboardModifiers modifiers);
    void cameraChanged();
    void lookChanged();
    // The picture has been drawn well.
    void completed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    enum class Drag { None, Rotate, Pan, Roll, Frame };
    struct Way
    {
        Camera from;
        Camera to;
    };

    [[nodiscard]] QSize pixelSize() const;
    void draw();
    void change(const Camera &camera);
    void endWay();
    void goOn();
    void point(const QPoint &position);
    // What is under a pointer that rests, which has moved itself.
    void pointAgain();
    void rotate(float right, float down);
    void pan(float right, float down);
    void roll(float angle);
    // factor below 1: nearer. What is at the position stays there.
    void zoom(float factor, const QPointF &position);

    PictureMaker m_Maker;
    std::shared_ptr<const PictureScene> m_Scene;
    Camera m_Camera;
    Look m_Look;
    const ViewOverlay *m_Overlay = nullptr;
    bool m_NeedsDrawing = true;
    // In the pixels of the screen.
    QSize m_DrawnSize;
    bool m_IsComplete = false;
    QTimer m_Rest;

    std::optional<Way> m_Way;
    QElapsedTimer m_WayTime;
    QTimer m_WaySteps;

    Drag m_Drag = Drag::None;
    Qt::MouseButton m_Button = Qt::NoButton;
    QPoint m_Pressed;
    QPoint m_Last;
    bool m_HasMoved = false;
    Pick m_Pointed = 0;
};

} // namespace structures
