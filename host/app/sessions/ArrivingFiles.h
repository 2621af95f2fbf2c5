// SPDX-License-Identifier: GPL-3.0-or-later
// The files that are being opened, as a value of a session, until what was in them is kept itself.
// Those of a workbench that ended before are opened again when its work is recovered.
#pragma once

#include "KeptValue.h"

#include <QString>
#include <QStringList>

#include <filesystem>
#include <functional>
#include <utility>
#include <vector>

namespace TAMBO::app {

class ArrivingFiles final : public sessions::KeptValue
{
public:
    using Paths = std::vector<std::filesystem::path>;

    // Of the value in a store.
    static constexpr std::string_view kName = "arriving";

    // Asked whether everything that has arrived has been handed over to be kept.
    void setIsKept(std::function<bool()> isKept) { m_IsKept = std::move(isKept); }

    void begin(const Paths &files);
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
        bool hasEnded = false;
    };

    std::function<bool()> m_IsKept;
    mutable std::vector<Arriving> m_Files;
    QStringList m_Left;
};

} // namespace TAMBO::app
