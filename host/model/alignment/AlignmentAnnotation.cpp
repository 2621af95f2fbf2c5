// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentAnnotation.h"

#include "TextBytes.h"
#include "ValueBytes.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

AlignmentAnnotation::AlignmentAnnotation(std::vector<Annotation> remarks,
                                         std::vector<Annotation> lines)
    : m_Remarks(std::move(remarks)), m_Lines(std::move(lines))
{ }

std::vector<Annotation> AlignmentAnnotation::lines(Column width) const
{
    std::vector<Annotation> result = m_Lines;
    for (Annotation &line : result)
        line.text.resize(width, kNothing);
    return result;
}

std::vector<std::string> AlignmentAnnotation::tags() const
{
    std::vector<std::string> result;
    result.reserve(m_Lines.size());
    for (const Annotation &line : m_Lines)
        result.push_back(line.tag);
    return result;
}

std::string AlignmentAnnotation::text(std::size_t line, Column begin, Column count) const
{
    if (line >= m_Lines.size())
        return {};
    const std::string &known = m_Lines[line].text;
    std::string text = begin < known.size() ? known.substr(begin, count) : "";
    text.resize(count, kNothing);
    return text;
}

std::vector<std::string> AlignmentAnnotation::texts(Column begin, Column count) const
{
    std::vector<std::string> result;
    result.reserve(m_Lines.size());
    for (std::size_t line = 0; line < m_Lines.size(); ++line)
        result.push_back(text(line, begin, count));
    return result;
}

void AlignmentAnnotation::setTexts(Column begin, const std::vector<std::string> &texts)
{
    for (std::size_t i = 0; i < m_Lines.size(); ++i) {
        std::string &line = m_Lines[i].text;
        const Column end = begin + texts[i].size();
        if (line.size() < end)
            line.resize(end, kNothing);
        std::ranges::copy(texts[i], line.begin() + std::ptrdiff_t(begin));
    }
}

void AlignmentAnnotation::insertColumns(Column column, Column count)
{
    for (Annotation &line : m_Lines) {
        if (column < line.text.size())
            line.text.insert(column, count, kNothing);
    }
}

void AlignmentAnnotation::removeColumns(Column column, Column count)
{
    for (Annotation &line : m_Lines) {
        if (column < line.text.size())
            line.text.erase(column, count);
    }
}

void AlignmentAnnotation::openColumns(const std::vector<GapRun> &runs)
{
    for (Annotation &line : m_Lines) {
        Column added = 0;
        for (auto run = runs.begin(); run != runs.end() && run->column < line.text.size(); ++run)
            added += run->count;
        std::string opened;
        opened.reserve(line.text.size() + added);
        Column done = 0;
        for (const GapRun &run : runs) {
            if (run.column >= line.text.size())
                break;
            opened.append(line.text, done, run.column - done);
            opened.append(run.count, kNothing);
            done = run.column;
        }
        opened.append(line.text, done);
        line.text = std::move(opened);
    }
}

void AlignmentAnnotation::closeColumns(const std::vector<GapRun> &runs)
{
    for (Annotation &line : m_Lines) {
        std::string kept;
        kept.reserve(line.text.size());
        Column done = 0;
        Column closed = 0;
        for (const GapRun &run : runs) {
            const Column begin = run.column + closed;
            if (begin >= line.text.size())
                break;
            kept.append(line.text, done, begin - done);
            done = std::min<Column>(begin + run.count, line.text.size());
            closed += run.count;
        }
        kept.append(line.text, done);
        line.text = std::move(kept);
    }
}

std::uint64_t AlignmentAnnotation::characters() const noexcept
{
    std::uint64_t sum = 0;
    for (const Annotation &line : m_Lines)
        sum += line.text.size();
    return sum;
}

std::uint64_t AlignmentAnnotation::linesBehind(Column column) const noexcept
{
    return std::uint64_t(std::ranges::count_if(
        m_Lines, [column](const Annotation &line) { return line.text.size() > column; }));
}

std::size_t AlignmentAnnotation::bytes() const noexcept
{
    return sizeof(*this) + bytesOf(m_Remarks) + bytesOf(m_Lines);
}

std::size_t bytesOf(const std::vector<Annotation> &annotations) noexcept
{
    std::size_t sum = annotations.capacity() * sizeof(Annotation);
    for (const Annotation &annotation : annotations)
        sum += textBytes(annotation.tag) + textBytes(annotation.text);
    return sum;
}

void AlignmentAnnotation::write(ValueWriter &out) const
{
    writeAnnotations(m_Remarks, out);
    writeAnnotations(m_Lines, out);
}

std::unique_ptr<AlignmentAnnotation> AlignmentAnnotation::read(ValueReader &in)
{
    std::vector<Annotation> remarks = readAnnotations(in);
    return std::make_unique<AlignmentAnnotation>(std::move(remarks), readAnnotations(in));
}

void writeAnnotations(const std::vector<Annotation> &annotations, ValueWriter &out)
{
    out.number(annotations.size());
    for (const Annotation &annotation : annotations) {
        out.text(annotation.tag);
        out.text(annotation.text);
    }
}

std::vector<Annotation> readAnnotations(ValueReader &in)
{
    std::vector<Annotation> annotations;
    const std::size_t count = in.count(2);
    annotations.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::string tag(in.text());
        annotations.push_back({std::move(tag), std::string(in.text())});
    }
    return annotations;
}

} // namespace TAMBO
