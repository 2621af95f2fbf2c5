// SPDX-License-Identifier: GPL-3.0-or-later
// A journal that turns what it is told into records of bytes, which HistoryReplay does again one
// after the other.
#pragma once

#include "EditBytes.h"
#include "StepJournal.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

class StepRecords final : public StepJournal
{
public:
    // What a record begins with.
    enum class Kind : char { Step = 's', Travel = 't', Forgotten = 'f', Cleared = 'c', Mark = 'm' };
    using Sink = std::function<void(std::string record)>;

    // The writer, which says how objects are stored, is used for one thing after the other.
    StepRecords(EditWriter &writer, Sink sink);
    ~StepRecords() override;

    std::string store(const Edit &inverse) override;
    void stepEnds(StoredStep &&step) override;
    void travelled(std::size_t steps) override;
    void forgotten(bool isFirst) override;
    void cleared() override;
    void marked(const Compound &object, const StateMark &mark) override;

    // A StoredStep as parts of the bytes.
    struct Step
    {
        std::string_view name;
        std::size_t own = 0;
        std::vector<std::string_view> edits;
    };

    // What stands in a record behind its kind, and, of a mark, behind its object.
    [[nodiscard]] static Step loadStep(EditReader &in);
    [[nodiscard]] static StateMark loadMark(EditReader &in);

private:
    void begin(Kind kind);
    void end();

    EditWriter &m_Writer;
    Sink m_Sink;
};

} // namespace TAMBO
