// SPDX-License-Identifier: GPL-3.0-or-later
// A named colour map: a value between a minimum and a maximum gives a colour.
#pragma once

#include "Color.h"
#include "Export.h"

#include <string>
#include <vector>

class TAMBO_API Colormap
{
public:
    // file: a colour map of the user or of the installation, such as "BlueRed.cm". steps: how many
    // colours are interpolated. A file that cannot be read gives a grey map and a line in the log.
    Colormap(const std::string &file, int steps, const std::string &name);

    void setMinMax(float minimum, float maximum);
    // Values outside the bounds get the colour of the nearer bound.
    [[nodiscard]] Color lookupValue(float value) const;

private:
    std::vector<Color> m_Colors;
    std::string m_Name;
    float m_Minimum = 0.0F;
    float m_Maximum = 1.0F;
};
