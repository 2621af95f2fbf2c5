// SPDX-License-Identifier: GPL-3.0-or-later
// What the user asked for on the command line of `tambo`.
#pragma once

#include "ConvertOrder.h"
#include "FamilyOrder.h"
#include "PrintOrder.h"
#include "Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::app {

struct CommandLine
{
    enum class Mode {
        Workbench,
        Picture,
        Info,
        Print,
        Convert,
        Identity,
        Models,
        Script,
        Help,
        Version
    };

    Mode mode = Mode::Workbench;
    std::vector<std::string> files;
    // Picture: the image to write.
    std::string picture;
    // Workbench and Picture: titles of the tools to open with the files.
    std::vector<std::string> tools;
    // Workbench: the files are opened in it, whether another one runs or not.
    bool inNewWorkbench = false;
    // Workbench and Picture: the example, with its structures, is opened before the files.
    bool withExample = false;
    PrintOrder print;
    ConvertOrder convert;
    FamilyOrder models;
    // Script: its file, and what it is called with.
    std::vector<std::string> script;
};

// arguments without the program's name. Options of the toolkit ("-platform x", "-style x") are
// passed over.
[[nodiscard]] Result<CommandLine> parseCommandLine(const std::vector<std::string> &arguments);

// Whether the word is a command of the program itself.
[[nodiscard]] bool isOwnCommand(std::string_view word);
// Whether the call begins with a word that may be the command of a plug-in: none of the program's
// own, and formed so that it is hardly the name of a file.
[[nodiscard]] bool mayBePluginCommand(const std::vector<std::string> &arguments);

[[nodiscard]] std::string usageText();

} // namespace TAMBO::app
