// SPDX-License-Identifier: GPL-3.0-or-later
// A swatch of the colouring dialog: a press switches its letter between colour and white.
#pragma once

#include <QLabel>

namespace ZEP {

class JLabel : public QLabel
{
    Q_OBJECT

public:
    JLabel(const QString &text, int index, QWidget *parent);

    [[nodiscard]] bool isOn() const noexcept { return m_On; }
    void setBackground(const QColor &color);

signals:
    // Before anything else is done with the press.
    void switched(int index);

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    bool m_On = true;
    int m_Index;
};

} // namespace ZEP
