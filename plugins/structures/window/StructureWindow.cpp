// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureWindow.h"

#include "StructureList.h"
#include "WindowMenus.h"

#include <QDockWidget>
#include <QLabel>
#include <QStatusBar>

#include <algorithm>

namespace structures {

namespace {

QList<StructureWindow *> s_Windows;

// Angstrom, around what was double-clicked.
constexpr float kAroundPlace = 6;

} // namespace

void StructureWindow::open()
{
    auto *const window = new StructureWindow;
    s_Windows.push_back(window);
    window->show();
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
      m_Selection(m_Scene, *m_View, *m_Pointed),
      m_Measuring(m_Scene, *m_View, *m_Prompt),
      m_Styles(m_Scene),
      m_Pictures(*this, m_Scene, *m_View, [this] { return m_Scene.palette(m_Coloring); })
{
    setAttribute(Qt::WA_DeleteOnClose, false);
    setCentralWidget(m_View);
    statusBar()->addWidget(m_Pointed, 1);
    statusBar()->addPermanentWidget(m_Prompt);

    m_List = new StructureList(m_Scene, this);
    auto *const dock = new QDockWidget(tr("Structures"), this);
    dock->setObjectName("StructureList");
    dock->setWidget(m_List);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    resizeDocks({dock}, {170}, Qt::Horizontal);
    connect(m_List, &StructureList::changed, this, &StructureWindow::showScene);
    connect(&m_Styles, &StyleCommands::changed, this, [this] {
        m_List->refresh();
        showScene();
    });

    m_Refresh.setSingleShot(true);
    m_Refresh.setInterval(0);
    connect(&m_Refresh, &QTimer::timeout, this, &StructureWindow::refresh);
    connect(m_View, &StructureView::doubleClicked, this, [this](Pick pick) {
        if (const auto place = m_Scene.placeOf(pick))
            centre(Bounds{m_Scene.positionOf(*place), kAroundPlace});
    });

    connect(&m_Measuring, &MeasureTool::runs, this,
            [this](bool on) { m_Selection.setSelecting(!on); });
    m_Menus = new WindowMenus(*this, {*m_View, m_Selection, m_Styles, m_Pictures, m_Measuring});
    connect(m_Menus, &WindowMenus::newViewWanted, this, &StructureWindow::open);
    connect(m_Menus, &WindowMenus::coloringChosen, this, &StructureWindow::setColoring);
    connect(m_Menus, &WindowMenus::centreWanted, this,
            [this] { centre(m_Styles.selectedBounds()); });
    m_Menus->setColoring(m_Coloring);
    m_List->refresh();
    showScene();
}

StructureWindow::~StructureWindow() = default;

void StructureWindow::Kill(BaseWindow *)
{
    s_Windows.removeOne(this);
    delete this;
}

void StructureWindow::setColoring(Coloring coloring)
{
    m_Coloring = coloring;
    m_Menus->setColoring(coloring);
    showPalette();
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
    if (!m_HasCamera && !scene->parts.empty()) {
        m_HasCamera = true;
        m_View->setCamera(m_View->wholeCamera());
    }
}

void StructureWindow::showPalette()
{
    m_View->setPalette(m_Scene.palette(m_Coloring));
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
