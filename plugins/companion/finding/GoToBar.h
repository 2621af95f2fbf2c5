// SPDX-License-Identifier: GPL-3.0-or-later
// The line in which one types where to go in an alignment window.
#pragma once

#include "Places.h"
#include "TargetMark.h"

#include <QToolBar>

class QLabel;
class QLineEdit;

namespace companion {

// Out of sight until it is asked for.
class GoToBar : public QToolBar
{
    Q_OBJECT

public:
    // A child of the window's own widget, and gone with it.
    explicit GoToBar(TAMBO::AlignmentWindow &window);
    ~GoToBar() override;

    void ask();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void go();
    void leave();
    void show(const Place &place);
    using QToolBar::show;

    TAMBO::AlignmentWindow &m_Window;
    TargetMark m_Mark;
    QLineEdit *m_Place;
    QLabel *m_Remark;
};

} // namespace companion
