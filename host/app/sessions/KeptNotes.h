// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of objects beside what they are, as a value of a session.
#pragma once

#include "KeptValue.h"
#include "ObjectNotes.h"

namespace TAMBO {
class ValueReader;
} // namespace TAMBO

namespace TAMBO::app {

class KeptNotes final : public sessions::KeptValue
{
public:
    // They outlive this.
    explicit KeptNotes(ObjectNotes &notes) : m_Notes(notes) { }

    [[nodiscard]] std::string name() const override { return "notes"; }
    [[nodiscard]] std::string store() const override;
    [[nodiscard]] Result<void> load(std::string_view content, const ObjectIndex &objects) override;
    [[nodiscard]] std::optional<std::uint64_t> revision() const override;
    void clear() override;

private:
    [[nodiscard]] static ObjectNotes::Notes read(ValueReader &in);

    ObjectNotes &m_Notes;
};

} // namespace TAMBO::app
