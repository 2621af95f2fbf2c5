// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Coloring.h"
#include "MeasureTool.h"
#include "PictureExport.h"
#include "SelectionTool.h"
#include "StructureScene.h"
#include "StructureView.h"
#include "StyleCommands.h"
#include "ViewState.h"

#include "BaseWindow.h"

#include <QList>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <optional>

class QLabel;

namespace structures {

class PartMenu;
class StructureList;
class WindowMenus;

// A window with one view of the structures that are loaded.
class StructureWindow final : public BaseWindow
{
    Q_OBJECT

public:
    static StructureWindow &open();
    // In the order of opening.
    [[nodiscard]] static const QList<StructureWindow *> &opened();

    ~StructureWindow() override;
    void Kill(BaseWindow *window) override;

    [[nodiscard]] StructureView &view() noexcept { return *m_View; }
    [[nodiscard]] StructureScene &scene() noexcept { return m_Scene; }
    [[nodiscard]] MeasureTool &measuring() noexcept { return m_Measuring; }
    void setColoring(Coloring coloring);
    [[nodiscard]] Coloring coloring() const noexcept { return m_Coloring; }

    // Called whenever a window shows something else than before, or another way, and when one has
    // been opened or closed.
    static void setListener(std::function<void()> changed);
    [[nodiscard]] ViewState state() const;
    // Within SessionPart::restore().
    void restore(const ViewState &state);

protected:
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    StructureWindow();

    // Looks at the workbench again, from the event loop.
    void refreshSoon();
    void refresh();
    void showScene();
    void showPalette();
    void nameState();
    void showPartMenu(const structures::ListedPart &part, const QPoint &position);
    // Everything when there are no bounds.
    void centre(std::optional<Bounds> bounds);

    StructureScene m_Scene;
    StructureView *m_View;
    QLabel *m_Pointed;
    QLabel *m_Prompt;
    QLabel *m_State;
    SelectionTool m_Selection;
    MeasureTool m_Measuring;
    StyleCommands m_Styles;
    PictureExport m_Pictures;
    StructureList *m_List = nullptr;
    WindowMenus *m_Menus = nullptr;
    QPointer<PartMenu> m_PartMenu;
    Coloring m_Coloring = Coloring::Workbench;
    QTimer m_Refresh;
    bool m_HasCamera = false;
    // Of the state that was restored.
    QJsonObject m_Others;
};

} // namespace structures
