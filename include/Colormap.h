// SPDX-License-Identifier: GPL-3.0-or-later
// A named color map: a value between a minimum and a maximum gives a color.
#pragma once

#include "Color.h"
#include "Export.h"

#include <string>
#include <vector>

class TAMBO_API Colormap
{
public:
    // file: a color map of the user or of the installation, such as "BlueRed.cm". steps: into how
    // many equal steps the map is divided; an even number keeps its middle color. name: what the
    // caller calls the map. No file gives a grey map; one that cannot be read also a line in the
    // log.
    Colormap(const std::string &file, int steps, const std::string &name);

    void setMinMax(float minimum, float maximum);
    // Values outside the bounds get the color of the nearer bound, no number at all is white. A
    // minimum above the maximum turns the map round.
    [[nodiscard]] Color lookupValue(float value) const;
    [[nodiscard]] const std::string &name() const noexcept { return m_Name; }

private:
    std::vector<Color> m_Colors;
    std::string m_Name;
    float m_Minimum = 0.0F;
    float m_Maximum = 1.0F;
};
