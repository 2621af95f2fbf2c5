// SPDX-License-Identifier: GPL-3.0-or-later
#include "LateIcons.h"

#include <QCommonStyle>
#include <QEvent>
#include <QIcon>
#include <QPixmap>
#include <QPushButton>

#include <array>

namespace TAMBO::services {

namespace {

struct ButtonIcon
{
    QDialogButtonBox::StandardButton button;
    QStyle::StandardPixmap icon;
};

constexpr std::array<ButtonIcon, 3> kIcons = {{
    {QDialogButtonBox::Ok, QStyle::SP_DialogOkButton},
    {QDialogButtonBox::Cancel, QStyle::SP_DialogCancelButton},
    {QDialogButtonBox::Apply, QStyle::SP_DialogApplyButton},
}};

// A box asks the style for icons as it adds a button, unless the style says that there are none.
class StyleWithoutIcons : public QCommonStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QCommonStyle::styleHint(hint, option, widget, data);
    }
};

bool haveIcons(const QDialogButtonBox &box)
{
    return box.style()->styleHint(QStyle::SH_DialogButtonBox_ButtonsHaveIcons, nullptr, &box) != 0;
}

// Takes the room of any other.
QIcon emptyIcon()
{
    QPixmap pixel(1, 1);
    pixel.fill(Qt::transparent);
    return pixel;
}

} // namespace

LateIcons::LateIcons(QDialogButtonBox &box) : QObject(&box), m_Box(box)
{
    m_Box.installEventFilter(this);
}

void LateIcons::add(QDialogButtonBox::StandardButtons which)
{
    StyleWithoutIcons style;
    m_Box.setStyle(&style);
    for (const ButtonIcon &one : kIcons) {
        if (which.testFlag(one.button))
            m_Box.addButton(one.button);
    }
    // That of the application again, which the box hands on as if somebody had chosen it.
    m_Box.setStyle(nullptr);
    const QIcon icon = haveIcons(m_Box) ? emptyIcon() : QIcon();
    for (QAbstractButton *button : m_Box.buttons()) {
        button->setStyle(nullptr);
        button->setIcon(icon);
        button->installEventFilter(this);
    }
}

// The box is shown with its dialog, or a button is painted into a picture without that.
bool LateIcons::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_AreSet && (event->type() == QEvent::Show || event->type() == QEvent::Paint))
        setIcons();
    return QObject::eventFilter(watched, event);
}

void LateIcons::setIcons()
{
    m_AreSet = true;
    if (!haveIcons(m_Box))
        return;
    for (const ButtonIcon &one : kIcons) {
        if (QPushButton *const button = m_Box.button(one.button))
            button->setIcon(m_Box.style()->standardIcon(one.icon, nullptr, &m_Box));
    }
}

} // namespace TAMBO::services

#include "moc_LateIcons.cpp"
