// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToolbarButtons.h"

#include <QStringList>

namespace TAMBO::services {

std::vector<ToolbarButton> parseToolbarButtons(const QString &description,
                                               std::vector<QString> &problems)
{
    std::vector<ToolbarButton> buttons;
    for (const QString &entry : description.split(';')) {
        const QString text = entry.trimmed();
        if (text.isEmpty())
            continue;
        ToolbarButton button;
        if (text == QStringLiteral("-")) {
            button.isSeparator = true;
            buttons.push_back(button);
            continue;
        }
        const QStringList fields = text.split('|');
        bool isNumber = false;
        button.number = fields.first().trimmed().toInt(&isNumber);
        if (!isNumber) {
            problems.push_back(QStringLiteral("\"%1\" does not start with a number").arg(text));
            continue;
        }
        button.icon = fields.value(1).trimmed();
        button.text = fields.value(2).trimmed();
        if (button.text.isEmpty())
            button.text = QString::number(button.number);
        button.toolTip = fields.value(3).trimmed();
        if (button.toolTip.isEmpty())
            button.toolTip = button.text;
        button.isToggle = fields.value(4).trimmed() == QStringLiteral("toggle");
        buttons.push_back(button);
    }
    return buttons;
}

} // namespace TAMBO::services
