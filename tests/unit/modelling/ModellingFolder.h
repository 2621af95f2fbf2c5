// SPDX-License-Identifier: GPL-3.0-or-later
// A folder with the files of a modelling job, engines that tests write, and the adapter run there.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

class ModellingFolder : public testing::Test
{
protected:
    struct Finished
    {
        // As the shell has it: 128 more than the signal that ended the program.
        int status = -1;
        std::string output;
        std::string errors;
    };

    ModellingFolder();
    ~ModellingFolder() override;

    std::filesystem::path write(const std::string &name, const std::string &text) const;
    [[nodiscard]] std::string read(const std::string &name) const;
    // PIR text of the two rows.
    static std::string pir(const std::string &templateRow, const std::string &targetRow);
    // Alanines and so on with N, CA and C, numbered from 1; a blank is a residue without atoms.
    static std::string pdb(const std::string &letters);
    // A program called promod, in the shell's language, first on the search path.
    void installEngine(const std::string &script);
    // The search path has nothing but the system's folders without an engine.
    void removeEngine();
    // In this folder. environment holds assignments, arguments go to the shell as they are.
    [[nodiscard]] Finished kestram(const std::string &arguments = "seq.ali str.pdb",
                                   const std::string &environment = {}) const;
    [[nodiscard]] const std::filesystem::path &path() const noexcept { return m_Path; }

private:
    std::filesystem::path m_Path;
    std::string m_SearchPath;
};
