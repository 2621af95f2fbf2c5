// SPDX-License-Identifier: GPL-3.0-or-later
// The line in which one chooses rows, columns or a block of an alignment window to be selected.
#pragma once

#include "AlignmentViewObserver.h"
#include "AlignmentWindow.h"
#include "CellChoice.h"
#include "Measures.h"

#include <QTimer>
#include <QToolBar>

#include <array>
#include <memory>
#include <vector>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace companion {

// As the line shows them.
enum class SelectBy { Block, Likeness, Conservation, Gaps, Names };

// Out of sight until it is asked for. It counts what it would select, anew with each change of the
// choice or of the alignment, and goes on between events.
class SelectBar : public QToolBar, public TAMBO::AlignmentViewObserver
{
    Q_OBJECT

public:
    // A child of the window's own widget, and gone with it.
    explicit SelectBar(TAMBO::AlignmentWindow &window);
    ~SelectBar() override;

    // With the block in sight, in the columns of the range if there is one, and with the row under
    // the pointer, or else the first one that is selected, or else in sight.
    void ask(SelectBy by);
    // What has been chosen; false when nothing has changed.
    bool apply();

    [[nodiscard]] bool isCounting() const { return m_Measure != nullptr && !m_Measure->isDone(); }

    void alignmentShown() override;
    void layoutRebuilt() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeWidgets();
    void layOut(QLabel *label, QWidget *go);
    void showControls();
    void prefill();
    void fitRanges();
    void begin();
    void goOn();
    void countOn();
    void countAnew();
    void leave();
    void giveUp();
    void showState();
    [[nodiscard]] bool measureToTheEnd();
    [[nodiscard]] SelectBy by() const;
    [[nodiscard]] TAMBO::CellBlock block() const;
    [[nodiscard]] Limit limit() const;
    [[nodiscard]] unsigned long referenceRow() const;
    [[nodiscard]] QString blockText(const TAMBO::Alignment &alignment) const;
    // There is a measure.
    [[nodiscard]] QString chosenText(const TAMBO::Alignment &alignment) const;

    struct Control
    {
        QWidget *widget;
        std::vector<SelectBy> uses;
    };
    // What limits were typed last, by SelectBy.
    std::array<double, 5> m_Limits{};
    std::unique_ptr<Measure> m_Measure;
    // Of the values that are known so many have been looked at, and so many are chosen.
    std::size_t m_Counted = 0;
    std::size_t m_Chosen = 0;
    QTimer m_Slices;
    std::vector<Control> m_Controls;
    QComboBox *m_By = nullptr;
    QSpinBox *m_RowFrom = nullptr;
    QSpinBox *m_RowTo = nullptr;
    QSpinBox *m_ColumnFrom = nullptr;
    QSpinBox *m_ColumnTo = nullptr;
    QSpinBox *m_Row = nullptr;
    QComboBox *m_Compared = nullptr;
    QComboBox *m_Side = nullptr;
    QDoubleSpinBox *m_Limit = nullptr;
    QLineEdit *m_Name = nullptr;
    QComboBox *m_Language = nullptr;
    QComboBox *m_How = nullptr;
    QLabel *m_State = nullptr;
};

} // namespace companion
