// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PictureScene.h"
#include "Renderer.h"

#include <QObject>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace structures {

// The pictures of one view: at once and not too well while something moves, and well, in a thread
// of its own, when it rests.
class PictureMaker final : public QObject
{
    Q_OBJECT

public:
    explicit PictureMaker(QObject *parent);
    ~PictureMaker() override;

    // With its own palette, and drawNow() behind it.
    void setScene(std::shared_ptr<const PictureScene> scene);
    // Paints what is shown anew, unless it is of another scene.
    void setPalette(Palette palette);
    // What has the outline of what is pointed at. Of a picture that is being drawn,
    // once it is there.
    void point(std::vector<Pick> picks);

    // size: in the pixels of the screen. What is being drawn well is given up.
    void drawNow(const Camera &camera, const Look &look, const QSize &size);
    // Begins to draw what drawNow() has drawn last; finished() says when it is shown.
    void drawWell();
    [[nodiscard]] bool isDrawing() const noexcept { return m_Thread.joinable(); }

    // The picture that is to be shown; null before the first one. It may have fewer pixels than was
    // asked for.
    [[nodiscard]] const QImage &image() const noexcept { return m_Shown->image(); }
    // At a pixel of the size that was asked for.
    [[nodiscard]] Pick pickAt(int x, int y) const noexcept;
    // All that are to be seen in a rectangle of it, each once.
    [[nodiscard]] std::vector<Pick> picksIn(const QRect &rect) const;

signals:
    void finished();

private:
    void stop();
    void show(bool isComplete);
    void markPointed();
    [[nodiscard]] PictureRequest request() const;

    std::shared_ptr<const PictureScene> m_Scene;
    Palette m_Palette;
    // What is to have the mark, and what has it.
    std::vector<Pick> m_Pointed;
    std::vector<Pick> m_Marked;
    Camera m_Camera;
    Look m_Look;
    QSize m_Size;
    // While it moves: what a picture takes, in turn, when one has taken too long.
    enum class Effort { Full, Coarse, Half } m_Effort = Effort::Full;
    // In a row.
    int m_SlowPictures = 0;

    Renderer m_Quick;
    Renderer m_Fine;
    Renderer *m_Shown = &m_Quick;
    // There is no picture of the scene yet: its picks are those of another one.
    bool m_IsStale = true;
    std::thread m_Thread;
    std::atomic<bool> m_Stop = false;
    // Which of the threads has ended: what one of before says means nothing.
    int m_Run = 0;
};

} // namespace structures
