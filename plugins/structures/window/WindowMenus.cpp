// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowMenus.h"

#include "MeasureMenu.h"
#include "MeasureTool.h"
#include "PictureExport.h"
#include "Selecting.h"
#include "SelectionTool.h"
#include "StructureScene.h"
#include "StructureView.h"
#include "StyleCommands.h"

#include "Alignment.h"
#include "HelpViewer.h"
#include "ObjectNames.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace structures {

namespace {

constexpr const char *kHelp = "structures.html";
// Half of the slab of what is in front of and behind the middle, in Angstrom.
constexpr float kSlab = 8;

} // namespace

WindowMenus::WindowMenus(QMainWindow &window, const Parts &parts)
    : QObject(&window), m_Window(window), m_Parts(parts)
{
    addFileMenu();
    addSelectMenu();
    addShowMenu();
    addStyleMenu();
    addColorMenu();
    addViewMenu();
    addMeasureMenu();
    addHelpMenu();
    addToolBar();
}

QMenu *WindowMenus::addMenu(const QString &text)
{
    return m_Window.menuBar()->addMenu(text);
}

QAction *WindowMenus::addAction(QMenu *menu, const QString &text, const QKeySequence &keys,
                                const std::function<void()> &done)
{
    QAction *const action = menu->addAction(text, this, done);
    action->setShortcut(keys);
    return action;
}

QAction *WindowMenus::addToggle(QMenu *menu, const QString &text, const QKeySequence &keys,
                                const std::function<bool()> &isOn,
                                const std::function<void(bool)> &change)
{
    QAction *const action = menu->addAction(text);
    action->setShortcut(keys);
    action->setCheckable(true);
    action->setChecked(isOn());
    connect(action, &QAction::triggered, this, change);
    m_Toggles.push_back({action, isOn});
    return action;
}

void WindowMenus::refreshToggles()
{
    for (const Toggle &toggle : m_Toggles)
        toggle.action->setChecked(toggle.isOn());
}

void WindowMenus::addFileMenu()
{
    QMenu *const menu = addMenu(tr("&File"));
    addAction(menu, tr("&New View"), QKeySequence::New, [this] { emit newViewWanted(); });
    menu->addSeparator();
    addAction(menu, tr("&Save Picture..."), QKeySequence::Save,
              [this] { m_Parts.pictures.save(); });
    addAction(menu, tr("&Copy Picture"), QKeySequence::Copy, [this] { m_Parts.pictures.copy(); });
    menu->addSeparator();
    addAction(menu, tr("&Close"), QKeySequence::Close, [this] { m_Window.close(); });
}

void WindowMenus::addSelectMenu()
{
    QMenu *const menu = addMenu(tr("&Select"));
    addAction(menu, tr("&All"), QKeySequence::SelectAll, [this] { m_Parts.selection.selectAll(); });
    QAction *const nothing =
        addAction(menu, tr("&Nothing"), Qt::Key_Escape, [] { select({}, Selecting::Only); });
    connect(&m_Parts.measuring, &MeasureTool::runs, nothing, [nothing](bool on) {
        // The key ends measuring.
        nothing->setShortcut(on ? QKeySequence() : QKeySequence(Qt::Key_Escape));
    });
}

void WindowMenus::addShowMenu()
{
    QMenu *const menu = addMenu(tr("S&how"));
    addAction(menu, tr("&Hide Selection"), Qt::Key_H, [this] { m_Parts.styles.hideSelection(); });
    addAction(menu, tr("Hide &Others"), Qt::SHIFT | Qt::Key_H,
              [this] { m_Parts.styles.hideOthers(); });
    addAction(menu, tr("Show &All"), Qt::Key_A, [this] { m_Parts.styles.showAll(); });
    menu->addSeparator();
    addToggle(
        menu, tr("&Waters"), Qt::Key_8, [this] { return m_Parts.scene.areWatersShown(); },
        [this](bool on) { m_Parts.styles.setWatersShown(on); });
    addModelsMenu(menu);
    addRowsMenu(menu);
}

