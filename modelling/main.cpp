// SPDX-License-Identifier: GPL-3.0-or-later
// kestram: builds a model of the second sequence of an alignment on the structure of the first.
#include "Engine.h"
#include "ModellingInput.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>

namespace {

constexpr int kBadInput = 1;
constexpr int kWrongCall = 2;
constexpr int kNoEngine = 3;
constexpr int kEngineFailed = 4;

constexpr const char *kUsage =
    "usage: kestram ALIGNMENT STRUCTURE\n"
    "Builds a model of the alignment's second sequence (the target) on STRUCTURE, the coordinates\n"
    "of its first (the template), and prints it in PDB format. Messages go to standard error.\n"
    "The words of KESTRAM_RUN, if set, are put before the engine's command.\n"
    "Exit status: 0; 1 the input is bad; 2 the call is wrong; 3 the engine is missing; 4 it "
    "failed.\n";

int complain(const std::string &sentence, int status)
{
    std::cerr << "kestram: " << sentence << '\n';
    return status;
}

bool write(const std::filesystem::path &path, const std::string &text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    return !file.fail();
}

int run(const char *alignment, const char *structure)
{
    const auto input = kestram::readInput(alignment, structure);
    if (!input)
        return complain(input.error().message(), kBadInput);
    for (const std::string &remark : input.value().remarks)
        complain(remark, EXIT_SUCCESS);
    const auto engine = kestram::findEngine();
    if (!engine)
        return complain(engine.error().message(), kNoEngine);
    const kestram::RunFolder folder;
    if (folder.path().empty() ||
        !write(folder.path() / "alignment.fasta", kestram::fastaText(input.value())) ||
        !write(folder.path() / "template.pdb", kestram::pdbText(input.value())))
        return complain("no temporary file can be written", kEngineFailed);
    const char *launcher = std::getenv("KESTRAM_RUN");
    const auto model =
        kestram::runEngine(engine.value(), launcher == nullptr ? "" : launcher, folder.path());
    if (!model)
        return complain(model.error().message(), kEngineFailed);
    std::cout << model.value() << std::flush;
    return std::cout.fail() ? complain("the model cannot be written", kEngineFailed) : EXIT_SUCCESS;
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
    if (argc != 3) {
        std::cerr << kUsage;
        return kWrongCall;
    }
    // Who is ended by a reader that has gone leaves the folder of the run behind.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return run(argv[1], argv[2]);
    } catch (const std::exception &error) {
        return complain(error.what(), kEngineFailed);
    }
}
