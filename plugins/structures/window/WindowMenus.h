// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Coloring.h"

#include <QKeySequence>
#include <QObject>

#include <functional>
#include <vector>

class QAction;
class QActionGroup;
class QMainWindow;
class QMenu;
class QToolBar;

namespace structures {

class MeasureTool;
class PictureExport;
class SelectionTool;
class StructureView;
class StructureScene;
class StyleCommands;

// The menus and the tool bar of a window.
class WindowMenus final : public QObject
{
    Q_OBJECT

public:
    // What the menus work on. All of it outlives them.
    struct Parts
    {
        const StructureScene &scene;
        StructureView &view;
        SelectionTool &selection;
        StyleCommands &styles;
        PictureExport &pictures;
        MeasureTool &measuring;
    };
    // Of the window's own.
    WindowMenus(QMainWindow &window, const Parts &parts);

    // Show what has been chosen elsewhere.
    void setColoring(Coloring coloring);
    void refreshToggles();

signals:
    void newViewWanted();
    void coloringChosen(structures::Coloring coloring);
    void centreWanted();

private:
    void addFileMenu();
    void addSelectMenu();
    void addShowMenu();
    void addModelsMenu(QMenu *menu);
    void addRowsMenu(QMenu *menu);
    void addStyleMenu();
    void addColorMenu();
    void addViewMenu();
    void addMeasureMenu();
    void addHelpMenu();
    void addToolBar();
    [[nodiscard]] QMenu *addMenu(const QString &text);
    QAction *addAction(QMenu *menu, const QString &text, const QKeySequence &keys,
                       const std::function<void()> &done);
    QAction *addToggle(QMenu *menu, const QString &text, const QKeySequence &keys,
                       const std::function<bool()> &isOn, const std::function<void(bool)> &change);

    struct Toggle
    {
        QAction *action;
        std::function<bool()> isOn;
    };

    QMainWindow &m_Window;
    Parts m_Parts;
    std::vector<Toggle> m_Toggles;
    QMenu *m_StyleMenu = nullptr;
    QMenu *m_ColorMenu = nullptr;
    QMenu *m_MeasureMenu = nullptr;
    QAction *m_Reset = nullptr;
    QAction *m_Centre = nullptr;
    QActionGroup *m_Colorings = nullptr;
};

} // namespace structures
