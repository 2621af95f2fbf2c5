// SPDX-License-Identifier: GPL-3.0-or-later
#include "QuietCommands.h"

#include "Alignment.h"
#include "AlignmentDetails.h"
#include "AlignmentWindow.h"
#include "Logger.h"
#include "Space.h"
#include "StatusLine.h"
#include "Texts.h"
#include "Toolbar.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace companion {

using TAMBO::Alignment;

namespace {

// Asked before any other filter, so that it knows of events that others take.
constexpr int kFirst = -1000;

// Why a command will do nothing, or not what its user may expect.
struct Reason
{
    QString text;
    QString hint = {};
};

using Lack = std::optional<Reason> (*)(const Alignment &alignment, const QMainWindow &window);

std::optional<Reason> nothing(const Alignment &, const QMainWindow &)
{
    return std::nullopt;
}

unsigned long columnsOfRange(const Alignment &alignment)
{
    const auto [begin, given] = alignment.range();
    const unsigned long end = std::min(given, alignment.width());
    return end - std::min(begin, end);
}

QString howToMarkARange()
{
    return tr("A click on a mark above the columns begins the range, Shift + click extends it.");
}

std::optional<Reason> range(const Alignment &alignment, const QMainWindow &)
{
    if (columnsOfRange(alignment) > 0)
        return std::nullopt;
    return Reason{tr("the range has no columns"), howToMarkARange()};
}

std::optional<Reason> partialRange(const Alignment &alignment, const QMainWindow &window)
{
    if (columnsOfRange(alignment) < alignment.width())
        return range(alignment, window);
    return Reason{tr("the range has all columns; no alignment is shown now, nothing was removed")};
}

std::optional<Reason> rows(const Alignment &alignment, const QMainWindow &)
{
    if (alignment.height() > 1)
        return std::nullopt;
    return Reason{tr("the alignment has fewer than two rows")};
}

std::optional<Reason> rowsAndRange(const Alignment &alignment, const QMainWindow &window)
{
    if (alignment.height() < 2)
        return rows(alignment, window);
    switch (columnsOfRange(alignment)) {
    case 0:
        return range(alignment, window);
    case 1:
        return Reason{tr("the range has one column, and two are needed"), howToMarkARange()};
    default:
        return std::nullopt;
    }
}

std::optional<Reason> freeResidues(const Alignment &alignment, const QMainWindow &window)
{
    constexpr int kFewest = 3;
    if (columnsOfRange(alignment) == 0)
        return range(alignment, window);
    const unsigned long begin = alignment.range().first;
    const unsigned long end = begin + columnsOfRange(alignment);
    int residues = 0;
    for (unsigned long col = begin; col < end; ++col)
        residues += alignment.letterAt(0, col) == '\0' ? 0 : 1;
    if (residues < kFewest)
        return Reason{tr("row 1 has fewer than three residues in the range")};
    const std::string types = TAMBO::AlignmentDetails::elements(alignment, 0, begin, end);
    if (std::ranges::any_of(types, [](char type) { return type != '\0'; }))
        return Reason{tr("row 1 has secondary structure in the range already")};
    return std::nullopt;
}

std::optional<Reason> selection(const Alignment &alignment, const QMainWindow &)
{
    for (unsigned long row = 0; row < alignment.height(); ++row)
        if (TAMBO::AlignmentDetails::hasSelected(alignment, row))
            return std::nullopt;
    return Reason{tr("no residue is selected")};
}

std::optional<Reason> positions(const Alignment &alignment, const QMainWindow &)
{
    int found = 0;
    for (unsigned long row = 0; row < alignment.height() && found < 2; ++row)
        found += alignment.hasPositions(row) ? 1 : 0;
    if (found > 1)
        return std::nullopt;
    return Reason{found == 0 ? tr("no row has a structure, and two are needed")
                             : tr("one row has a structure, and two are needed"),
                  tr("Open the structures that the rows are chains of.")};
}

QString nameOf(const Alignment &alignment, unsigned long row)
{
    return QString::fromStdString(alignment.GetSeqName(row));
}

std::optional<Reason> modelledRow(const Alignment &alignment, const QMainWindow &window)
{
    if (alignment.height() < 2)
        return rows(alignment, window);
    // Those of docks are no models.
    const QList<QProcess *> jobs =
        window.findChildren<QProcess *>(QString(), Qt::FindDirectChildrenOnly);
    if (std::ranges::any_of(
            jobs, [](const QProcess *job) { return job->state() != QProcess::NotRunning; }))
        return Reason{tr("a run of this window has not ended, and no other was begun")};
    const auto isMarked = [&alignment](unsigned long row) {
        return TAMBO::AlignmentDetails::hasSelected(alignment, row) && alignment.isRowSelected(row);
    };
    if (isMarked(1))
        return std::nullopt;
    for (unsigned long row = 2; row < alignment.height(); ++row)
        if (isMarked(row))
            return Reason{tr("builds row 2, %1, not row %2, which is marked")
                              .arg(nameOf(alignment, 1), QString::number(row + 1)),
                          tr("It takes row 1, %1, as the template; move %2 to row 2 to have it "
                             "built.")
                              .arg(nameOf(alignment, 0), nameOf(alignment, row))};
    return std::nullopt;
}

struct QuietCommand
{
    const char *menu;
    const char *text;
    // Of the tool bar; -1 when it has none.
    int button;
    bool needsAlignment;
    Lack lack;
};

// The button that realigns has no entry in a menu.
constexpr const char *kNoMenu = "";

constexpr std::array kQuietCommands = {
    QuietCommand{"File", "Make from Seqs", 2, false, nothing},
    QuietCommand{"File", "Add Seqs", -1, true, nothing},
    QuietCommand{"File", "Combine", -1, true, nothing},
    QuietCommand{"File", "Get Alignment", 3, false, nothing},
    QuietCommand{"File", "Duplicate", -1, true, nothing},
    QuietCommand{"File", "Delete", 4, false, nothing},
    QuietCommand{"File", "Save", -1, true, nothing},
    QuietCommand{"File", "Print Fat", -1, true, nothing},
    QuietCommand{"File", "Print Slim", -1, true, nothing},
    QuietCommand{"File", "Print BW", -1, true, nothing},
    QuietCommand{"Model", "Kestram", -1, true, modelledRow},
    QuietCommand{"Range", "Full", -1, true, nothing},
    QuietCommand{"Range", "Select", -1, true, range},
    QuietCommand{"Range", "Remove", -1, true, partialRange},
    QuietCommand{"Range", "Renumber", -1, true, range},
    QuietCommand{"Range", "Add SSE", -1, true, freeResidues},
    QuietCommand{"Select", "ConservedN", -1, true, rows},
    QuietCommand{"Select", "SubSequence", -1, true, nothing},
    QuietCommand{"Color", "Selected", 6, true, selection},
    QuietCommand{"Color", "Conserved", 8, true, rows},
    QuietCommand{"Color", "ConservedN", -1, true, rows},
    QuietCommand{"Color", "By Property", 7, true, nothing},
    QuietCommand{"Color", "By Distance", -1, true, positions},
    QuietCommand{kNoMenu, "Realign", 11, true, rowsAndRange},
};

QString plain(QString text)
{
    return text.remove(u'&');
}

// "Tools1.11", as the bars of the kit name their buttons.
std::optional<int> numberOf(const QAction &button)
{
    const QString name = button.objectName();
    bool isNumber = false;
    const int number = name.mid(name.lastIndexOf(u'.') + 1).toInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace

QuietCommands::QuietCommands(TAMBO::AlignmentWindow &window,
                             std::function<void(const QString &)> show)
    : AlignmentViewObserver(window),
      CellEventFilter(window, TAMBO::WindowArea::Cells, kFirst),
      m_Show(std::move(show))
{
    followMenus();
    followToolBars();
}

QuietCommands::~QuietCommands() = default;

// A menu, and a bar, hear of it before the command does what it does.
void QuietCommands::followMenus()
{
    for (const QAction *const title :
         AlignmentViewObserver::window()->mainWindow()->menuBar()->actions()) {
        const QMenu *const menu = title->menu();
        if (menu == nullptr)
            continue;
        QObject::connect(menu, &QMenu::triggered, &m_Context,
                         [this, menu = plain(title->text())](const QAction *action) {
                             begins(menu, plain(action->text()));
                         });
    }
}

void QuietCommands::followToolBars()
{
    for (const QToolBar *const bar :
         AlignmentViewObserver::window()->mainWindow()->findChildren<Toolbar *>()) {
        QObject::connect(bar, &QToolBar::actionTriggered, &m_Context, [this](QAction *action) {
            const std::optional<int> number = numberOf(*action);
            const auto *const found =
                number ? std::ranges::find(kQuietCommands, *number, &QuietCommand::button)
                       : kQuietCommands.end();
            if (found != kQuietCommands.end())
                begins(QString::fromLatin1(found->menu), QString::fromLatin1(found->text));
        });
    }
}

void QuietCommands::begins(const QString &menu, const QString &command)
{
    const auto *const found = std::ranges::find_if(kQuietCommands, [&](const QuietCommand &each) {
        return menu == QLatin1StringView(each.menu) && command == QLatin1StringView(each.text);
    });
    if (found == kQuietCommands.end())
        return;
    const TAMBO::AlignmentWindow &window = *AlignmentViewObserver::window();
    const Alignment *const alignment = window.alignment();
    TAMBO::Space &space = *TAMBO::Space::instance();
    if (alignment == nullptr && found->needsAlignment)
        return tell(tr("%1: no alignment is shown").arg(command),
                    tr("Get Alignment in the menu File chooses one."));
    if (!found->needsAlignment && space.begin() == space.end())
        return tell(tr("%1: nothing is open in the workbench").arg(command),
                    tr("Open in its menu File opens files."));
    if (!found->needsAlignment)
        return;
    if (const std::optional<Reason> reason = found->lack(*alignment, *window.mainWindow()))
        tell(QStringLiteral("%1: %2").arg(command, reason->text), reason->hint);
}

void QuietCommands::gapDragEnded(const TAMBO::GapDrag &drag)
{
    if (!drag.column && m_LastEvent == QEvent::MouseButtonRelease)
        tell(tr("Drag: let go outside of row %1, nothing was moved").arg(drag.from.row + 1),
             tr("A gap moves within its row."));
}

bool QuietCommands::handle(TAMBO::AlignmentWindow &, TAMBO::WindowArea, QEvent &event)
{
    m_LastEvent = event.type();
    return false;
}

void QuietCommands::tell(const QString &what, const QString &hint)
{
    m_Show(hint.isEmpty() ? what + u'.' : QStringLiteral("%1. %2").arg(what, hint));
    const QString named =
        tr("%1 (%2)").arg(what, AlignmentViewObserver::window()->mainWindow()->windowTitle());
    Logger::Write(named);
    StatusLine::Say(named);
}

} // namespace companion
