// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowPlaces.h"

#include "ConfigStore.h"
#include "Directories.h"

#include <QByteArray>
#include <QUrl>
#include <QWidget>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace TAMBO::services {

namespace {

constexpr QSize kLargestComfort(1200, 700);
constexpr double kShareOfScreen = 0.6;
const std::string kPlacesSection = "Windows";
const std::string kDialogsSection = "Dialogs";
// No screen is as large.
constexpr int kFarthestPixel = 100000;

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

std::optional<QRect> WindowPlaces::dialogPlace(const QString &key)
{
    const std::optional<std::string> place = placeStore().value(kDialogsSection, keyName(key));
    if (!place)
        return std::nullopt;
    const QStringList parts = QString::fromStdString(*place).split(u' ', Qt::SkipEmptyParts);
    std::array<int, 4> numbers{};
    if (parts.size() != qsizetype(numbers.size()))
        return std::nullopt;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        bool isNumber = false;
        numbers[i] = parts[qsizetype(i)].toInt(&isNumber);
        if (!isNumber || std::abs(numbers[i]) > kFarthestPixel)
            return std::nullopt;
    }
    return QRect(numbers[0], numbers[1], numbers[2], numbers[3]);
}

void WindowPlaces::rememberDialog(const QString &key, const QRect &place)
{
    ConfigStore store = placeStore();
    store.setValue(kDialogsSection, keyName(key),
                   QStringLiteral("%1 %2 %3 %4")
                       .arg(place.x())
                       .arg(place.y())
                       .arg(std::max(0, place.width()))
                       .arg(std::max(0, place.height()))
                       .toStdString());
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
