// SPDX-License-Identifier: GPL-3.0-or-later
// Hands on the sequences of files that are opened for somebody.
#pragma once

#include <QObject>

#include <filesystem>
#include <functional>
#include <vector>

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

struct LoadReport;

class OpenedSequences : public QObject
{
public:
    using Use = std::function<void(const std::vector<Compound *> &sequences)>;

    // use is called from the event loop when the command that opens the files has ended: with the
    // rows of the alignments that came from them, and the chains of their own structures. Not when
    // the user has given the command up, or no file could be read, which he is told elsewhere.
    void await(std::vector<std::filesystem::path> files, Use use);
    // An open command has ended.
    void arrived(const LoadReport &report);

private:
    struct Waiting
    {
        std::vector<std::filesystem::path> files;
        Use use;
    };
    std::vector<Waiting> m_Waiting;
};

} // namespace TAMBO::app
