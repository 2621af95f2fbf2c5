// SPDX-License-Identifier: GPL-3.0-or-later
// The line in which one finds names and pieces of sequences in an alignment window.
#pragma once

#include "AlignmentViewObserver.h"
#include "FindRun.h"
#include "HitMarks.h"

#include <QPoint>
#include <QTimer>
#include <QToolBar>

#include <initializer_list>
#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
class QSpinBox;

namespace companion {

// Out of sight until it is asked for. The search begins anew with each key and with each change of
// the alignment, and goes on between events.
class FindBar : public QToolBar, public TAMBO::AlignmentViewObserver
{
    Q_OBJECT

public:
    // A child of the window's own widget, and gone with it.
    explicit FindBar(TAMBO::AlignmentWindow &window);
    ~FindBar() override;

    void ask();
    void next() { go(1); }
    void previous() { go(-1); }
    // Adds the residues of all hits, or the rows of all names, to the selection, in one step.
    void selectAll();

    [[nodiscard]] bool isSearching() const { return m_Run && !m_Run->isDone(); }

    void alignmentShown() override;
    void layoutRebuilt() override;
    void scrolled() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeWidgets();
    void layOut(std::initializer_list<QWidget *> asking, std::initializer_list<QWidget *> going);
    void fitLanguages();
    // As the user has changed what is looked for.
    void beginAsked();
    void begin();
    void goOn();
    // The first hit comes into sight as soon as it is known, unless another one is.
    void showFirst();
    [[nodiscard]] bool isAnyInSight() const;
    void bringIntoSight(const Hit &hit);
    void go(int step);
    void leave();
    void giveUp();
    void showState();
    [[nodiscard]] QString nothingText() const;
    void remember();
    // The one that comes first from the row on.
    [[nodiscard]] std::size_t firstFrom(unsigned long row) const;
    [[nodiscard]] std::size_t firstInSight() const;

    HitMarks m_Marks;
    std::optional<FindRun> m_Run;
    std::optional<std::size_t> m_Present;
    // The first hit is still to be brought into sight.
    bool m_IsFirstWanted = false;
    // From where on it is looked for: what the user saw last that this has not scrolled to, since
    // each letter more begins there anew.
    unsigned long m_FromRow = 0;
    std::optional<QPoint> m_ScrolledTo;
    QTimer m_Slices;
    QComboBox *m_Text = nullptr;
    QComboBox *m_Where = nullptr;
    QComboBox *m_Language = nullptr;
    QSpinBox *m_Mismatches = nullptr;
    QCheckBox *m_OnlySelected = nullptr;
    QLabel *m_State = nullptr;
    // Chosen before names were to be searched.
    bool m_IsPatternKept = false;
};

} // namespace companion
