// SPDX-License-Identifier: GPL-3.0-or-later
#include "Companion.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "ColumnColoring.h"
#include "DuplicatesDialog.h"
#include "FastaCopy.h"
#include "Logger.h"
#include "PairsDialog.h"
#include "RedundancyDialog.h"
#include "ScoreColoring.h"
#include "Texts.h"
#include "WholeSelection.h"
#include "WorkbenchCommands.h"

#include <QMainWindow>
#include <QMenu>

#include <utility>

namespace companion {

namespace {

bool isAnyPositionedOf(const TAMBO::Alignment *alignment)
{
    for (unsigned long row = 0; alignment != nullptr && row < alignment->height(); ++row)
        if (alignment->hasPositions(row))
            return true;
    return false;
}

} // namespace

Companion::Companion(TAMBO::AlignmentWindow &window)
    : m_Window(window),
      m_Caption(window),
      m_Names(window),
      m_NamePresses(window),
      m_Zoom(window),
      m_Empty(window),
      m_Place(window),
      m_Quiet(window, [this](const QString &text) { m_Place.tell(text); }),
      m_Marks(window),
      m_Access(window),
      m_Cursor(window,
               {[this](const CellCursor::Place &cell) {
                    m_Place.setCursor(cell);
                    m_Access.setCursor(cell);
                },
                [this](const QString &text) { m_Place.tell(text); },
                [this] { return m_ColumnDrag.giveUp(); },
                [this] { return isAnySelectedOf(m_Window.alignment()) && selectNothing(); }}),
      m_Editing(window, m_Cursor,
                {[this](const QString &text) { m_Place.tell(text); },
                 [this](const QString &text) { tell(text); }}),
      m_Guide(window),
      m_Refit(window),
      m_Advice(window, [this](const QString &message) { tell(message); }),
      m_Stops(window),
      m_ColumnDrag(window),
      m_Rows(window, [this](const QString &message) { tell(message); }),
      m_Columns(window, [this](const QString &message) { tell(message); }),
      m_GoTo(new GoToBar(window)),
      m_Find(new FindBar(window)),
      m_Select(new SelectBar(window)),
      m_Compare(new CompareBar(
          window, [this](const QString &message) { tell(message); },
          [this] { return m_Cursor.block(); })),
      m_Overview(new Overview(window)),
      m_Legend(new LegendBar(*window.mainWindow())),
      m_Legends(window, *m_Legend),
      m_EditorColors(new EditorColors(
          *window.mainWindow(), {[this](const Legend &legend) { m_Legends.show(legend); },
                                 [this] { return isAnySelectedOf(m_Window.alignment()); },
                                 [this] { return isAnyPositionedOf(m_Window.alignment()); }})),
      m_ColorTools(
          new ColorTools(*window.mainWindow(), [this] { colorBy(ColumnRule::Conservation); })),
      m_Tracks(new Tracks(window)),
      m_Tree(new TreeDock(window))
{
    // Beside each other the tracks would not be below their cells.
    window.mainWindow()->splitDockWidget(m_Tracks, m_Overview, Qt::Vertical);
    m_Editing.drag().setNews({[this](const TAMBO::GapDrag &press, const TAMBO::CellBlock &rows) {
                                  m_Guide.holdRows(press, rows.rowBegin, rows.rowEnd);
                              },
                              [this](const CellCursor::Place &pointer) { m_Guide.aim(pointer); },
                              [this] { m_Guide.letGo(); }});
    m_KeptTracks.emplace(*window.mainWindow(), *m_Tracks);
    m_KeptOverview.emplace(*window.mainWindow(), *m_Overview);
}

Companion::~Companion()
{
    m_KeptOverview.reset();
    m_KeptTracks.reset();
    delete m_Tree;
    delete m_Wrapped;
    delete m_Tracks;
    delete m_ColorTools;
    delete m_EditorColors;
    delete m_Legend;
    delete m_Overview;
    delete m_Compare;
    delete m_Select;
    delete m_Find;
    delete m_GoTo;
}

void Companion::tell(const QString &message)
{
    m_Place.tell(message);
    Logger::Write(message);
}

void Companion::colorBy(ColumnRule rule)
{
    TAMBO::Alignment *const alignment = m_Window.alignment();
    if (alignment != nullptr && colorByColumn(*alignment, rule, m_Window.mainWindow()))
        m_Legends.show(legendOf(rule));
}

void Companion::colorByModelScore()
{
    if (m_Window.alignment() == nullptr)
        return tell(companion::tr("No alignment is shown."));
    const QPointer<TAMBO::AlignmentWindow> window(&m_Window);
    const ScoreColored colored = colorByScore(m_Window);
    // The window, and this with it, may have gone meanwhile.
    if (window == nullptr)
        return;
    if (colored.rows == 0)
        tell(lackOfScores());
    else if (colored.isDone)
        m_Legends.show(scoreLegend());
}

QString Companion::lackOfModelScores() const
{
    if (m_Window.alignment() == nullptr)
        return companion::tr("No alignment is shown.");
    return mayHaveScores(*m_Window.alignment()) ? QString() : lackOfScores();
}

void Companion::toggleLegend()
{
    if (m_Window.alignment() == nullptr)
        return tell(companion::tr("No alignment is shown."));
    if (!m_Legends.toggle())
        m_Place.tell(companion::tr("Nothing is colored: the alignment has no residues."));
}

void Companion::showPairs()
{
    if (m_Window.alignment() == nullptr)
        return;
    auto *const dialog = new PairsDialog(m_Window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

RedundancyDialog *Companion::showRedundancy()
{
    if (m_Window.alignment() == nullptr) {
        tell(companion::tr("No alignment is shown."));
        return nullptr;
    }
    auto *const dialog =
        new RedundancyDialog(m_Window, [this](const QString &message) { tell(message); });
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
    return dialog;
}

DuplicatesDialog *Companion::showDuplicates()
{
    if (m_Window.alignment() == nullptr) {
        tell(companion::tr("No alignment is shown."));
        return nullptr;
    }
    const QPointer<TAMBO::AlignmentWindow> window(&m_Window);
    std::optional<DuplicateRows> found = findDuplicates(m_Window);
    // The window, and this with it, may have gone meanwhile.
    if (window == nullptr)
        return nullptr;
    if (!found) {
        tell(companion::tr("Nothing is known of duplicates: the search was cancelled."));
        return nullptr;
    }
    if (found->names.empty() && found->sequences.empty()) {
        tell(companion::tr("No two rows have the same name, and no two the same sequence."));
        return nullptr;
    }
    auto *const dialog = new DuplicatesDialog(m_Window, std::move(*found),
                                              [this](const QString &message) { tell(message); });
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
    return dialog;
}

void Companion::copyAsFasta()
{
    const QPointer<TAMBO::AlignmentWindow> window(&m_Window);
    const QString told =
        companion::copyAsFasta(m_Window, m_Cursor.hasBlock() ? m_Cursor.block() : std::nullopt);
    // The window, and this with it, may have gone meanwhile.
    if (window != nullptr)
        tell(told);
}

bool Companion::selectNothing()
{
    const std::optional<TAMBO::SelectedCount> count = companion::selectNothing();
    if (count)
        m_Place.tell(deselectedText(*count));
    return count && !count->isNone();
}

void Companion::selectAgain()
{
    if (const std::optional<TAMBO::SelectedCount> count = companion::selectAgain())
        m_Place.tell(selectedAgainText(*count));
}

void Companion::selectAll()
{
    if (TAMBO::Alignment *const alignment = m_Window.alignment())
        selectEverything(*alignment);
}

void Companion::invertSelection()
{
    if (TAMBO::Alignment *const alignment = m_Window.alignment())
        companion::invertSelection(*alignment);
}

void Companion::save()
{
    TAMBO::Alignment *const alignment = m_Window.alignment();
    if (alignment == nullptr)
        return tell(companion::tr("Save: no alignment is shown. Get Alignment in the menu File "
                                  "chooses one."));
    // The window, and this with it, may be gone when it returns.
    TAMBO::WorkbenchCommands::saveAlignmentAs("companion", *alignment);
}

void Companion::exportShown()
{
    TAMBO::Alignment *const alignment = m_Window.alignment();
    if (alignment == nullptr)
        return tell(companion::tr("Export: no alignment is shown. Get Alignment in the menu File "
                                  "chooses one."));
    // The window, and this with it, may be gone when it returns.
    TAMBO::WorkbenchCommands::exportAlignment("companion", *alignment);
}

PageDialog *Companion::askForPages(PageDialog::For what)
{
    if (m_Window.alignment() == nullptr)
        return nullptr;
    PageTracks tracks;
    const TrackCanvas &canvas = m_Tracks->canvas();
    for (const Track track : kTracks)
        if (canvas.isOn(track))
            tracks.tracks.push_back(track);
    for (const LineTrack &line : canvas.lines())
        if (canvas.isOn(line))
            tracks.lines.push_back(line);
    auto *const dialog = new PageDialog(m_Window, tracks, !m_Tracks->isHidden(), what);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
    return dialog;
}

WrappedWindow &Companion::showWrapped()
{
    if (m_Wrapped == nullptr)
        m_Wrapped = new WrappedWindow(m_Window);
    m_Wrapped->ask();
    return *m_Wrapped;
}

} // namespace companion
