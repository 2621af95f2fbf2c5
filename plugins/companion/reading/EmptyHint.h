// SPDX-License-Identifier: GPL-3.0-or-later
// What to do next, where an alignment window has no cells to show.
#pragma once

#include "AlignmentViewObserver.h"
#include "Subscriber.h"

#include <QObject>
#include <QPointer>

class QLabel;

namespace companion {

class EmptyHint : public QObject, public TAMBO::AlignmentViewObserver, private Subscriber
{
public:
    explicit EmptyHint(TAMBO::AlignmentWindow &window);
    ~EmptyHint() override;

    void alignmentShown() override { follow(); }
    void layoutRebuilt() override { follow(); }
    void visibleSizeChanged() override { follow(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // What can be shown may have come or gone.
    void commUpdate() override { }
    void commAdd() override { follow(); }
    void commDelete() override { follow(); }

    void follow();

    // A child of the area of the cells.
    QPointer<QLabel> m_Label;
};

} // namespace companion
