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

// Light enough for black letters.
ColormapContents greyMap()
{
    return {{{0, 136, 136, 136}, {1, 236, 236, 236}}};
}

ColormapContents readMap(const std::string &file)
{
    // No name is no mistake: nobody has chosen a map.
    if (file.empty())
        return greyMap();
    const TAMBO::Result<ColormapContents> map = ColormapFile::read(file);
    if (map)
        return map.value();
    Logger::Write(QStringLiteral("Gray is used instead of a color map: %1")
                      .arg(QString::fromStdString(map.error().message())),
                  Logger::Severity::Warning);
    return greyMap();
}

} // namespace

Colormap::Colormap(const std::string &file, int steps, const std::string &name)
    : m_Colors(ColormapFile::interpolate(readMap(file), steps)), m_Name(name)
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
