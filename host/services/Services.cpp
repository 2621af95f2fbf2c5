// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services.h"

#include "Color.h"
#include "ConfigStore.h"
#include "Hooks.h"
#include "LogBook.h"
#include "SelectionColor.h"
#include "TitleWidths.h"

#include <QColor>
#include <QObject>

namespace TAMBO::services {

namespace {

void applySelectionColor()
{
    const std::optional<std::string> name =
        ConfigStore::instance().value("General", "SelectionColor");
    const QColor color(QString::fromStdString(name.value_or(std::string())));
    if (color.isValid())
        setSelectionColor(Color(color));
}

} // namespace

void installServices()
{
    LogBook::routeMessages();
    TitleWidths::install();
    applySelectionColor();
    QObject::connect(&ConfigStore::instance(), &ConfigStore::changed, &ConfigStore::instance(),
                     [](const QString &section, const QString &key) {
                         if (section == QStringLiteral("General") &&
                             key == QStringLiteral("SelectionColor"))
                             applySelectionColor();
                     });
}

} // namespace TAMBO::services
