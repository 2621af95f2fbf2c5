// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "MeasurePainting.h"
#include "Measures.h"
#include "ViewOverlay.h"

#include <QObject>

#include <optional>
#include <vector>

class QLabel;
class QMouseEvent;

namespace structures {

class StructureView;

// Measuring in a view: its clicks are atoms while it runs, and what has been measured is painted
// over the picture, where labels can be chosen.
class MeasureTool final : public QObject, public ViewOverlay
{
    Q_OBJECT

public:
    // prompt: says what to click next, and is hidden otherwise. All of them outlive this.
    MeasureTool(StructureScene &scene, StructureView &view, QLabel &prompt);
    ~MeasureTool() override;

    // 2: a distance, 3: an angle, 4: a torsion, one after the other until end().
    void begin(std::size_t atoms);
    void end();
    // 0 while it does not run.
    [[nodiscard]] std::size_t atomsWanted() const noexcept { return m_Wanted; }

    [[nodiscard]] const Measures &measures() const noexcept { return m_Measures; }
    void setMeasures(Measures measures);
    [[nodiscard]] bool hasChosen() const noexcept { return m_Chosen.has_value(); }
    void removeChosen();
    void removeAll();
    // The scene shows other things than before, or the same elsewhere.
    void follow();

    // Where labels are in the view.
    [[nodiscard]] std::vector<MeasurePainting::Label> labels() const;

    void paintOver(QPainter &painter, const Camera &camera, const QSizeF &size, const Look &look,
                   double scale) const override;
    void paintMarks(QPainter &painter, const Camera &camera, const QSizeF &size,
                    const Look &look) const override;

signals:
    // It has begun or ended.
    void runs(bool on);
    // Other measures are there, or another one is chosen.
    void changed();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void click(Pick pick);
    // What a click means; nothing for the ground, and for what is drawn through no atom.
    [[nodiscard]] std::optional<AtomAddress> addressAt(Pick pick) const;
    void ask();
    void choose(std::optional<std::size_t> measure);
    void remove(std::size_t measure);
    void showMenu(std::size_t measure, const QPoint &place);
    [[nodiscard]] std::optional<std::size_t> measureAt(const QPointF &place) const;
    void showCursor(bool isOnLabel);

    StructureScene &m_Scene;
    StructureView &m_View;
    QLabel &m_Prompt;
    Measures m_Measures;
    std::optional<std::size_t> m_Chosen;
    std::size_t m_Wanted = 0;
    std::vector<AtomAddress> m_Picked;
    // Of the picked ones.
    std::vector<Vec3> m_PickedPlaces;
};

} // namespace structures
