// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColormapFile.h"

#include "DataFile.h"
#include "Directories.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <sstream>

namespace TAMBO::services {

namespace {

constexpr double kFullColor = 255;
// Their differences are numbers still.
constexpr double kFarthestPosition = 1e100;
constexpr std::string_view kClasses = "classes";

std::vector<QString> mapDirectories()
{
    return {Directories::config() + QStringLiteral("/colormaps"),
            Directories::shared() + QStringLiteral("/colormaps")};
}

bool isColorPart(double part)
{
    return part >= 0 && part <= kFullColor;
}

std::optional<ColorStop> plainStop(std::string_view line)
{
    const auto position = takePlainNumber<double>(line);
    const auto red = takePlainNumber<double>(line);
    const auto green = takePlainNumber<double>(line);
    const auto blue = takePlainNumber<double>(line);
    if (!position || !red || !green || !blue || !line.empty())
        return {};
    return ColorStop{*position, *red, *green, *blue};
}

std::optional<ColorStop> spelledStop(const std::string &line)
{
    std::istringstream fields(line);
    fields.imbue(std::locale::classic());
    ColorStop stop;
    std::string rest;
    if (!(fields >> stop.position >> stop.red >> stop.green >> stop.blue) || fields >> rest)
        return {};
    return stop;
}

std::optional<ColorStop> parseStop(const std::string &line)
{
    std::optional<ColorStop> stop = plainStop(line);
    if (!stop)
        stop = spelledStop(line);
    const bool good = stop && std::abs(stop->position) <= kFarthestPosition &&
                      isColorPart(stop->red) && isColorPart(stop->green) && isColorPart(stop->blue);
    return good ? stop : std::nullopt;
}

Color mixed(const ColorStop &low, const ColorStop &high, double share)
{
    const auto mix = [share](double from, double to) {
        return int(std::lround(from + (to - from) * share));
    };
    return Color(
        QColor(mix(low.red, high.red), mix(low.green, high.green), mix(low.blue, high.blue)));
}

} // namespace

Result<ColormapContents> ColormapFile::parse(std::string_view text, const std::string &fileName)
{
    ColormapContents map;
    DataLines lines(text);
    while (lines.next()) {
        const Place place{fileName, lines.number()};
        if (lines.line() == kClasses) {
            map.isBlended = false;
            continue;
        }
        const std::optional<ColorStop> stop = parseStop(lines.line());
        if (!stop)
            return Failure{FailureKind::BadInput,
                           "expected a position and three numbers from 0 to 255", place};
        if (!map.stops.empty() && stop->position <= map.stops.back().position)
            return Failure{FailureKind::BadInput, "positions must ascend", place};
        map.stops.push_back(*stop);
    }
    if (map.stops.size() < 2)
        return Failure{FailureKind::BadInput, "a color map needs two colors or more", {fileName}};
    const double first = map.stops.front().position;
    const double extent = map.stops.back().position - first;
    for (ColorStop &stop : map.stops)
        stop.position = (stop.position - first) / extent;
    return map;
}

QString ColormapFile::find(const std::string &name)
{
    const QString file = QFile::decodeName(QByteArray::fromStdString(name));
    if (file.isEmpty())
        return {};
    if (QFileInfo(file).isAbsolute())
        return QFileInfo(file).isFile() ? file : QString();
    for (const QString &directory : mapDirectories()) {
        const QFileInfo candidate(directory + '/' + file);
        if (candidate.isFile())
            return candidate.filePath();
    }
    return {};
}

Result<ColormapContents> ColormapFile::read(const std::string &name)
{
    const QString path = find(name);
    if (path.isEmpty())
        return Failure{FailureKind::NotFound, "there is no color map \"" + name + "\""};
    const Result<std::string> text = readDataFile(path);
    if (!text)
        return text.error();
    return parse(text.value(), path.toStdString());
}

std::vector<std::string> ColormapFile::names()
{
    std::set<std::string> names;
    for (const QString &directory : mapDirectories())
        for (const QString &name : QDir(directory).entryList({QStringLiteral("*.cm")}, QDir::Files))
            names.insert(QFile::encodeName(name).toStdString());
    return {names.begin(), names.end()};
}

std::vector<Color> ColormapFile::interpolate(const ColormapContents &map, int steps)
{
    const int count = std::max(steps, 1);
    const std::vector<ColorStop> &stops = map.stops;
    std::vector<Color> colors;
    colors.reserve(std::size_t(count) + 1);
    std::size_t high = 1;
    for (int i = 0; i <= count; ++i) {
        const double position = double(i) / count;
        while (high + 1 < stops.size() && stops[high].position < position)
            ++high;
        const ColorStop &low = stops[high - 1];
        double share = (position - low.position) / (stops[high].position - low.position);
        if (!map.isBlended)
            share = share < 0.5 ? 0 : 1;
        colors.push_back(mixed(low, stops[high], share));
    }
    return colors;
}

} // namespace TAMBO::services
