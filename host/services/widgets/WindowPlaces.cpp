// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowPlaces.h"

#include "ConfigStore.h"
#include "Directories.h"

#include <QByteArray>
#include <QUrl>
#include <QWidget>

namespace TAMBO::services {

namespace {

constexpr QSize kLargestComfort(1200, 700);
constexpr double kShareOfScreen = 0.6;
const std::string kPlacesSection = "Windows";

// Captions may hold any character.
std::string keyName(const QString &key)
{
    return QUrl::toPercentEncoding(key).toStdString();
}

// A file of its own, so that moving a window never touches the settings.
ConfigStore placeStore()
{
    return {QString(), Directories::data() + QStringLiteral("/windows.ini")};
}

} // namespace

bool WindowPlaces::restore(QWidget &window, const QString &key)
{
    const std::optional<std::string> place = placeStore().value(kPlacesSection, keyName(key));
    return place &&
           window.restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(*place)));
}

void WindowPlaces::remember(const QWidget &window, const QString &key)
{
    ConfigStore store = placeStore();
    store.setValue(kPlacesSection, keyName(key), window.saveGeometry().toBase64().toStdString());
    store.saveOrLog();
}

QSize WindowPlaces::comfortable(const QSize &asked, const QSize &screen)
{
    const QSize comfort = (screen * kShareOfScreen).boundedTo(kLargestComfort);
    const bool isLittle =
        asked.width() < comfort.width() / 2 || asked.height() < comfort.height() / 2;
    return (isLittle ? asked.expandedTo(comfort) : asked).boundedTo(screen);
}

} // namespace TAMBO::services
