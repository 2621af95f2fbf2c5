// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureWindow.h"

#include "Selecting.h"
#include "StructureList.h"

#include "HelpViewer.h"
#include "Logger.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>

namespace structures {

namespace {

QList<StructureWindow *> s_Windows;

constexpr const char *kHelp = "structures.html";
// Angstrom, around atoms that are in the middle of what is to be seen.
constexpr float kAround = 6;
// Half of the slab of what is in front of and behind the middle.
constexpr float kSlab = 8;

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
      m_Scene([this] { refreshSoon(); })
{
    setAttribute(Qt::WA_DeleteOnClose, false);
    m_View = new StructureView(this);
    setCentralWidget(m_View);
    m_Pointed = new QLabel;
    statusBar()->addWidget(m_Pointed, 1);

    m_List = new StructureList(m_Scene, this);
    auto *const dock = new QDockWidget(tr("Structures"), this);
    dock->setObjectName("StructureList");
    dock->setWidget(m_List);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    resizeDocks({dock}, {170}, Qt::Horizontal);
    connect(m_List, &StructureList::changed, this, &StructureWindow::showScene);

    m_Refresh.setSingleShot(true);
    m_Refresh.setInterval(0);
    connect(&m_Refresh, &QTimer::timeout, this, &StructureWindow::refresh);
    connect(m_View, &StructureView::pointed, this, &StructureWindow::point);
    connect(m_View, &StructureView::clicked, this, &StructureWindow::click);
    connect(m_View, &StructureView::framed, this, &StructureWindow::selectFramed);
    connect(m_View, &StructureView::doubleClicked, this, [this](Pick pick) {
        if (const auto place = m_Scene.placeOf(pick))
            centre(Bounds{m_Scene.positionOf(*place), kAround});
    });

    addMenus();
    addToolBar();
    m_List->refresh();
    showScene();
}

StructureWindow::~StructureWindow() = default;

void StructureWindow::Kill(BaseWindow *)
{
    s_Windows.removeOne(this);
    delete this;
}

QAction *StructureWindow::addAction(QMenu *menu, const QString &text, const QKeySequence &keys,
                                    const std::function<void()> &done)
{
    QAction *const action = menu->addAction(text, this, done);
    action->setShortcut(keys);
    return action;
}

void StructureWindow::addMenus()
{
    addFileMenu();
    addSelectMenu();
    addShowMenu();
    addStyleMenu();
    addColorMenu();
    addViewMenu();
    QMenu *const help = menuBar()->addMenu(tr("&Help"));
    addAction(help, tr("Structure View"), QKeySequence::HelpContents,
              [] { HelpViewer::Show(kHelp); });
}

void StructureWindow::addFileMenu()
{
    QMenu *const menu = menuBar()->addMenu(tr("&File"));
    addAction(menu, tr("&New View"), QKeySequence::New, [] { open(); });
    menu->addSeparator();
    addAction(menu, tr("&Save Picture..."), QKeySequence::Save, [this] { savePicture(); });
    addAction(menu, tr("&Copy Picture"), QKeySequence::Copy, [this] { copyPicture(); });
    menu->addSeparator();
    addAction(menu, tr("&Close"), QKeySequence::Close, [this] { close(); });
}

void StructureWindow::addSelectMenu()
{
    QMenu *const menu = menuBar()->addMenu(tr("&Select"));
    addAction(menu, tr("&All"), QKeySequence::SelectAll, [this] {
        std::vector<TAMBO::Compound *> all;
        for (const auto &structure : m_Scene.structures())
            all.push_back(structure->object());
        select(all, Selecting::Only);
    });
    addAction(menu, tr("&Nothing"), Qt::Key_Escape, [] { select({}, Selecting::Only); });
}

void StructureWindow::addShowMenu()
{
    QMenu *const menu = menuBar()->addMenu(tr("S&how"));
    addAction(menu, tr("&Hide Selection"), Qt::Key_H, [this] { hideSelection(false); });
    addAction(menu, tr("Hide &Others"), Qt::SHIFT | Qt::Key_H, [this] { hideSelection(true); });
    addAction(menu, tr("Show &All"), Qt::Key_A, [this] { showAll(); });
}

void StructureWindow::addStyleMenu()
{
    m_StyleMenu = menuBar()->addMenu(tr("S&tyle"));
    m_StyleMenu->setToolTipsVisible(true);
    const auto add = [this](const QString &text, int key, Style style) {
        addAction(m_StyleMenu, text, QKeySequence(key), [this, style] {
            setStyle(style);
        })->setToolTip(tr("Of what is selected; of everything when nothing is"));
    };
    add(tr("&Cartoon"), Qt::Key_1, Style::Cartoon);
    add(tr("&Trace"), Qt::Key_2, Style::Trace);
    add(tr("&Sticks"), Qt::Key_3, Style::Sticks);
    add(tr("&Balls and Sticks"), Qt::Key_4, Style::BallsAndSticks);
    add(tr("S&pheres"), Qt::Key_5, Style::Spheres);
    m_StyleMenu->addSeparator();
    addAction(m_StyleMenu, tr("Show Side C&hains"), Qt::Key_6, [this] { setSideChains(true); });
    addAction(m_StyleMenu, tr("Hide Side Ch&ains"), Qt::Key_7, [this] { setSideChains(false); });
}

void StructureWindow::addColorMenu()
{
    m_ColorMenu = menuBar()->addMenu(tr("&Color"));
    m_Colorings = new QActionGroup(this);
    const auto add = [this](const QString &text, Coloring coloring) {
        QAction *const action = m_ColorMenu->addAction(text);
        action->setCheckable(true);
        action->setChecked(coloring == m_Coloring);
        action->setData(int(coloring));
        m_Colorings->addAction(action);
        connect(action, &QAction::triggered, this, [this, coloring] { setColoring(coloring); });
    };
    add(tr("As in the &Alignment"), Coloring::Workbench);
    add(tr("By &Chain"), Coloring::Chain);
    add(tr("By &Secondary Structure"), Coloring::SecondaryStructure);
    add(tr("By &B Factor"), Coloring::BFactor);
}

void StructureWindow::addViewMenu()
{
    QMenu *const menu = menuBar()->addMenu(tr("&View"));
    m_Reset = addAction(menu, tr("&Reset"), Qt::Key_R, [this] {
        Camera camera = m_View->wholeCamera();
        camera.rotation = {};
        m_View->moveCamera(camera);
    });
    addAction(menu, tr("Show &Everything"), Qt::Key_F,
              [this] { m_View->moveCamera(m_View->wholeCamera()); });
    m_Centre = addAction(menu, tr("&Centre on Selection"), Qt::Key_C,
                         [this] { centre(selectedBounds()); });
    menu->addSeparator();
    const auto toggle = [&](const QString &text, int key, bool isOn, const auto &change) {
        QAction *const action = menu->addAction(text);
        action->setShortcut(key);
        action->setCheckable(true);
        action->setChecked(isOn);
        connect(action, &QAction::toggled, this, change);
    };
    const auto look = [this](bool Look::*part) {
        return [this, part](bool on) {
            Look changed = m_View->look();
            changed.*part = on;
            m_View->setLook(changed);
        };
    };
    const Look first;
    toggle(tr("&Perspective"), Qt::Key_P, false, [this](bool on) {
        Camera camera = m_View->goal();
        camera.isPerspective = on;
        m_View->setCamera(camera);
    });
    toggle(tr("&Slab"), Qt::Key_S, false, [this](bool on) {
        Camera camera = m_View->goal();
        camera.slabFront = on ? kSlab : std::numeric_limits<float>::infinity();
        camera.slabBack = camera.slabFront;
        m_View->setCamera(camera);
    });
    toggle(tr("&Depth Cue"), Qt::Key_D, first.hasDepthCue, look(&Look::hasDepthCue));
    toggle(tr("&Outlines"), Qt::Key_O, first.hasOutlines, look(&Look::hasOutlines));
    toggle(tr("Sh&adows"), Qt::Key_W, first.hasShadows, look(&Look::hasShadows));
    toggle(tr("Dark &Ground"), Qt::Key_G, false, [this](bool on) {
        Look changed = m_View->look();
        changed.background = on ? kDarkGround : kWhiteGround;
        m_View->setLook(changed);
    });
}

void StructureWindow::addToolBar()
{
    QToolBar *const bar = QMainWindow::addToolBar(tr("Structure View"));
    bar->setObjectName("StructureTools");
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    const auto addMenuButton = [this, bar](const QString &text, QMenu *menu) {
        auto *const button = new QToolButton(this);
        button->setText(text);
        button->setMenu(menu);
        button->setPopupMode(QToolButton::InstantPopup);
        bar->addWidget(button);
    };
    addMenuButton(tr("Style"), m_StyleMenu);
    addMenuButton(tr("Color"), m_ColorMenu);
    bar->addSeparator();
    bar->addAction(m_Centre);
    bar->addAction(m_Reset);
}

void StructureWindow::setColoring(Coloring coloring)
{
    m_Coloring = coloring;
    for (QAction *const action : m_Colorings->actions())
        action->setChecked(action->data().toInt() == int(coloring));
    showPalette();
}

void StructureWindow::refreshSoon()
{
    if (!m_Refresh.isActive())
        m_Refresh.start();
}

void StructureWindow::refresh()
{
    m_Cells.forget();
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

void StructureWindow::point(Pick pick)
{
    const auto place = m_Scene.placeOf(pick);
    m_Pointed->setText(place ? QString::fromStdString(place->structure->describe(place->place))
                             : QString());
    if (!place)
        return m_Cells.clear();
    const std::uint32_t residue = place->place.residue;
    m_Cells.show(place->structure->chain(place->structure->molecule().residues[residue].chain),
                 place->structure->childOf(residue));
}

std::vector<TAMBO::Compound *> StructureWindow::stretchTo(const StructureScene::Place &place) const
{
    const Molecule &molecule = place.structure->molecule();
    std::uint32_t from = place.place.residue;
    std::uint32_t to = from;
    if (m_StretchStructure == place.structure->object() &&
        m_StretchResidue < molecule.residues.size() &&
        molecule.residues[m_StretchResidue].chain == molecule.residues[from].chain) {
        from = std::min(m_StretchResidue, from);
        to = std::max(m_StretchResidue, to);
    }
    std::vector<TAMBO::Compound *> stretch;
    for (std::uint32_t i = from; i <= to; ++i)
        if (TAMBO::Compound *const residue = place.structure->residue(i))
            stretch.push_back(residue);
    return stretch;
}

void StructureWindow::click(Pick pick, Qt::KeyboardModifiers modifiers)
{
    const auto place = m_Scene.placeOf(pick);
    if (!place) {
        if (!(modifiers & (Qt::ControlModifier | Qt::ShiftModifier)))
            select({}, Selecting::Only);
        return;
    }
    if (modifiers & Qt::ShiftModifier) {
        select(stretchTo(*place), Selecting::Add);
        return;
    }
    m_StretchStructure = place->structure->object();
    m_StretchResidue = place->place.residue;
    if (TAMBO::Compound *const residue = place->structure->residue(place->place.residue))
        select({residue}, modifiers & Qt::ControlModifier ? Selecting::Toggle : Selecting::Only);
}

void StructureWindow::selectFramed(const std::vector<Pick> &picks, Qt::KeyboardModifiers modifiers)
{
    std::vector<TAMBO::Compound *> residues;
    for (const Pick pick : picks)
        if (const auto place = m_Scene.placeOf(pick))
            if (TAMBO::Compound *const residue = place->structure->residue(place->place.residue))
                residues.push_back(residue);
    std::sort(residues.begin(), residues.end());
    residues.erase(std::unique(residues.begin(), residues.end()), residues.end());
    select(residues, modifiers & Qt::ControlModifier ? Selecting::Add : Selecting::Only);
}

std::vector<std::vector<bool>> StructureWindow::selected() const
{
    std::vector<std::vector<bool>> all;
    bool hasAny = false;
    for (const auto &structure : m_Scene.structures()) {
        std::vector<bool> own(structure->molecule().residues.size());
        for (std::uint32_t i = 0; i < own.size(); ++i) {
            const TAMBO::Compound *const residue = structure->residue(i);
            own[i] = residue && residue->IsSelected();
            hasAny = hasAny || own[i];
        }
        all.push_back(std::move(own));
    }
    if (!hasAny)
        all.clear();
    return all;
}

void StructureWindow::setStyle(Style style)
{
    const std::vector<std::vector<bool>> chosen = selected();
    for (std::size_t i = 0; i < m_Scene.structures().size(); ++i)
        m_Scene.structures()[i]->setStyle(style, chosen.empty() ? std::vector<bool>() : chosen[i]);
    showScene();
}

void StructureWindow::setSideChains(bool shown)
{
    const std::vector<std::vector<bool>> chosen = selected();
    for (std::size_t s = 0; s < m_Scene.structures().size(); ++s) {
        ViewedStructure &structure = *m_Scene.structures()[s];
        std::vector<ResidueStyle> styles = structure.styles();
        for (std::size_t i = 0; i < styles.size(); ++i)
            if (chosen.empty() || chosen[s][i])
                styles[i].hasSideChain = shown;
        structure.setStyles(std::move(styles));
    }
    showScene();
}

void StructureWindow::hideSelection(bool others)
{
    const std::vector<std::vector<bool>> chosen = selected();
    if (chosen.empty())
        return;
    for (std::size_t s = 0; s < m_Scene.structures().size(); ++s) {
        ViewedStructure &structure = *m_Scene.structures()[s];
        std::vector<bool> hidden = structure.hidden();
        hidden.resize(structure.molecule().residues.size());
        for (std::size_t i = 0; i < hidden.size(); ++i)
            if (chosen[s][i] != others)
                hidden[i] = true;
        structure.setHidden(std::move(hidden));
    }
    m_List->refresh();
    showScene();
}

void StructureWindow::showAll()
{
    for (const auto &structure : m_Scene.structures()) {
        structure->setVisible(true);
        structure->setHidden({});
    }
    m_List->refresh();
    showScene();
}

std::optional<Bounds> StructureWindow::selectedBounds() const
{
    std::vector<Vec3> places;
    for (const auto &structure : m_Scene.structures())
        for (std::uint32_t i = 0; i < structure->molecule().residues.size(); ++i) {
            const TAMBO::Compound *const residue = structure->residue(i);
            if (residue && residue->IsSelected())
                places.push_back(structure->positionOf(i) - m_Scene.origin());
        }
    if (places.empty())
        return std::nullopt;
    Bounds bounds;
    for (const Vec3 place : places)
        bounds.centre = bounds.centre + place * (1 / float(places.size()));
    for (const Vec3 place : places)
        bounds.radius = std::max(bounds.radius, distance(place, bounds.centre));
    bounds.radius += kAround;
    return bounds;
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

QImage StructureWindow::pictureOf(const QSize &size, bool isTransparent)
{
    const std::shared_ptr<const PictureScene> scene = m_Scene.picture();
    PictureRequest request;
    request.parts = scene->parts;
    request.bounds = scene->bounds;
    request.camera = m_View->goal();
    request.look = m_View->look();
    request.look.isTransparent = isTransparent;
    request.size = size;
    request.perAxis = 2;
    Renderer renderer;
    return renderer.draw(request, m_Scene.palette(m_Coloring)) ? renderer.image() : QImage();
}

void StructureWindow::copyPicture()
{
    const QImage picture =
        pictureOf((QSizeF(m_View->size()) * m_View->devicePixelRatioF()).toSize(), false);
    QApplication::clipboard()->setImage(picture);
    statusBar()->showMessage(
        tr("Copied a picture of %1 x %2 pixels").arg(picture.width()).arg(picture.height()), 5000);
}

void StructureWindow::savePicture()
{
    const QString file =
        QFileDialog::getSaveFileName(this, tr("Save Picture"), "structures.png", tr("PNG (*.png)"));
    if (file.isEmpty())
        return;
    const QImage picture =
        pictureOf((QSizeF(m_View->size()) * m_View->devicePixelRatioF() * 2).toSize(), false);
    if (picture.isNull() || !picture.save(file)) {
        QMessageBox::warning(this, tr("Save Picture"), tr("%1: cannot be written").arg(file));
        return;
    }
    Logger::Write(tr("Wrote the picture %1").arg(file));
}

} // namespace structures

#include "moc_StructureWindow.cpp"
