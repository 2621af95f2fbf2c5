// SPDX-License-Identifier: GPL-3.0-or-later
// Colour map files: where they are found and what they say.
#pragma once

#include "Color.h"
#include "Result.h"

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::services {

// One line of a colour map file: "position red green blue". Positions ascend; they are mapped to
// the range from 0 (the minimum) to 1.
struct ColorStop
{
    double position = 0;
    double red = 0;
    double green = 0;
    double blue = 0;
};

struct ColormapContents
{
    // Two or more.
    std::vector<ColorStop> stops;
    // Colours between two stops are mixed of both. Otherwise they are that of the nearer one, as
    // for classes, between which there is nothing.
    bool isBlended = true;
};

class ColormapFile
{
public:
    // "#" starts a comment, "classes" on a line of its own switches blending off. The failure names
    // the file, the line and the cause.
    static Result<ColormapContents> parse(std::string_view text, const std::string &fileName);
    // A name is looked up among the user's maps, then among the installed ones.
    static Result<ColormapContents> read(const std::string &name);
    // Empty when there is no such map.
    [[nodiscard]] static QString find(const std::string &name);
    // The names of all maps, sorted.
    [[nodiscard]] static std::vector<std::string> names();
    // The colours at the ends of so many equal steps, one more than steps.
    [[nodiscard]] static std::vector<Color> interpolate(const ColormapContents &map, int steps);
};

} // namespace TAMBO::services