void WindowMenus::addModelsMenu(QMenu *menu)
{
    QMenu *const models = menu->addMenu(tr("&Models"));
    StyleCommands &styles = m_Parts.styles;
    QAction *const first = addAction(models, tr("&First"), Qt::Key_0, [&styles] {
        styles.setModels({false, 0});
    });
    QAction *const all =
        addAction(models, tr("&All in One Picture"), Qt::SHIFT | Qt::Key_M, [&styles] {
            styles.setModels({true, 0});
        });
    models->addSeparator();
    addAction(models, tr("&Next"), Qt::Key_BracketRight, [&styles] { styles.stepModel(true); });
    addAction(models, tr("&Previous"), Qt::Key_BracketLeft, [&styles] { styles.stepModel(false); });
    first->setCheckable(true);
    all->setCheckable(true);
    const auto show = [this, first, all] {
        const ModelChoice now = m_Parts.scene.models();
        first->setChecked(now == ModelChoice());
        all->setChecked(now.all);
    };
    show();
    connect(models, &QMenu::aboutToShow, this, show);
    connect(menu, &QMenu::aboutToShow, this,
            [this, models] { models->setEnabled(m_Parts.scene.modelCount() > 1); });
}

void WindowMenus::addRowsMenu(QMenu *menu)
{
    QMenu *const rows = menu->addMenu(tr("Only &Rows of"));
    rows->setObjectName("OnlyRows");
    connect(rows, &QMenu::aboutToShow, this, [this, rows] {
        rows->clear();
        const TAMBO::Alignment *const now = m_Parts.scene.rows().alignment();
        const auto add = [&](const QString &text, TAMBO::Alignment *alignment) {
            QAction *const action = rows->addAction(
                text, this, [this, alignment] { m_Parts.styles.showRowsOf(alignment); });
            action->setCheckable(true);
            action->setChecked(alignment == now);
        };
        add(tr("&Everything"), nullptr);
        rows->addSeparator();
        const std::vector<TAMBO::Alignment *> choices = RowFilter::choices();
        const std::vector<std::string> names =
            TAMBO::ObjectNames::toldApart({choices.begin(), choices.end()});
        for (std::size_t i = 0; i < choices.size(); ++i)
            add(QString::fromStdString(names[i]).replace('&', "&&"), choices[i]);
    });
}

void WindowMenus::addStyleMenu()
{
    m_StyleMenu = addMenu(tr("S&tyle"));
    m_StyleMenu->setToolTipsVisible(true);
    const auto add = [this](const QString &text, int key, Style style) {
        addAction(m_StyleMenu, text, QKeySequence(key), [this, style] {
            m_Parts.styles.setStyle(style, m_Parts.styles.selected());
        })->setToolTip(tr("Of what is selected; of everything when nothing is"));
    };
    add(tr("&Cartoon"), Qt::Key_1, Style::Cartoon);
    add(tr("&Trace"), Qt::Key_2, Style::Trace);
    add(tr("&Sticks"), Qt::Key_3, Style::Sticks);
    add(tr("&Balls and Sticks"), Qt::Key_4, Style::BallsAndSticks);
    add(tr("S&pheres"), Qt::Key_5, Style::Spheres);
    m_StyleMenu->addSeparator();
    addAction(m_StyleMenu, tr("Show Side C&hains"), Qt::Key_6,
              [this] { m_Parts.styles.setSideChains(true, m_Parts.styles.selected()); });
    addAction(m_StyleMenu, tr("Hide Side Ch&ains"), Qt::Key_7,
              [this] { m_Parts.styles.setSideChains(false, m_Parts.styles.selected()); });
}

