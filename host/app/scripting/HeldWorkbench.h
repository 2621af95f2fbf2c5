// SPDX-License-Identifier: GPL-3.0-or-later
// Holds the workbench while a script runs in the window's thread: the model is in the middle of
// something, so that nothing but the console paints or takes input. Dialogs that come up meanwhile
// do, since the script waits for them.
#pragma once

#include <QObject>
#include <QPointer>

#include <vector>

class QWidget;

namespace TAMBO::app {

class HeldWorkbench : public QObject
{
    Q_OBJECT

public:
    // console goes on. What stands at the edge of its window may, if it is left.
    explicit HeldWorkbench(QWidget &console);
    ~HeldWorkbench() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    // By Escape, or Ctrl+C where nothing is to be copied.
    void stopAsked();
    // A click, key or request to close that the workbench does not follow now.
    void refused();

private:
    [[nodiscard]] bool isFree(const QWidget &widget) const;
    [[nodiscard]] bool takeKey(QEvent &event, const QWidget &widget);
    void freeze(QWidget &widget);
    void thaw(const QWidget &window);

    QPointer<QWidget> m_Console;
    std::vector<QPointer<QWidget>> m_Frozen;
    // Would have painted.
    std::vector<QPointer<QWidget>> m_Unpainted;
};

} // namespace TAMBO::app
