// SPDX-License-Identifier: GPL-3.0-or-later
// A column of the tracks that keys move to, so that its values are read without a pointer.
#pragma once

#include <QObject>

#include <functional>
#include <optional>

class QKeyEvent;
class QWidget;

namespace TAMBO {
class AlignmentWindow;
}

namespace companion {

// The widget, which outlives this, takes the keyboard. While it has it, Left, Right, Home, End and
// the pages move the column, which the window shows, and its values are in a tool tip below the
// widget's upper edge and in its accessible description.
class TrackCursor : public QObject
{
    Q_OBJECT

public:
    // values: what is known of a column, as text.
    TrackCursor(QWidget &widget, TAMBO::AlignmentWindow &window,
                std::function<QString(unsigned long)> values);
    ~TrackCursor() override;

    // Nothing while the widget does not have the keyboard.
    [[nodiscard]] std::optional<unsigned long> column() const;
    // Other values may be known now.
    void refresh();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] std::optional<unsigned long> target(const QKeyEvent &key) const;
    void tell(bool isSeen);

    QWidget &m_Widget;
    TAMBO::AlignmentWindow &m_Window;
    std::function<QString(unsigned long)> m_Values;
    unsigned long m_Column = 0;
    QString m_Told;
};

} // namespace companion
