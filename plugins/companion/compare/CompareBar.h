// SPDX-License-Identifier: GPL-3.0-or-later
// The line in which one reads how the alignment of a window agrees with another one, goes from one
// difference to the next, and takes the other's over.
#pragma once

#include "AlignmentViewObserver.h"
#include "AlignmentWindow.h"
#include "AlignmentWindowObserver.h"
#include "CompareDialog.h"
#include "CompareJob.h"
#include "CompareMarks.h"
#include "Subscriber.h"

#include <QTimer>
#include <QToolBar>

#include <functional>
#include <map>
#include <memory>
#include <optional>

class QLabel;
class QToolButton;

namespace companion {

// As the caller of the workbench's commands.
inline constexpr char kCompareCaller[] = "companion";

// "12–30", or "12".
[[nodiscard]] QString stretchText(const Stretch &stretch);

// Out of sight until something is compared. Scores and marks follow the edits of both.
class CompareBar : public QToolBar,
                   public TAMBO::AlignmentViewObserver,
                   public TAMBO::AlignmentWindowObserver,
                   public Subscriber
{
    Q_OBJECT

public:
    // A child of the window's own widget, and gone with it. tell: for the line at its lower edge.
    // block: what the user means by a block of cells.
    CompareBar(TAMBO::AlignmentWindow &window, std::function<void(const QString &)> tell,
               std::function<std::optional<TAMBO::CellBlock>()> block);
    ~CompareBar() override;

    // With the dialog; null when no alignment is shown.
    CompareDialog *ask();
    void compareWith(const CompareChoice &choice);
    void compareWith(TAMBO::Alignment &other);
    // As the shown alignment was before the latest steps that have changed its cells.
    void compareWithFormer(std::size_t steps);
    // What the workbench's aligner makes of a copy, which comes into the workbench.
    void compareWithAligner();
    // The user chooses a file; the first alignment of it that has two of the rows is compared.
    void compareWithFile();
    void end();

    void next() { go(1); }
    void previous() { go(-1); }
    // Of the stretch at which the user is: the one gone to, or that of the block.
    void takeOver();
    void takeOverInBlock();
    void takeOverAll();
    // The other one in a window; a former state comes into the workbench for that.
    void showOther();

    [[nodiscard]] bool isComparing() const { return m_Job != nullptr || m_Restart.isActive(); }
    // Null when there is nothing to tell yet.
    [[nodiscard]] const Compared *compared() const { return m_Compared.get(); }
    [[nodiscard]] std::optional<std::size_t> present() const { return m_Present; }

    void alignmentShown() override;
    void layoutRebuilt() override;
    void windowOpened(TAMBO::AlignmentWindow &window) override;
    void windowGoing(TAMBO::AlignmentWindow &window) override;
    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeWidgets();
    void begin(const QString &title);
    void forget();
    // As end(), and the keyboard stays where it is.
    void stop();
    [[nodiscard]] bool isActive() const { return m_Other != nullptr || m_Former != nullptr; }
    [[nodiscard]] bool isFresh() const;
    void followEdits();
    void start();
    void take(const std::shared_ptr<const Compared> &compared);
    void markOthers();
    void go(int step);
    void goTo(std::size_t stretch);
    [[nodiscard]] std::optional<std::size_t> stretchAtHand() const;
    // False, and the reason is told, when there is nothing to take over.
    [[nodiscard]] bool canTakeOver();
    // Of the rows for which it says true; empty for all.
    void takeOver(std::vector<Stretch> stretches, std::vector<bool> rows, const QString &name);
    // What comes from now on is not compared by itself.
    void expectNoFile();
    void beginLooks();
    void lookForFile();
    void showState();
    [[nodiscard]] QString scores() const;
    [[nodiscard]] QString leftOut() const;
    [[nodiscard]] TAMBO::Alignment *shown() const
    {
        return AlignmentViewObserver::window()->alignment();
    }

    std::function<void(const QString &)> m_Tell;
    std::function<std::optional<TAMBO::CellBlock>()> m_Block;
    // What is compared with: one of both.
    TAMBO::Alignment *m_Other = nullptr;
    std::shared_ptr<const TAMBO::FormerLayout> m_Former;
    QString m_Title;
    QString m_Trouble;
    std::unique_ptr<CompareJob> m_Job;
    std::shared_ptr<const Compared> m_Compared;
    std::optional<std::size_t> m_Present;
    // Where the one gone to last began.
    std::optional<unsigned long> m_From;
    QTimer m_Restart;
    CompareMarks m_Marks;
    std::map<TAMBO::AlignmentWindow *, std::unique_ptr<CompareMarks>> m_OtherMarks;
    // Those that were there when the user was asked for a file.
    std::optional<std::vector<TAMBO::Alignment *>> m_BeforeFile;
    // Whether anything has come since.
    bool m_HasArrived = false;
    QTimer m_FileLooks;
    std::optional<Candidates> m_FileCandidates;
    QLabel *m_What = nullptr;
    QLabel *m_State = nullptr;
    // Below it, where there is something to say.
    QLabel *m_Only = nullptr;
    std::vector<QToolButton *> m_Needs;
};

} // namespace companion
