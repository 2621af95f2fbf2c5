// SPDX-License-Identifier: GPL-3.0-or-later
// kestram: builds a model of the second sequence of an alignment on the structure of the first.
#include "Engine.h"
#include "EngineReport.h"
#include "EngineRun.h"
#include "ExitStatus.h"
#include "Job.h"
#include "ModelScores.h"
#include "ModellingInput.h"
#include "RunFolder.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>

namespace {

namespace fs = std::filesystem;

constexpr const char *kUsage =
    "usage: kestram ALIGNMENT STRUCTURE\n"
    "       kestram --job RECORD MODEL ALIGNMENT STRUCTURE\n"
    "Builds a model of the alignment's second sequence (the target) on STRUCTURE, the coordinates\n"
    "of its first (the template), and prints it in PDB format. Messages go to standard error.\n"
    "With --job the model goes into the file MODEL, when it is complete, and how the job goes and\n"
    "what came of it into the file RECORD.\n"
    "The words of KESTRAM_RUN, if set, are put before the engine's command. Where that runs must\n"
    "see the engine's folder, which stands beside MODEL with --job, else beside ALIGNMENT;\n"
    "without KESTRAM_RUN and --job it is a temporary one.\n"
    "Exit status: 0; 1 the input is bad; 2 the call is wrong; 3 the engine is missing; 4 it\n"
    "failed, or what it gave cannot be written.\n";

int complain(const std::string &sentence, int status)
{
    std::cerr << "kestram: " << sentence << '\n';
    return status;
}

std::string launcherWords()
{
    const char *const words = std::getenv("KESTRAM_RUN");
    return words == nullptr ? std::string() : std::string(words);
}

// A launcher may start the engine on another machine, which does not see this one's temporary
// files.
fs::path parentFolder(const std::string &launcher, const fs::path &alignment)
{
    if (launcher.find_first_not_of(" \t\n") != std::string::npos)
        return fs::absolute(alignment).parent_path();
    return fs::temp_directory_path();
}

int printModel(const fs::path &alignment, const fs::path &structure)
{
    const auto input = kestram::readInput(alignment, structure);
    if (!input)
        return complain(input.error().message(), kestram::kBadInput);
    for (const std::string &remark : input.value().remarks)
        complain(remark, EXIT_SUCCESS);
    const auto engine = kestram::findEngine();
    if (!engine)
        return complain(engine.error().message(), kestram::kNoEngine);
    const std::string launcher = launcherWords();
    const auto run = kestram::EngineRun::begin(
        {kestram::engineCommand(engine.value(), kestram::kScriptFile, launcher),
         engine.value(),
         [&] { return kestram::RunFolder::make(parentFolder(launcher, alignment)); },
         {}});
    if (!run)
        return complain(run.error().message(), kestram::kEngineFailed);
    const fs::path folder = run.value()->folder().path();
    if (const auto written =
            run.value()->folder().write(kestram::kScriptFile, kestram::scriptText());
        !written)
        return complain(written.error().message(), kestram::kEngineFailed);
    const auto model = run.value()->build(input.value());
    if (!model)
        return complain(model.error().message(), kestram::kEngineFailed);
    const kestram::EngineReport report = kestram::readReport(folder / kestram::kReportFile);
    std::cout << TAMBO::scoreRemarks(report.residueScores) << model.value() << std::flush;
    return std::cout.fail() ? complain("the model cannot be written", kestram::kEngineFailed)
                            : EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    const bool asksForHelp = std::any_of(argv + 1, argv + argc, [](const std::string &argument) {
        return argument == "-h" || argument == "--help";
    });
    if (asksForHelp) {
        std::cout << kUsage;
        return EXIT_SUCCESS;
    }
    constexpr int kJobArguments = 6;
    const bool isJob = argc == kJobArguments && std::string_view(argv[1]) == "--job";
    if (!isJob && argc != 3) {
        std::cerr << kUsage;
        return kestram::kWrongCall;
    }
    // Who is ended by a reader that has gone, or by a file that may not grow, cannot say so.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return isJob ? kestram::Job({argv[2], argv[3], argv[4], argv[5]}, launcherWords()).run()
                     : printModel(argv[1], argv[2]);
    } catch (const std::exception &error) {
        return complain(error.what(), kestram::kEngineFailed);
    }
}
