// SPDX-License-Identifier: GPL-3.0-or-later
// A status line with a count at its right, which gives way to longer messages.
#pragma once

#include <QStatusBar>

class QLabel;

namespace TAMBO::app {

class CountedStatusBar : public QStatusBar
{
    Q_OBJECT

public:
    explicit CountedStatusBar(QWidget *parent = nullptr);

    // Left of the count; without this it would stand behind it.
    void addNotice(QWidget *notice);
    void setCount(const QString &text);
    // The message, with an ellipsis for what has no room. All of it is in the tool tip.
    [[nodiscard]] QString shownMessage() const;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] int roomBesideNotices() const;
    [[nodiscard]] QRect messageArea() const;
    void makeRoom();

    QLabel *m_Count;
    QList<QWidget *> m_Notices;
};

} // namespace TAMBO::app
