// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModellingFolder.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sys/wait.h>

namespace fs = std::filesystem;

namespace {

const std::map<char, const char *> kTypes = {
    {'A', "ALA"}, {'C', "CYS"}, {'D', "ASP"}, {'E', "GLU"}, {'F', "PHE"}, {'G', "GLY"},
    {'H', "HIS"}, {'K', "LYS"}, {'L', "LEU"}, {'M', "MET"}, {'W', "TRP"}, {'X', "UNK"}};

std::string contents(const fs::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

ModellingFolder::ModellingFolder() : m_SearchPath(std::getenv("PATH"))
{
    std::string name = (fs::temp_directory_path() / "modelling-XXXXXX").string();
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    m_Path = name;
    fs::create_directory(m_Path / "bin");
    fs::create_directory(m_Path / "tmp");
    setenv("TMPDIR", (m_Path / "tmp").c_str(), 1);
    unsetenv("KESTRAM_RUN");
}

ModellingFolder::~ModellingFolder()
{
    setenv("PATH", m_SearchPath.c_str(), 1);
    unsetenv("TMPDIR");
    fs::remove_all(m_Path);
}

fs::path ModellingFolder::write(const std::string &name, const std::string &text) const
{
    std::ofstream(m_Path / name, std::ios::binary) << text;
    return m_Path / name;
}

std::string ModellingFolder::read(const std::string &name) const
{
    return contents(m_Path / name);
}

std::string ModellingFolder::pir(const std::string &templateRow, const std::string &targetRow)
{
    return ">P1;known\nstructureX:::::::::\n" + templateRow + "*\n>P1;wanted\nsequence:::::::::\n" +
           targetRow + "*\n";
}

std::string ModellingFolder::pdb(const std::string &letters)
{
    std::string text;
    int serial = 0;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        if (letters[i] == ' ')
            continue;
        float shift = 0;
        for (const char *atom : {"N", "CA", "C"}) {
            std::array<char, 80> line{};
            std::snprintf(line.data(), line.size(), "ATOM  %5d  %-3s %3s A%4d    %8.3f%8.3f%8.3f\n",
                          ++serial, atom, kTypes.at(letters[i]), int(i) + 1,
                          double(float(i) * 3.8F + shift), 1.0, -2.5);
            text += line.data();
            shift += 1.2F;
        }
    }
    return text;
}

void ModellingFolder::installEngine(const std::string &script)
{
    const fs::path engine = write("bin/promod", "#!/bin/sh\n" + script + '\n');
    fs::permissions(engine, fs::perms::owner_all);
    setenv("PATH", ((m_Path / "bin").string() + ":/usr/bin:/bin").c_str(), 1);
}

void ModellingFolder::removeEngine()
{
    setenv("PATH", (m_Path / "bin").c_str(), 1);
}

ModellingFolder::Finished ModellingFolder::kestram(const std::string &arguments,
                                                   const std::string &environment) const
{
    const std::string command = "cd '" + m_Path.string() + "' && " + environment +
                                " '" KESTRAM "' " + arguments + " > output 2> errors < /dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(m_Path / "output"),
            contents(m_Path / "errors")};
}
