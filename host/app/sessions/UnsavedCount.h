// SPDX-License-Identifier: GPL-3.0-or-later
// How many changes are in no file, for people who are asked later whether they want them back.
#pragma once

#include "KeptValue.h"

namespace TAMBO {
class History;
}

namespace TAMBO::app {

class UnsavedCount final : public sessions::KeptValue
{
public:
    // Of the value in a store.
    static constexpr std::string_view kName = "unsaved";

    explicit UnsavedCount(const History &history) : m_History(history) { }

    [[nodiscard]] std::string name() const override { return std::string(kName); }
    [[nodiscard]] bool isForFiles() const override { return false; }
    [[nodiscard]] std::string store() const override;
    [[nodiscard]] Result<void> load(std::string_view, const ObjectIndex &) override { return {}; }
    // Changes when the history did and has rested since: each step is looked at.
    [[nodiscard]] std::optional<std::uint64_t> revision() const override;

    // Nothing for what is no number.
    [[nodiscard]] static std::optional<std::uint64_t> read(std::string_view content);

private:
    const History &m_History;
    mutable std::uint64_t m_Seen = 0;
    mutable std::uint64_t m_Rested = 0;
};

} // namespace TAMBO::app
