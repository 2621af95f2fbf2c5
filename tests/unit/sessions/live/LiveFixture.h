// SPDX-License-Identifier: GPL-3.0-or-later
// A workbench that keeps what it does in a store, ends at any moment, and begins again.
#pragma once

#include "unit/history/AllChanges.h"
#include "unit/sessions/store/StoreFixture.h"

#include "History.h"
#include "LiveSession.h"
#include "ObjectSpace.h"
#include "SessionLoader.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class LiveFixture : public AllChanges
{
protected:
    using Entries = std::vector<TAMBO::sessions::StoreEntry>;
    using LoadedSession = TAMBO::sessions::LoadedSession;

    explicit LiveFixture(unsigned seed) : AllChanges(seed)
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "liveXXXXXX").string();
        m_Folder = mkdtemp(pattern.data());
    }
    ~LiveFixture() override
    {
        endSession();
        history.clear();
        std::filesystem::remove_all(m_Folder);
    }

    [[nodiscard]] std::filesystem::path file() const { return m_Folder / "work.session"; }

    // Less than the program's, so that little is much.
    static constexpr std::size_t kAtOnce = std::size_t(64) << 10;

    void beginSession(std::size_t small,
                      std::uint64_t mostReplay = TAMBO::sessions::LiveSession::kMostReplay)
    {
        entries.clear();
        session.emplace(
            space(), history,
            [this](TAMBO::sessions::StoreEntry entry) { entries.push_back(std::move(entry)); },
            small, mostReplay, atOnce);
    }
    void endSession() { session.reset(); }
    // Nothing is left of the program but what was handed over.
    void endProgram()
    {
        endSession();
        history.clear();
        space().reset();
    }

    void writeStore(const Entries &kept)
    {
        std::filesystem::remove(file());
        auto store =
            TAMBO::sessions::StoreFile::open(file(), TAMBO::sessions::StoreFile::Kind::Whole);
        ASSERT_TRUE(store) << complaintOf(store);
        ASSERT_EQ(complaintOf(store.value()->write(kept)), "");
    }
    TAMBO::Result<LoadedSession>
    loadStore(const TAMBO::sessions::SessionLoading &options = {},
              TAMBO::sessions::StoreReader::Kind kind = TAMBO::sessions::StoreReader::Kind::Whole)
    {
        auto reader = TAMBO::sessions::StoreReader::open(file(), kind);
        if (!reader)
            return reader.error();
        return TAMBO::sessions::loadSession(*reader.value(), space(), history, options);
    }

    // Another program, with what this one has handed over.
    void beginAgain(const Entries &kept)
    {
        endProgram();
        ASSERT_NO_FATAL_FAILURE(writeStore(kept));
        const auto loaded = loadStore();
        ASSERT_TRUE(loaded) << complaintOf(loaded);
        ASSERT_FALSE(loaded.value().problem) << loaded.value().problem->message();
    }

    template <typename Kind> [[nodiscard]] std::size_t countOf() const
    {
        return std::size_t(std::ranges::count_if(
            entries, [](const auto &entry) { return std::holds_alternative<Kind>(entry); }));
    }

    // Portraits of all states, in the order of the steps, maybe with what the steps are called and
    // what of the objects is unsaved. Ends where it began.
    std::vector<std::string> allStates(bool withSteps)
    {
        const std::size_t position = history.position();
        std::vector<std::string> states;
        for (std::size_t i = 0; i <= history.size(); ++i) {
            EXPECT_TRUE(history.goTo(i)) << i;
            states.push_back(lastingPortrait());
            if (!withSteps)
                continue;
            states.back() += history.undoLabel();
            for (const TAMBO::UnsavedObject &one : history.unsavedObjects())
                states.back() += ' ' + std::to_string(TAMBO::identityOf(*one.object)) + ':' +
                                 std::to_string(one.parts.number());
        }
        EXPECT_TRUE(history.goTo(position));
        return states;
    }

    std::optional<TAMBO::sessions::LiveSession> session;
    // Of the next one.
    std::size_t atOnce = kAtOnce;
    Entries entries;

private:
    std::filesystem::path m_Folder;
};
