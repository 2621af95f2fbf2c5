// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureWindow.h"

#include "MeasuresText.h"
#include "PartMenu.h"
#include "SceneState.h"
#include "StructureList.h"
#include "WindowMenus.h"

#include "Alignment.h"
#include "Config.h"

#include <QDockWidget>
#include <QIcon>
#include <QLabel>
#include <QStatusBar>

#include <algorithm>

namespace structures {

namespace {

QList<StructureWindow *> s_Windows;

// Angstrom, around what was double-clicked.
constexpr float kAroundPlace = 6;

// In the state of a view.
constexpr QLatin1String kMeasures("measures");

// There before and behind all statics of the library.
std::function<void()> &listener()
{
    static auto *const listener = new std::function<void()>;
    return *listener;
}

void tellListener()
{
    if (listener())
        listener()();
}

} // namespace

StructureWindow &StructureWindow::open()
{
    auto *const window = new StructureWindow;
    s_Windows.push_back(window);
    window->show();
    tellListener();
    return *window;
}

const QList<StructureWindow *> &StructureWindow::opened()
{
    return s_Windows;
}

StructureWindow::StructureWindow()
    : BaseWindow("Structure View", {900, 680}, "Structure View", false, nullptr, "structure-view"),
      m_Scene([this] { refreshSoon(); }),
      m_View(new StructureView(this)),
      m_Pointed(new QLabel(this)),
      m_Prompt(new QLabel(this)),
      m_State(new QLabel(this)),
      m_Selection(m_Scene, *m_View, *m_Pointed),
      m_Measuring(m_Scene, *m_View, *m_Prompt),
      m_Styles(m_Scene),
      m_Pictures(*this, m_Scene, *m_View, [this] { return m_Scene.palette(m_Coloring); })
{
    setAttribute(Qt::WA_DeleteOnClose, false);
    setWindowIcon(QIcon(QString::fromStdString(Config::GetIconDir()) + "/kind-structure.svg"));
    setCentralWidget(m_View);
    statusBar()->addWidget(m_Pointed, 1);
    statusBar()->addPermanentWidget(m_Prompt);
    statusBar()->addPermanentWidget(m_State);

    m_List = new StructureList(m_Scene, this);
    auto *const dock = new QDockWidget(tr("Structures"), this);
    dock->setObjectName("StructureList");
    dock->setWidget(m_List);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    resizeDocks({dock}, {170}, Qt::Horizontal);
    // Once the item has been set: the list may be filled anew for it.
    connect(m_List, &StructureList::checked, &m_Styles, &StyleCommands::setShown,
            Qt::QueuedConnection);
    connect(m_List, &StructureList::menuWanted, this, &StructureWindow::showPartMenu);
    connect(&m_Styles, &StyleCommands::changed, this, [this] {
        m_List->refresh();
        showScene();
    });

    m_Refresh.setSingleShot(true);
    m_Refresh.setInterval(0);
    connect(&m_Refresh, &QTimer::timeout, this, &StructureWindow::refresh);
    connect(m_View, &StructureView::cameraChanged, this, [] { tellListener(); });
    connect(m_View, &StructureView::lookChanged, this, [] { tellListener(); });
    connect(m_View, &StructureView::doubleClicked, this, [this](Pick pick) {
        if (const auto place = m_Scene.placeOf(pick))
            centre(Bounds{m_Scene.positionOf(*place), kAroundPlace});
    });

    connect(&m_Measuring, &MeasureTool::changed, this, [] { tellListener(); });
    connect(&m_Measuring, &MeasureTool::runs, this,
            [this](bool on) { m_Selection.setSelecting(!on); });
    m_Menus =
        new WindowMenus(*this, {m_Scene, *m_View, m_Selection, m_Styles, m_Pictures, m_Measuring});
    connect(m_Menus, &WindowMenus::newViewWanted, this, [] { open(); });
    connect(m_Menus, &WindowMenus::coloringChosen, this, &StructureWindow::setColoring);
    connect(m_Menus, &WindowMenus::centreWanted, this,
            [this] { centre(m_Styles.boundsOf(m_Styles.selected())); });
    m_Menus->setColoring(m_Coloring);
    m_List->refresh();
    showScene();
}

StructureWindow::~StructureWindow() = default;

void StructureWindow::Kill(BaseWindow *)
{
    s_Windows.removeOne(this);
    delete this;
    tellListener();
}

void StructureWindow::setListener(std::function<void()> changed)
{
    listener() = std::move(changed);
}

ViewState StructureWindow::state() const
{
    ViewState state = stateOf(m_Scene);
    state.place = normalGeometry().isValid() ? normalGeometry() : geometry();
    state.isMaximized = isMaximized();
    state.camera = m_View->goal();
    state.camera.target = state.camera.target + m_Scene.origin();
    state.look = m_View->look();
    state.coloring = m_Coloring;
    state.others = m_Others;
    if (!m_Measuring.measures().all().empty())
        state.others[kMeasures] = measuresToJson(m_Measuring.measures());
    return state;
}

void StructureWindow::restore(const ViewState &state)
{
    m_Scene.refresh();
    restoreScene(state, m_Scene);
    m_Others = state.others;
    m_Measuring.setMeasures(measuresFromJson(m_Others.take(kMeasures).toObject()));
    m_List->refresh();
    m_View->setLook(state.look);
    setColoring(state.coloring);
    Camera camera = state.camera;
    camera.target = camera.target - m_Scene.origin();
    m_HasCamera = true;
    showScene();
    m_View->setCamera(camera);
    m_Menus->refreshToggles();
    putInSight(*this, state.place);
    if (state.isMaximized)
        showMaximized();
}

void StructureWindow::moveEvent(QMoveEvent *event)
{
    BaseWindow::moveEvent(event);
    tellListener();
}

void StructureWindow::resizeEvent(QResizeEvent *event)
{
    BaseWindow::resizeEvent(event);
    tellListener();
}

void StructureWindow::setColoring(Coloring coloring)
{
    m_Coloring = coloring;
    m_Menus->setColoring(coloring);
    showPalette();
    tellListener();
}

void StructureWindow::refreshSoon()
{
    if (!m_Refresh.isActive())
        m_Refresh.start();
}

void StructureWindow::refresh()
{
    m_Selection.forgetCells();
    const std::size_t before = m_Scene.structures().size();
    const StructureScene::Changes changes = m_Scene.refresh();
    m_List->refresh();
    // It would be about another one.
    if (changes.structures && m_PartMenu)
        m_PartMenu->close();
    if (changes.structures || changes.places)
        showScene();
    else
        showPalette();
    const std::size_t now = m_Scene.structures().size();
    if (changes.structures && now > before && before > 0)
        m_View->moveCamera(m_View->wholeCamera());
}

void StructureWindow::showScene()
{
    const std::shared_ptr<const PictureScene> scene = m_Scene.picture();
    m_View->setScene(scene);
    m_Pointed->setText(QString::fromStdString(m_Scene.remark()));
    m_Measuring.follow();
    showPalette();
    nameState();
    tellListener();
    if (!m_HasCamera && !scene->parts.empty()) {
        m_HasCamera = true;
        m_View->setCamera(m_View->wholeCamera());
    }
}

void StructureWindow::showPalette()
{
    m_View->setPalette(m_Scene.palette(m_Coloring));
}

void StructureWindow::nameState()
{
    const std::size_t count = m_Scene.modelCount();
    const ModelChoice choice = m_Scene.models();
    std::size_t traces = 0;
    for (const auto &structure : m_Scene.structures())
        if (structure->modelCount() == count)
            traces = structure->mostTraces();
    QString text;
    if (count > 1 && choice.all)
        text = traces < count ? tr("%1 of %2 models").arg(traces).arg(count)
                              : tr("All %1 models").arg(count);
    else if (count > 1 && choice.index > 0)
        text = tr("Model %1 of %2").arg(std::min(choice.index, count - 1) + 1).arg(count);
    if (const TAMBO::Alignment *const alignment = m_Scene.rows().alignment()) {
        const QString rows = tr("Rows of %1").arg(QString::fromStdString(alignment->Name()));
        text = text.isEmpty() ? rows : rows + ", " + text;
    }
    m_State->setText(text);
}

void StructureWindow::showPartMenu(const ListedPart &part, const QPoint &position)
{
    auto *const menu = new PartMenu(m_Styles, part, this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu, &PartMenu::centreWanted, this,
            [this, part] { centre(m_Styles.boundsOf(m_Styles.residuesOf(part))); });
    m_PartMenu = menu;
    menu->popup(position);
}

void StructureWindow::centre(std::optional<Bounds> bounds)
{
    if (!bounds) {
        m_View->moveCamera(m_View->wholeCamera());
        return;
    }
    Camera camera = m_View->goal();
    camera.target = bounds->centre;
    camera.height = std::min(camera.height, 2.4F * bounds->radius + 10);
    m_View->moveCamera(camera);
}

} // namespace structures

#include "moc_StructureWindow.cpp"
