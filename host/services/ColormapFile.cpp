// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColormapFile.h"

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

std::vector<QString> mapDirectories()
{
    return {Directories::config() + QStringLiteral("/colormaps"),
            Directories::shared() + QStringLiteral("/colormaps")};
}

bool isColorPart(double part)
{
    return part >= 0 && part <= kFullColor;
}

std::optional<ColorStop> parseStop(const std::string &line)
{
    std::istringstream fields(line);
    fields.imbue(std::locale::classic());
    ColorStop stop;
    std::string rest;
    if (!(fields >> stop.position >> stop.red >> stop.green >> stop.blue) || fields >> rest)
        return {};
    const bool good = std::isfinite(stop.position) && isColorPart(stop.red) &&
                      isColorPart(stop.green) && isColorPart(stop.blue);
    return good ? std::optional(stop) : std::nullopt;
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

Result<std::vector<ColorStop>> ColormapFile::parse(std::string_view text,
                                                   const std::string &fileName)
{
    std::istringstream lines{std::string(text)};
    std::vector<ColorStop> stops;
    std::string line;
    for (unsigned long number = 1; std::getline(lines, line); ++number) {
        line.erase(std::min(line.find('#'), line.size()));
        if (line.find_first_not_of(" \t\r") == std::string::npos)
            continue;
        const std::optional<ColorStop> stop = parseStop(line);
        const std::string place = fileName + ":" + std::to_string(number) + ": ";
        if (!stop)
            return Failure{place + "expected a position and three numbers from 0 to 255"};
        if (!stops.empty() && stop->position <= stops.back().position)
            return Failure{place + "positions must ascend"};
        stops.push_back(*stop);
    }
    if (stops.size() < 2)
        return Failure{fileName + ": a color map needs two colors or more"};
    const double first = stops.front().position;
    const double extent = stops.back().position - first;
    for (ColorStop &stop : stops)
        stop.position = (stop.position - first) / extent;
    return stops;
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

Result<std::vector<ColorStop>> ColormapFile::read(const std::string &name)
{
    const QString path = find(name);
    if (path.isEmpty())
        return Failure{"there is no color map \"" + name + "\""};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Failure{(path + QStringLiteral(": ") + file.errorString()).toStdString()};
    const QByteArray text = file.readAll();
    return parse({text.constData(), std::size_t(text.size())}, path.toStdString());
}

std::vector<std::string> ColormapFile::names()
{
    std::set<std::string> names;
    for (const QString &directory : mapDirectories())
        for (const QString &name : QDir(directory).entryList({QStringLiteral("*.cm")}, QDir::Files))
            names.insert(QFile::encodeName(name).toStdString());
    return {names.begin(), names.end()};
}

std::vector<Color> ColormapFile::interpolate(const std::vector<ColorStop> &stops, int steps)
{
    const int count = std::max(steps, 1);
    std::vector<Color> colors;
    colors.reserve(std::size_t(count) + 1);
    std::size_t high = 1;
    for (int i = 0; i <= count; ++i) {
        const double position = double(i) / count;
        while (high + 1 < stops.size() && stops[high].position < position)
            ++high;
        const ColorStop &low = stops[high - 1];
        const double share = (position - low.position) / (stops[high].position - low.position);
        colors.push_back(mixed(low, stops[high], share));
    }
    return colors;
}

} // namespace TAMBO::services
