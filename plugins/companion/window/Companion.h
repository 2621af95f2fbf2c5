// SPDX-License-Identifier: GPL-3.0-or-later
// All that this plug-in adds to one alignment window.
#pragma once

#include "Caption.h"
#include "CellCursor.h"
#include "ColorTools.h"
#include "ColumnDrag.h"
#include "ColumnRules.h"
#include "ColumnTools.h"
#include "CompareBar.h"
#include "DistanceAdvice.h"
#include "Editing.h"
#include "EditorColors.h"
#include "EmptyHint.h"
#include "FindBar.h"
#include "FocusStops.h"
#include "GapGuide.h"
#include "GoToBar.h"
#include "GridAccess.h"
#include "KeptDock.h"
#include "LegendBar.h"
#include "LegendFollower.h"
#include "NameColumn.h"
#include "NamePresses.h"
#include "Overview.h"
#include "PageDialog.h"
#include "PlaceLine.h"
#include "QuietCommands.h"
#include "RefitLine.h"
#include "RowTools.h"
#include "SelectBar.h"
#include "StructureMarks.h"
#include "Tracks.h"
#include "TreeDock.h"
#include "WrappedWindow.h"
#include "Zoom.h"

#include <QPointer>

#include <optional>

namespace companion {

class DuplicatesDialog;
class RedundancyDialog;

// Goes before the window does.
class Companion
{
public:
    explicit Companion(TAMBO::AlignmentWindow &window);
    ~Companion();
    Companion(const Companion &) = delete;
    Companion &operator=(const Companion &) = delete;

    [[nodiscard]] NameColumn &names() noexcept { return m_Names; }
    [[nodiscard]] Zoom &zoom() noexcept { return m_Zoom; }
    [[nodiscard]] GoToBar &goTo() noexcept { return *m_GoTo; }
    [[nodiscard]] FindBar &find() noexcept { return *m_Find; }
    [[nodiscard]] SelectBar &selecting() noexcept { return *m_Select; }
    [[nodiscard]] CompareBar &compare() noexcept { return *m_Compare; }
    [[nodiscard]] LegendFollower &legends() noexcept { return m_Legends; }
    [[nodiscard]] Overview &overview() noexcept { return *m_Overview; }
    [[nodiscard]] Tracks &tracks() noexcept { return *m_Tracks; }
    [[nodiscard]] StructureMarks &marks() noexcept { return m_Marks; }
    [[nodiscard]] TreeDock &tree() noexcept { return *m_Tree; }
    [[nodiscard]] GridAccess &access() noexcept { return m_Access; }
    [[nodiscard]] CellCursor &cursor() noexcept { return m_Cursor; }
    [[nodiscard]] Editing &editing() noexcept { return m_Editing; }
    [[nodiscard]] GapGuide &guide() noexcept { return m_Guide; }
    [[nodiscard]] RefitLine &refit() noexcept { return m_Refit; }
    [[nodiscard]] FocusStops &stops() noexcept { return m_Stops; }

    [[nodiscard]] RowTools &rows() noexcept { return m_Rows; }
    [[nodiscard]] ColumnTools &columns() noexcept { return m_Columns; }

    // In the line at the lower edge, and in the log.
    void tell(const QString &message);
    // Of the alignment that is shown, with a legend.
    void colorBy(ColumnRule rule);
    // Of the models that are shown, with a legend.
    void colorByModelScore();
    // Why that would color nothing; empty when it would.
    [[nodiscard]] QString lackOfModelScores() const;
    // Shows what the present colors mean, or no longer.
    void toggleLegend();
    [[nodiscard]] bool showsLegend() const { return m_Legend != nullptr && !m_Legend->isHidden(); }
    void showPairs();
    // Null when no alignment is shown, or the user has given up the search.
    RedundancyDialog *showRedundancy();
    DuplicatesDialog *showDuplicates();
    // The block, or the selected rows.
    void copyAsFasta();
    // In all windows. False when nothing was selected, or nothing can be deselected now.
    bool selectNothing();
    void selectAgain();
    // Of the alignment that is shown.
    void selectAll();
    void invertSelection();
    // The window is made when it is asked for the first time.
    WrappedWindow &showWrapped();
    // As the window's own command in the menu File.
    void save();
    // The workbench asks for file and format.
    void exportShown();
    // Null when no alignment is shown.
    PageDialog *askForPages(PageDialog::For what);

private:
    TAMBO::AlignmentWindow &m_Window;
    Caption m_Caption;
    NameColumn m_Names;
    NamePresses m_NamePresses;
    Zoom m_Zoom;
    EmptyHint m_Empty;
    PlaceLine m_Place;
    QuietCommands m_Quiet;
    StructureMarks m_Marks;
    GridAccess m_Access;
    CellCursor m_Cursor;
    Editing m_Editing;
    GapGuide m_Guide;
    RefitLine m_Refit;
    DistanceAdvice m_Advice;
    FocusStops m_Stops;
    ColumnDrag m_ColumnDrag;
    RowTools m_Rows;
    ColumnTools m_Columns;
    // Children of the window.
    QPointer<GoToBar> m_GoTo;
    QPointer<FindBar> m_Find;
    QPointer<SelectBar> m_Select;
    QPointer<CompareBar> m_Compare;
    QPointer<Overview> m_Overview;
    QPointer<LegendBar> m_Legend;
    LegendFollower m_Legends;
    QPointer<EditorColors> m_EditorColors;
    QPointer<ColorTools> m_ColorTools;
    QPointer<Tracks> m_Tracks;
    std::optional<KeptDock> m_KeptTracks;
    std::optional<KeptDock> m_KeptOverview;
    QPointer<WrappedWindow> m_Wrapped;
    QPointer<TreeDock> m_Tree;
};

} // namespace companion
