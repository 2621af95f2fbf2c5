// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog in which one chooses what an alignment is compared with.
#pragma once

#include "Candidates.h"
#include "RowLayouts.h"
#include "Subscriber.h"

#include <QDialog>
#include <QTimer>

#include <functional>
#include <optional>

class QDialogButtonBox;
class QLabel;
class QListWidget;

namespace companion {

struct CompareChoice
{
    enum class Kind {
        Alignment,
        // As it was before some steps of undo.
        Former,
        // What the aligner makes of a copy.
        Aligner,
        File
    };

    Kind kind = Kind::Alignment;
    TAMBO::Alignment *alignment = nullptr;
    std::size_t steps = 0;
};

class CompareDialog : public QDialog, public Subscriber
{
    Q_OBJECT

public:
    // Further steps back are left out, which it says.
    static constexpr std::size_t kMostSteps = 200;

    // Goes with the parent; when the alignment goes, it closes.
    CompareDialog(const TAMBO::Alignment &here, QWidget *parent,
                  std::function<void(const CompareChoice &)> chosen);
    ~CompareDialog() override;

    [[nodiscard]] bool isLooking() const { return m_Candidates.has_value(); }

    void accept() override;
    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

private:
    void begin();
    void goOn();
    void addSteps();
    void add(const QString &text, const QString &toolTip, const CompareChoice &choice, int place);
    void showState();
    // The alignment is not there any more.
    void leave();

    const TAMBO::Alignment *m_Here;
    std::uint64_t m_Revision = 0;
    std::function<void(const CompareChoice &)> m_Chosen;
    std::optional<Candidates> m_Candidates;
    // Of the items, in their order.
    std::vector<CompareChoice> m_Choices;
    std::size_t m_Alignments = 0;
    QTimer m_Slices;
    QListWidget *m_List;
    QLabel *m_State;
    QDialogButtonBox *m_Buttons;
};

} // namespace companion
