// SPDX-License-Identifier: GPL-3.0-or-later
#include "MarkList.h"

#include "ObjectMarks.h"
#include "StoredObject.h"
#include "ValueBytes.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace TAMBO::sessions {

namespace {

constexpr std::uint64_t kMarkListVersion = 1;
constexpr std::uint64_t kMostIdentity = std::numeric_limits<std::uint32_t>::max();
// More than any machine holds; looking for each takes its time.
constexpr std::uint64_t kMostMarked = std::uint64_t(1) << 26;

} // namespace

// [first, end)
struct MarkList::Run
{
    std::uint32_t first = 0;
    std::uint32_t end = 0;
    std::string_view marks;
};

// Of a chunk.
class MarkList::Reader
{
public:
    explicit Reader(std::string_view bytes) : m_In(bytes) { }

    [[nodiscard]] std::optional<Run> next()
    {
        if (m_In.atEnd())
            return std::nullopt;
        Run run;
        run.first = m_End + static_cast<std::uint32_t>(m_In.number(kNumbersOfChunk));
        run.end = run.first + static_cast<std::uint32_t>(m_In.number(kNumbersOfChunk));
        run.marks = m_In.text();
        if (run.end == run.first || run.end > kNumbersOfChunk)
            m_In.fail("it has objects that cannot be");
        m_End = run.end;
        return m_In.failed() ? std::nullopt : std::optional(run);
    }
    [[nodiscard]] const ValueReader &in() const noexcept { return m_In; }

private:
    ValueReader m_In;
    std::uint32_t m_End = 0;
};

class MarkList::Writer
{
public:
    // Behind all others.
    void add(const Run &run)
    {
        if (run.first >= run.end)
            return;
        if (m_Last.first < m_Last.end && m_Last.end == run.first && m_LastMarks == run.marks) {
            m_Last.end = run.end;
            return;
        }
        flush();
        m_Last = run;
        m_LastMarks = run.marks;
    }
    [[nodiscard]] std::string take()
    {
        flush();
        return m_Out.take();
    }

private:
    void flush()
    {
        if (m_Last.first >= m_Last.end)
            return;
        m_Out.number(m_Last.first - m_End);
        m_Out.number(m_Last.end - m_Last.first);
        m_Out.text(m_LastMarks);
        m_End = m_Last.end;
    }

    ValueWriter m_Out;
    // Its marks are kept beside it: what they were taken from may be gone.
    Run m_Last;
    std::string m_LastMarks;
    std::uint32_t m_End = 0;
};

void MarkList::update(std::span<const StoredObject *const> objects)
{
    std::vector<Changed> changed;
    changed.reserve(objects.size());
    for (const StoredObject *const object : objects)
        changed.emplace_back(object->identity(), object);
    std::ranges::sort(changed);
    for (auto begin = changed.begin(); begin != changed.end();) {
        const std::uint32_t chunk = begin->first / kNumbersOfChunk;
        const auto end = std::find_if(begin, changed.end(), [chunk](const Changed &one) {
            return one.first / kNumbersOfChunk != chunk;
        });
        update(m_Chunks[chunk], {begin, end});
        begin = end;
    }
}

void MarkList::update(std::string &chunk, std::span<const Changed> objects)
{
    Reader before(chunk);
    Writer after;
    std::optional<Run> kept = before.next();
    ObjectMarks marks;
    ValueWriter bytes;
    for (const auto &[identity, object] : objects) {
        const std::uint32_t number = identity % kNumbersOfChunk;
        for (; kept && kept->end <= number; kept = before.next())
            after.add(*kept);
        if (kept && kept->first <= number) {
            after.add({kept->first, number, kept->marks});
            kept->first = number + 1;
        }
        marks.clear();
        object->collectMarks(marks);
        bytes.clear();
        marks.write(bytes);
        after.add({number, number + 1, bytes.bytes()});
    }
    for (; kept; kept = before.next())
        after.add(*kept);
    chunk = after.take();
}

std::string MarkList::bytes() const
{
    if (m_Chunks.empty())
        return {};
    ValueWriter out;
    out.number(kMarkListVersion);
    std::uint32_t next = 0;
    for (const auto &[number, chunk] : m_Chunks) {
        out.number(number - next);
        out.text(chunk);
        next = number + 1;
    }
    return out.take();
}

Result<void> MarkList::forEach(std::string_view bytes, const Visitor &visit)
{
    ValueReader chunks(bytes);
    if (!bytes.empty() && chunks.number() != kMarkListVersion)
        chunks.fail("it was written by a newer version of the program");
    ObjectMarks marks;
    std::uint64_t number = 0;
    std::uint64_t marked = 0;
    for (; !chunks.atEnd(); ++number) {
        number += chunks.number(kMostIdentity / kNumbersOfChunk);
        Reader runs(chunks.text());
        while (const std::optional<Run> run = runs.next()) {
            ValueReader in(run->marks);
            marks.read(in);
            if (!in.atEnd())
                in.fail("there is something behind the marks of an object");
            marked += run->end - run->first;
            if (marked > kMostMarked || number > kMostIdentity / kNumbersOfChunk)
                in.fail("it has objects that cannot be");
            if (in.failed())
                return Failure(FailureKind::BadInput, in.cause());
            const std::uint64_t begin = number * kNumbersOfChunk;
            for (std::uint64_t identity = run->first; identity < run->end; ++identity)
                visit(static_cast<std::uint32_t>(begin + identity), marks);
        }
        if (runs.in().failed())
            return Failure(FailureKind::BadInput, runs.in().cause());
    }
    return chunks.failed() ? Result<void>(Failure(FailureKind::BadInput, chunks.cause()))
                           : Result<void>();
}

} // namespace TAMBO::sessions
