// SPDX-License-Identifier: GPL-3.0-or-later
// Compares what an editor window shows with its alignment before the window paints or takes input:
// row drags and new ranges are published to nobody, so a window has to look for itself. Belongs to
// the window.
#pragma once

#include <QObject>

#include <functional>
#include <vector>

class QAbstractScrollArea;
class QWidget;

namespace ZEP {

class CatchUp : public QObject
{
public:
    // isCurrent is asked at every event, so it must be cheap. catchUp makes it true.
    CatchUp(QWidget &window, std::function<bool()> isCurrent, std::function<void()> catchUp);
    ~CatchUp() override;

    // A view of the window, which outlives this object.
    void watch(QAbstractScrollArea &view);
    void now();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void askForPainting();

    std::function<bool()> m_IsCurrent;
    std::function<void()> m_CatchUp;
    std::vector<QAbstractScrollArea *> m_Views;
    bool m_IsBusy = false;
};

} // namespace ZEP
