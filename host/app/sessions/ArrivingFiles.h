// SPDX-License-Identifier: GPL-3.0-or-later
// The files that are being opened, as a value of a session, until what was in them is kept itself.
// Those of a workbench that ended before are opened again when its work is recovered.
#pragma once

#include "KeptValue.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace TAMBO::app {

class ArrivingFiles final : public sessions::KeptValue
{
public:
    using Paths = std::vector<std::filesystem::path>;

    // Of the value in a store.
    static constexpr std::string_view kName = "arriving";

    // Asked how many records of changes there have been, and whether so many of them have been
    // handed over to be kept. Without somebody to ask nothing is kept, and nothing waits for it.
    struct Records
    {
        std::function<std::uint64_t()> count;
        std::function<bool(std::uint64_t records)> areKept;
    };
    void setRecords(Records records) { m_Records = std::move(records); }
    // Records are counted anew.
    void recordsBegin();

    void begin(const Paths &files);
    // Their objects come with the change that is under way, whose record is the next one. It must
    // not be kept in one go and this value in another: a crash in between would open them twice.
    void comeWithNextRecord(const Paths &files);
    // They are open now, or cannot be opened.
    void end(const Paths &files);
    // Of the session that was loaded; once.
    [[nodiscard]] QStringList takeLeft() { return std::exchange(m_Left, {}); }

    // What a value says; empty for one that says nothing.
    [[nodiscard]] static QStringList filesIn(std::string_view content);

    [[nodiscard]] std::string name() const override { return std::string(kName); }
    [[nodiscard]] bool isForFiles() const override { return false; }
    [[nodiscard]] std::string store() const override;
    // What is kept must not be opened once more.
    [[nodiscard]] bool followsSteps() const override { return true; }
    [[nodiscard]] Result<void> load(std::string_view content, const ObjectIndex &objects) override;

private:
    struct Arriving
    {
        std::filesystem::path file;
        // By which all that was in it is kept, once that is known.
        std::optional<std::uint64_t> records;
        bool hasEnded = false;
    };

    [[nodiscard]] std::uint64_t recordCount() const
    {
        return m_Records.count ? m_Records.count() : 0;
    }
    // The first of that name for which it is so.
    template <typename Condition>
    [[nodiscard]] Arriving *find(const std::filesystem::path &file, Condition condition);

    Records m_Records;
    mutable std::vector<Arriving> m_Files;
    QStringList m_Left;
};

} // namespace TAMBO::app
