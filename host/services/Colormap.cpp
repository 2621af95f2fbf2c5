// SPDX-License-Identifier: GPL-3.0-or-later
#include "Colormap.h"

#include "ColormapFile.h"
#include "Logger.h"

#include <QString>

#include <algorithm>
#include <cmath>

using namespace TAMBO::services;

namespace {

constexpr Color kNoValue(0xffffffU);

// Light enough for letters to be read on it.
std::vector<ColorStop> greyStops()
{
    return {{0, 112, 112, 112}, {1, 232, 232, 232}};
}

std::vector<ColorStop> readStops(const std::string &file)
{
    // No name is no mistake: nobody has chosen a map.
    if (file.empty())
        return greyStops();
    const TAMBO::Result<std::vector<ColorStop>> stops = ColormapFile::read(file);
    if (stops)
        return stops.value();
    Logger::Write(QStringLiteral("Gray is used instead of a color map: %1")
                      .arg(QString::fromStdString(stops.error().message)),
                  Logger::Severity::Warning);
    return greyStops();
}

} // namespace

Colormap::Colormap(const std::string &file, int steps, const std::string &name)
    : m_Colors(ColormapFile::interpolate(readStops(file), steps)), m_Name(name)
{ }

void Colormap::setMinMax(float minimum, float maximum)
{
    m_Minimum = minimum;
    m_Maximum = maximum;
}

Color Colormap::lookupValue(float value) const
{
    const double low = m_Minimum;
    const double high = m_Maximum;
    double share = (double(value) - low) / (high - low);
    if (low == high)
        share = value < m_Minimum ? 0 : value > m_Maximum ? 1 : 0.5;
    if (std::isnan(share))
        return kNoValue;
    const auto last = double(m_Colors.size() - 1);
    return m_Colors[std::size_t(std::lround(std::clamp(share, 0.0, 1.0) * last))];
}
