// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowMenus.h"

#include "MeasureMenu.h"
#include "MeasureTool.h"
#include "PictureExport.h"
#include "Selecting.h"
#include "SelectionTool.h"
#include "StructureView.h"
#include "StyleCommands.h"

#include "HelpViewer.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include <limits>

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
                                bool isOn, const std::function<void(bool)> &change)
{
    QAction *const action = menu->addAction(text);
    action->setShortcut(keys);
    action->setCheckable(true);
    action->setChecked(isOn);
    connect(action, &QAction::toggled, this, change);
    return action;
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
}

void WindowMenus::addStyleMenu()
{
    m_StyleMenu = addMenu(tr("S&tyle"));
    m_StyleMenu->setToolTipsVisible(true);
    const auto add = [this](const QString &text, int key, Style style) {
        addAction(m_StyleMenu, text, QKeySequence(key), [this, style] {
            m_Parts.styles.setStyle(style);
        })->setToolTip(tr("Of what is selected; of everything when nothing is"));
    };
    add(tr("&Cartoon"), Qt::Key_1, Style::Cartoon);
    add(tr("&Trace"), Qt::Key_2, Style::Trace);
    add(tr("&Sticks"), Qt::Key_3, Style::Sticks);
    add(tr("&Balls and Sticks"), Qt::Key_4, Style::BallsAndSticks);
    add(tr("S&pheres"), Qt::Key_5, Style::Spheres);
    m_StyleMenu->addSeparator();
    addAction(m_StyleMenu, tr("Show Side C&hains"), Qt::Key_6,
              [this] { m_Parts.styles.setSideChains(true); });
    addAction(m_StyleMenu, tr("Hide Side Ch&ains"), Qt::Key_7,
              [this] { m_Parts.styles.setSideChains(false); });
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
    const auto toggle = [&](const QString &text, int key, bool isOn, const auto &change) {
        addToggle(menu, text, key, isOn, change);
    };
    const auto look = [&view](bool Look::*part) {
        return [&view, part](bool on) {
            Look changed = view.look();
            changed.*part = on;
            view.setLook(changed);
        };
    };
    const Look first;
    toggle(tr("&Perspective"), Qt::Key_P, false, [&view](bool on) {
        Camera camera = view.goal();
        camera.isPerspective = on;
        view.setCamera(camera);
    });
    toggle(tr("&Slab"), Qt::Key_S, false, [&view](bool on) {
        Camera camera = view.goal();
        camera.slabFront = on ? kSlab : std::numeric_limits<float>::infinity();
        camera.slabBack = camera.slabFront;
        view.setCamera(camera);
    });
    toggle(tr("&Depth Cue"), Qt::Key_D, first.hasDepthCue, look(&Look::hasDepthCue));
    toggle(tr("&Outlines"), Qt::Key_O, first.hasOutlines, look(&Look::hasOutlines));
    toggle(tr("Sh&adows"), Qt::Key_W, first.hasShadows, look(&Look::hasShadows));
    toggle(tr("Dark &Ground"), Qt::Key_G, false, [&view](bool on) {
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