void WindowMenus::addColorMenu()
{
    m_ColorMenu = addMenu(tr("&Color"));
    m_Colorings = new QActionGroup(this);
    const auto add = [this](const QString &text, Coloring coloring) {
        QAction *const action = m_ColorMenu->addAction(text);
        action->setCheckable(true);
        action->setData(int(coloring));
        m_Colorings->addAction(action);
        connect(action, &QAction::triggered, this,
                [this, coloring] { emit coloringChosen(coloring); });
    };
    add(tr("As in the &Alignment"), Coloring::Workbench);
    add(tr("By &Chain"), Coloring::Chain);
    add(tr("By &Secondary Structure"), Coloring::SecondaryStructure);
    add(tr("By &B Factor"), Coloring::BFactor);
}

void WindowMenus::setColoring(Coloring coloring)
{
    for (QAction *const action : m_Colorings->actions())
        action->setChecked(action->data().toInt() == int(coloring));
}

void WindowMenus::addViewMenu()
{
    StructureView &view = m_Parts.view;
    QMenu *const menu = addMenu(tr("&View"));
    m_Reset = addAction(menu, tr("&Reset"), Qt::Key_R, [&view] {
        Camera camera = view.wholeCamera();
        camera.rotation = {};
        view.moveCamera(camera);
    });
    addAction(menu, tr("Show &Everything"), Qt::Key_F,
              [&view] { view.moveCamera(view.wholeCamera()); });
    m_Centre =
        addAction(menu, tr("&Centre on Selection"), Qt::Key_C, [this] { emit centreWanted(); });
    menu->addSeparator();
    addToggle(
        menu, tr("&Perspective"), Qt::Key_P, [&view] { return view.goal().isPerspective; },
        [&view](bool on) {
            Camera camera = view.goal();
            camera.isPerspective = on;
            view.setCamera(camera);
        });
    addToggle(
        menu, tr("&Slab"), Qt::Key_S, [&view] { return std::isfinite(view.goal().slabFront); },
        [&view](bool on) {
            Camera camera = view.goal();
            camera.slabFront = on ? kSlab : std::numeric_limits<float>::infinity();
            camera.slabBack = camera.slabFront;
            view.setCamera(camera);
        });
    const auto addLook = [this, menu, &view](const QString &text, int key, bool Look::*part) {
        addToggle(
            menu, text, key, [&view, part] { return view.look().*part; },
            [&view, part](bool on) {
                Look changed = view.look();
                changed.*part = on;
                view.setLook(changed);
            });
    };
    addLook(tr("&Depth Cue"), Qt::Key_D, &Look::hasDepthCue);
    addLook(tr("&Outlines"), Qt::Key_O, &Look::hasOutlines);
    addLook(tr("Sh&adows"), Qt::Key_W, &Look::hasShadows);
    addToggle(
        menu, tr("Dark &Ground"), Qt::Key_G,
        [&view] { return view.look().background != kWhiteGround; },
        [&view](bool on) {
            Look changed = view.look();
            changed.background = on ? kDarkGround : kWhiteGround;
            view.setLook(changed);
        });
}

void WindowMenus::addMeasureMenu()
{
    m_MeasureMenu = addMenu(tr("&Measure"));
    new MeasureMenu(*m_MeasureMenu, m_Parts.measuring);
}

void WindowMenus::addHelpMenu()
{
    QMenu *const menu = addMenu(tr("&Help"));
    addAction(menu, tr("Structure View"), QKeySequence::HelpContents,
              [] { HelpViewer::Show(kHelp); });
}

void WindowMenus::addToolBar()
{
    QToolBar *const bar = m_Window.addToolBar(tr("Structure View"));
    bar->setObjectName("StructureTools");
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    const auto addMenuButton = [bar](const QString &text, QMenu *menu) {
        auto *const button = new QToolButton(bar);
        button->setText(text);
        button->setMenu(menu);
        button->setPopupMode(QToolButton::InstantPopup);
        bar->addWidget(button);
    };
    addMenuButton(tr("Style"), m_StyleMenu);
    addMenuButton(tr("Color"), m_ColorMenu);
    addMenuButton(tr("Measure"), m_MeasureMenu);
    bar->addSeparator();
    bar->addAction(m_Centre);
    bar->addAction(m_Reset);
}

} // namespace structures

#include "moc_WindowMenus.cpp"
