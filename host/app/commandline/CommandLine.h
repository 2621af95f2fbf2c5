// SPDX-License-Identifier: GPL-3.0-or-later
// What the user asked for on the command line of `tambo`.
#pragma once

#include "ConvertOrder.h"
#include "PrintOrder.h"
#include "Result.h"

#include <string>
#include <vector>

namespace TAMBO::app {

struct CommandLine
{
    enum class Mode { Workbench, Picture, Info, Print, Convert, Identity, Help, Version };

    Mode mode = Mode::Workbench;
    std::vector<std::string> files;
    // Picture: the image to write.
    std::string picture;
    PrintOrder print;
    ConvertOrder convert;
};

// arguments without the program's name. Options of the toolkit ("-platform x", "-style x") are
// passed over.
[[nodiscard]] Result<CommandLine> parseCommandLine(const std::vector<std::string> &arguments);

[[nodiscard]] std::string usageText();

} // namespace TAMBO::app
