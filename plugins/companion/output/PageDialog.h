// SPDX-License-Identifier: GPL-3.0-or-later
// Chooses what of an alignment is to be on pages, writes or prints them, and closes; it stays when
// that fails.
#pragma once

#include "AlignmentViewObserver.h"
#include "PageChoices.h"
#include "PageOutput.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QSpinBox;

namespace companion {

// Goes when its window shows another alignment.
class PageDialog : public QDialog, public TAMBO::AlignmentViewObserver
{
    Q_OBJECT

public:
    enum class For { Export, Print };

    // Belongs to the window's own widget, and is closed with it. The window shows an alignment.
    // isTracked: the tracks are to be seen.
    PageDialog(TAMBO::AlignmentWindow &window, PageTracks tracks, bool isTracked, For what);
    ~PageDialog() override;

    [[nodiscard]] PageChoices choices() const;
    void setChoices(const PageChoices &choices);
    // Where a file is offered: called after the alignment, in the folder that was used last.
    [[nodiscard]] QString suggestedFile() const;
    // The dialog closes then. False, and told in the dialog, when it is not written; then the file
    // is as it was.
    bool exportTo(const QString &file);
    // Likewise.
    bool printOn(QPrinter &printer);

    void alignmentShown() override;
    void layoutRebuilt() override;

private:
    void addChoices(QFormLayout &form);
    void showPlan();
    [[nodiscard]] PageOrder order() const;
    void askAndExport();
    void askAndPrint();
    bool leaveOrTell(const OutputOutcome &outcome);

    TAMBO::AlignmentWindow &m_Window;
    PageTracks m_Tracks;
    QComboBox *m_Rows;
    QComboBox *m_Columns;
    QSpinBox *m_First;
    QSpinBox *m_Last;
    QComboBox *m_Paper;
    QComboBox *m_Orientation;
    QCheckBox *m_Breaks;
    QDoubleSpinBox *m_FontSize;
    QSpinBox *m_MostColumns;
    QSpinBox *m_Resolution;
    QCheckBox *m_Names;
    QCheckBox *m_Ruler;
    QCheckBox *m_Numbers;
    QCheckBox *m_TracksOn;
    QCheckBox *m_Colors;
    QLabel *m_Summary;
    QLabel *m_Remark;
    QPushButton *m_Export;
    QPushButton *m_Print;
    bool m_IsSetting = false;
};

} // namespace companion
