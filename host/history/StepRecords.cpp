// SPDX-License-Identifier: GPL-3.0-or-later
#include "StepRecords.h"

#include <utility>

namespace TAMBO {

StepRecords::StepRecords(EditWriter &writer, Sink sink) : m_Writer(writer), m_Sink(std::move(sink))
{ }

StepRecords::~StepRecords() = default;

void StepRecords::begin(Kind kind)
{
    m_Writer.clear();
    m_Writer.character(static_cast<char>(kind));
}

void StepRecords::end()
{
    m_Sink(m_Writer.take());
}

std::string StepRecords::store(const Edit &inverse)
{
    m_Writer.clear();
    inverse.storeInverse(m_Writer);
    return m_Writer.take();
}

void StepRecords::stepEnds(StoredStep &&step)
{
    begin(Kind::Step);
    m_Writer.text(step.name);
    m_Writer.number(step.own);
    m_Writer.number(step.edits.size());
    std::size_t bytes = 0;
    for (const std::string &edit : step.edits)
        bytes += edit.size() + ValueWriter::kLongestNumber;
    m_Writer.reserve(bytes);
    for (const std::string &edit : step.edits)
        m_Writer.text(edit);
    end();
}

StepRecords::Step StepRecords::loadStep(EditReader &in)
{
    Step step;
    step.name = in.text();
    step.own = in.number();
    step.edits.resize(in.count());
    for (std::string_view &edit : step.edits)
        edit = in.text();
    if (step.own > step.edits.size() || step.own == 0 || !in.atEnd())
        in.fail("the changes of a step are damaged");
    return step;
}

void StepRecords::travelled(std::size_t steps)
{
    begin(Kind::Travel);
    m_Writer.number(steps);
    end();
}

void StepRecords::forgotten(bool isFirst)
{
    begin(Kind::Forgotten);
    m_Writer.flag(isFirst);
    end();
}

void StepRecords::cleared()
{
    begin(Kind::Cleared);
    end();
}

void StepRecords::marked(const Compound &object, const StateMark &mark)
{
    begin(Kind::Mark);
    m_Writer.reference(object);
    m_Writer.flag(mark.isSaved);
    m_Writer.number(mark.steps);
    m_Writer.number(mark.lost.number());
    end();
}

StateMark StepRecords::loadMark(EditReader &in)
{
    StateMark mark;
    mark.isSaved = in.flag();
    mark.steps = in.number();
    mark.lost = EditParts::ofNumber(static_cast<std::uint32_t>(in.number(~std::uint32_t(0))));
    if (!in.atEnd())
        in.fail("a mark is damaged");
    return mark;
}

} // namespace TAMBO
