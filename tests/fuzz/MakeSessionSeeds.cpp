// SPDX-License-Identifier: GPL-3.0-or-later
// Makes sessions that a fuzzer can begin with: make_session_seeds FOLDER puts entries into
// FOLDER/session and files into FOLDER/sessionfile.
#include "SessionEntries.h"

#include "FileWriter.h"
#include "SessionFile.h"
#include "StateParts.h"
#include "unit/sessions/live/LiveFixture.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

namespace fs = std::filesystem;
using TAMBO::fuzz::Entry;
using TAMBO::fuzz::writeEntry;

constexpr unsigned kSeeds = 24;

class SeedWork : public LiveFixture
{
public:
    explicit SeedWork(unsigned seed) : LiveFixture(seed) { }
    void TestBody() override { }

    // Some of the work in the state, the rest in records; all of it in a file.
    [[nodiscard]] bool make(const fs::path &folder, const std::string &name)
    {
        work(int(4 + below(12)));
        beginSession(below(2) == 0 ? 0 : TAMBO::sessions::LiveSession::kSmall);
        session->finish();
        work(int(4 + below(12)));
        session->finish();
        TAMBO::ValueWriter out;
        for (const TAMBO::sessions::StoreEntry &entry : entries) {
            if (const auto *const part = std::get_if<TAMBO::sessions::StatePart>(&entry))
                writeEntry({Entry::Place::State, part->kind, part->content}, out);
            else if (const auto *const record = std::get_if<TAMBO::sessions::Record>(&entry))
                writeEntry({Entry::Place::Record, record->kind, record->content}, out);
        }
        std::ofstream(folder / "session" / name, std::ios::binary) << out.bytes();
        auto content =
            TAMBO::sessions::takeSession(space(), history, {{"test", "value"}}, {"1", 1});
        TAMBO::WriteAids aids;
        return content &&
               TAMBO::sessions::writeSession(
                   std::move(content).value(),
                   folder / "sessionfile" / (name + TAMBO::sessions::kSessionEnding), aids);
    }
};

} // namespace

int main(int count, char **words)
{
    if (count != 2) {
        std::cerr << "make_session_seeds FOLDER\n";
        return 2;
    }
    const fs::path folder = words[1];
    for (const char *const name : {"session", "sessionfile"})
        fs::create_directories(folder / name);
    for (unsigned seed = 1; seed <= kSeeds; ++seed) {
        if (!SeedWork(seed).make(folder, "seed" + std::to_string(seed))) {
            std::cerr << "seed " << seed << " cannot be written\n";
            return 1;
        }
    }
    return 0;
}
