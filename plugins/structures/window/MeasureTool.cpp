// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeasureTool.h"

#include "StructureView.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace structures {

MeasureTool::MeasureTool(StructureScene &scene, StructureView &view, QLabel &prompt)
    : m_Scene(scene), m_View(view), m_Prompt(prompt)
{
    m_Prompt.hide();
    m_View.setOverlay(this);
    m_View.installEventFilter(this);
    connect(&m_View, &StructureView::clicked, this, [this](Pick pick) {
        choose(std::nullopt);
        if (m_Wanted != 0)
            click(pick);
    });
}

MeasureTool::~MeasureTool()
{
    m_View.setOverlay(nullptr);
}

void MeasureTool::begin(std::size_t atoms)
{
    if (atoms < Measure::kLeast || atoms > Measure::kMost)
        return;
    m_Wanted = atoms;
    m_Picked.clear();
    m_PickedPlaces.clear();
    ask();
    emit runs(true);
}

void MeasureTool::end()
{
    if (m_Wanted == 0)
        return;
    m_Wanted = 0;
    m_Picked.clear();
    m_PickedPlaces.clear();
    ask();
    emit runs(false);
}

void MeasureTool::ask()
{
    const QString what = m_Wanted == 2   ? tr("Distance")
                         : m_Wanted == 3 ? tr("Angle")
                                         : tr("Torsion");
    const QString next = m_Wanted == 3 && m_Picked.size() == 1
                             ? tr("%1: click atom %2 of %3, the vertex. Escape ends")
                             : tr("%1: click atom %2 of %3. Escape ends");
    m_Prompt.setText(next.arg(what).arg(m_Picked.size() + 1).arg(m_Wanted));
    m_Prompt.setVisible(m_Wanted != 0);
    showCursor(false);
    m_View.update();
}

std::optional<AtomAddress> MeasureTool::addressAt(Pick pick) const
{
    if (const auto water = m_Scene.waterOf(pick))
        return addressOfWater(*water->structure, water->water);
    const auto place = m_Scene.placeOf(pick);
    if (!place)
        return std::nullopt;
    const ViewedStructure &structure = *place->structure;
    // A ribbon stands for the atom that it is drawn through.
    const std::uint32_t atom = place->place.atom != kNone
                                   ? place->place.atom
                                   : structure.molecule().residues[place->place.residue].tracePoint;
    if (atom == kNone)
        return std::nullopt;
    return addressOf(structure, atom);
}

void MeasureTool::click(Pick pick)
{
    std::optional<AtomAddress> address = addressAt(pick);
    if (!address || std::find(m_Picked.begin(), m_Picked.end(), *address) != m_Picked.end())
        return;
    m_Picked.push_back(*std::move(address));
    if (m_Picked.size() == m_Wanted) {
        const bool isNew = m_Measures.add({std::exchange(m_Picked, {})});
        follow();
        if (isNew)
            emit changed();
    } else {
        follow();
    }
}

void MeasureTool::follow()
{
    m_Measures.follow(m_Scene);
    m_PickedPlaces.clear();
    for (const AtomAddress &address : m_Picked)
        if (const auto place = Measures::placeOf(m_Scene, address))
            m_PickedPlaces.push_back(*place);
    // One that has gone takes the others with it: what is left is not what was meant.
    if (m_PickedPlaces.size() != m_Picked.size()) {
        m_Picked.clear();
        m_PickedPlaces.clear();
    }
    if (m_Chosen && m_Measures.placesOf(*m_Chosen).empty())
        choose(std::nullopt);
    ask();
}

void MeasureTool::setMeasures(Measures measures)
{
    m_Chosen.reset();
    m_Measures = std::move(measures);
    follow();
    emit changed();
}

void MeasureTool::choose(std::optional<std::size_t> measure)
{
    if (measure == m_Chosen)
        return;
    m_Chosen = measure;
    m_View.update();
    emit changed();
}

void MeasureTool::remove(std::size_t measure)
{
    m_Measures.remove(measure);
    m_Chosen.reset();
    m_View.update();
    emit changed();
}

void MeasureTool::removeChosen()
{
    if (m_Chosen)
        remove(*m_Chosen);
}

void MeasureTool::removeAll()
{
    m_Measures.clear();
    m_Chosen.reset();
    m_View.update();
    emit changed();
}

void MeasureTool::showMenu(std::size_t measure, const QPoint &place)
{
    QMenu menu(&m_View);
    const QAction *const remove = menu.addAction(tr("Remove"));
    const QAction *const removeAll = menu.addAction(tr("Remove All"));
    const QAction *const chosen = menu.exec(place);
    if (chosen == remove && measure < m_Measures.all().size())
        this->remove(measure);
    else if (chosen == removeAll)
        this->removeAll();
}

std::vector<MeasurePainting::Label> MeasureTool::labels() const
{
    return MeasurePainting(m_Measures, m_View.camera(), m_View.size(), m_View.look()).labels();
}

std::optional<std::size_t> MeasureTool::measureAt(const QPointF &place) const
{
    if (m_Measures.all().empty())
        return std::nullopt;
    return MeasurePainting(m_Measures, m_View.camera(), m_View.size(), m_View.look())
        .measureAt(place);
}

void MeasureTool::showCursor(bool isOnLabel)
{
    const Qt::CursorShape shape = isOnLabel       ? Qt::PointingHandCursor
                                  : m_Wanted != 0 ? Qt::CrossCursor
                                                  : Qt::ArrowCursor;
    if (m_View.cursor().shape() != shape)
        m_View.setCursor(shape);
}

bool MeasureTool::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        const auto &mouse = static_cast<const QMouseEvent &>(*event);
        const auto measure = measureAt(mouse.position());
        if (!measure || mouse.button() != Qt::LeftButton)
            return false;
        choose(measure);
        return true;
    }
    case QEvent::MouseMove: {
        const auto &mouse = static_cast<const QMouseEvent &>(*event);
        showCursor(mouse.buttons() == Qt::NoButton && measureAt(mouse.position()).has_value());
        return false;
    }
    case QEvent::ContextMenu: {
        const auto &menu = static_cast<const QContextMenuEvent &>(*event);
        const auto measure = measureAt(menu.pos());
        if (!measure)
            return false;
        choose(measure);
        showMenu(*measure, menu.globalPos());
        return true;
    }
    default:
        return false;
    }
}

void MeasureTool::paintOver(QPainter &painter, const Camera &camera, const QSizeF &size,
                            const Look &look, double scale) const
{
    if (!m_Measures.all().empty())
        MeasurePainting(m_Measures, camera, size, look, scale).paint(painter);
}

void MeasureTool::paintMarks(QPainter &painter, const Camera &camera, const QSizeF &size,
                             const Look &look) const
{
    if (!m_Chosen && m_PickedPlaces.empty())
        return;
    const MeasurePainting painting(m_Measures, camera, size, look);
    if (m_Chosen)
        painting.paintChosen(painter, *m_Chosen);
    painting.paintPicked(painter, m_PickedPlaces);
}

} // namespace structures

#include "moc_MeasureTool.cpp"
