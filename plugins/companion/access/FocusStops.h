// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of an alignment window that the keyboard goes to, one after the other: the cells, tool
// bars and docks.
#pragma once

#include <QObject>

#include <vector>

class QWidget;

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

class FocusStops : public QObject
{
    Q_OBJECT

public:
    explicit FocusStops(TAMBO::AlignmentWindow &window);
    ~FocusStops() override;

    void next() { go(1); }
    void previous() { go(-1); }

protected:
    // Escape, which a part has no use for, gives the keyboard back to the cells.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] QWidget &cells() const;
    // From above to below, the cells first.
    [[nodiscard]] std::vector<QWidget *> stops() const;
    void go(int step);

    TAMBO::AlignmentWindow &m_Window;
};

} // namespace companion
