// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionFile.h"

#include "FileCheck.h"
#include "FileWriter.h"
#include "FormatTable.h"
#include "FormatText.h"
#include "ReplacementFile.h"
#include "StoreFile.h"
#include "StoreReader.h"
#include "StoreTables.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>
#include <utility>

namespace TAMBO::sessions {

namespace {

using formats::ReplacementFile;

// How any file of SQLite begins, and where in it stands whose it is.
constexpr std::string_view kHead("SQLite format 3\0", 16);
constexpr std::size_t kMarkPlace = 68;
constexpr std::size_t kHeadSize = 72;

Failure cancelledWriting()
{
    return {FailureKind::Cancelled, {}};
}

Failure cannotBeWritten(const std::string &fileName, const Failure &failure)
{
    return {FailureKind::System, "cannot be written: " + failure.cause, {fileName}};
}

class SessionWriting
{
public:
    SessionWriting(SessionContent content, const std::filesystem::path &file, WriteAids &aids)
        : m_Content(std::move(content)), m_Target(file), m_Aids(aids), m_File(file, aids.scratch)
    {
        if (aids.keepsBackups)
            m_File.keepBackups();
    }

    [[nodiscard]] Result<void> run()
    {
        if (!m_File.outcome())
            return m_File.outcome();
        if (Result<void> done = writeStore(); !done)
            return done.error().kind == FailureKind::Cancelled
                       ? done
                       : cannotBeWritten(m_File.fileName(), done.error());
        if (Result<void> done = m_File.complete(counting(WriteStage::Sync)); !done)
            return done;
        if (Result<void> done = checkStore(); !done)
            return done;
        return place();
    }

private:
    [[nodiscard]] bool step(WriteStage stage, double done) const
    {
        return !m_Aids.step || m_Aids.step(stage, done);
    }
    [[nodiscard]] ReplacementFile::Step counting(WriteStage stage) const
    {
        return [this, stage](std::uint64_t done, std::uint64_t total) {
            return step(stage, total == 0 ? 0 : std::min(1.0, double(done) / double(total)));
        };
    }

    [[nodiscard]] Result<void> writeStore()
    {
        auto store = StoreFile::open(m_File.path(), StoreFile::Kind::Whole);
        if (!store)
            return store.error();
        const std::size_t count = m_Content.parts.size();
        for (std::size_t i = 0; i < count; ++i) {
            if (!step(WriteStage::Text, double(i) / double(count)))
                return cancelledWriting();
            const std::array<StoreEntry, 1> entry = {std::move(m_Content.parts[i])};
            if (Result<void> done = store.value()->write(entry); !done)
                return done;
        }
        std::vector<StoreEntry> last = {StateSwitch()};
        std::ranges::move(m_Content.values, std::back_inserter(last));
        return store.value()->write(last);
    }

    // What has come to the disk can be read.
    [[nodiscard]] Result<void> checkStore()
    {
        if (!step(WriteStage::Reading, 0))
            return cancelledWriting();
        if (const auto store = StoreReader::open(m_File.path(), StoreReader::Kind::Whole); !store)
            return Failure(FailureKind::System,
                           "was not written, because it cannot be read back: " +
                               store.error().cause,
                           {m_File.fileName()});
        if (!step(WriteStage::Comparing, 0))
            return cancelledWriting();
        m_State = lookAt(m_File.path());
        return {};
    }

    [[nodiscard]] Result<void> place()
    {
        if (m_Aids.expected) {
            const FileChange change = checkFile(m_Target, *m_Aids.expected).change;
            if (change == FileChange::Content || change == FileChange::Replaced)
                return Failure(FailureKind::Refused,
                               "was not written, because another program has changed it meanwhile",
                               {m_File.fileName()});
        }
        if (Result<void> placed = m_File.putInPlace(counting(WriteStage::Placing)); !placed)
            return placed;
        m_Aids.written = m_State;
        if (m_File.remark())
            m_Aids.remarks.push_back(*m_File.remark());
        return {};
    }

    SessionContent m_Content;
    const std::filesystem::path &m_Target;
    WriteAids &m_Aids;
    ReplacementFile m_File;
    std::optional<FileState> m_State;
};

} // namespace

bool isSessionFile(const std::filesystem::path &file)
{
    if (file.extension() == kSessionEnding)
        return true;
    std::error_code error;
    // A pipe is read once.
    if (!std::filesystem::is_regular_file(file, error))
        return false;
    std::array<char, kHeadSize> bytes{};
    if (!std::ifstream(file, std::ios::binary).read(bytes.data(), bytes.size()) ||
        !std::string_view(bytes.data(), bytes.size()).starts_with(kHead))
        return false;
    std::int64_t mark = 0;
    for (std::size_t i = kMarkPlace; i < kHeadSize; ++i)
        mark = mark << 8 | static_cast<unsigned char>(bytes[i]);
    return mark == kStoreMark;
}

Result<void> writeSession(SessionContent content, const std::filesystem::path &file,
                          WriteAids &aids)
{
    if (file.extension() == kCompressedEnding)
        return Failure(FailureKind::Refused,
                       "cannot be written: sessions are not compressed, so that the name cannot "
                       "end in .gz",
                       {formats::cleanText(file.filename().string())});
    return SessionWriting(std::move(content), file, aids).run();
}

} // namespace TAMBO::sessions
