// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Coloring.h"
#include "PointedCells.h"
#include "StructureScene.h"
#include "StructureView.h"

#include "BaseWindow.h"

#include <QList>
#include <QTimer>

#include <optional>
#include <vector>

class QAction;
class QActionGroup;
class QLabel;
class QMenu;

namespace structures {

class StructureList;

// A window with one view of the structures that are loaded.
class StructureWindow final : public BaseWindow
{
    Q_OBJECT

public:
    static void open();
    // In the order of opening.
    [[nodiscard]] static const QList<StructureWindow *> &opened();

    ~StructureWindow() override;
    void Kill(BaseWindow *window) override;

    [[nodiscard]] StructureView &view() noexcept { return *m_View; }
    [[nodiscard]] StructureScene &scene() noexcept { return m_Scene; }
    void setColoring(Coloring coloring);

private:
    StructureWindow();
    void addMenus();
    void addFileMenu();
    void addSelectMenu();
    void addShowMenu();
    void addStyleMenu();
    void addColorMenu();
    void addViewMenu();
    void addToolBar();
    QAction *addAction(QMenu *menu, const QString &text, const QKeySequence &keys,
                       const std::function<void()> &done);

    // Looks at the workbench again, from the event loop.
    void refreshSoon();
    void refresh();
    void showScene();
    void showPalette();

    void point(Pick pick);
    void click(Pick pick, Qt::KeyboardModifiers modifiers);
    void selectFramed(const std::vector<Pick> &picks, Qt::KeyboardModifiers modifiers);
    // Everything of a chain between the residue that was clicked last and this one.
    [[nodiscard]] std::vector<TAMBO::Compound *>
    stretchTo(const StructureScene::Place &place) const;

    // Of what is selected; of everything when nothing is.
    void setStyle(Style style);
    void setSideChains(bool shown);
    void hideSelection(bool others);
    void showAll();
    [[nodiscard]] std::vector<std::vector<bool>> selected() const;

    void centre(std::optional<Bounds> bounds);
    [[nodiscard]] std::optional<Bounds> selectedBounds() const;
    void savePicture();
    void copyPicture();
    [[nodiscard]] QImage pictureOf(const QSize &size, bool isTransparent);

    StructureScene m_Scene;
    StructureView *m_View = nullptr;
    StructureList *m_List = nullptr;
    QLabel *m_Pointed = nullptr;
    PointedCells m_Cells;
    Coloring m_Coloring = Coloring::Workbench;
    QTimer m_Refresh;
    bool m_HasCamera = false;
    // Where a stretch begins: a structure and the number of a residue of it.
    TAMBO::Compound *m_StretchStructure = nullptr;
    std::uint32_t m_StretchResidue = kNone;

    QMenu *m_StyleMenu = nullptr;
    QMenu *m_ColorMenu = nullptr;
    QAction *m_Reset = nullptr;
    QAction *m_Centre = nullptr;
    QActionGroup *m_Colorings = nullptr;
};

} // namespace structures
