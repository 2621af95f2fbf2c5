// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueNumbers.h"

#include "ValueBytes.h"

#include <algorithm>
#include <limits>

namespace TAMBO {

namespace {

// Saturates, as SequenceNumber itself does.
SequenceNumber numberAfter(int number, char code, std::size_t steps)
{
    if (steps == 0)
        return SequenceNumber(number, code);
    const std::int64_t sum = std::int64_t(number) + std::int64_t(steps);
    return SequenceNumber(
        static_cast<int>(std::min<std::int64_t>(sum, std::numeric_limits<int>::max())));
}

} // namespace

std::size_t ResidueNumbers::runOf(std::size_t index) const noexcept
{
    const auto after = std::ranges::upper_bound(m_Runs, index, {}, &Run::first);
    return static_cast<std::size_t>(after - m_Runs.begin()) - 1;
}

SequenceNumber ResidueNumbers::at(std::size_t index) const
{
    if (m_Runs.empty())
        return numberAfter(1, ' ', index);
    const Run &run = m_Runs[runOf(index)];
    return numberAfter(run.number, run.code, index - run.first);
}

bool ResidueNumbers::follows(std::size_t run, std::size_t index, const SequenceNumber &number) const
{
    const Run &before = m_Runs[run];
    return numberAfter(before.number, before.code, index - before.first) == number;
}

void ResidueNumbers::append(std::size_t index, const SequenceNumber &number)
{
    if (m_Runs.empty() || !follows(m_Runs.size() - 1, index, number))
        m_Runs.push_back(
            {static_cast<std::uint32_t>(index), number.number(), number.insertionCode()});
}

void ResidueNumbers::set(std::size_t index, const SequenceNumber &number, std::size_t count)
{
    if (m_Runs.empty())
        m_Runs.push_back({0, 1, ' '});
    const bool hasNext = index + 1 < count;
    const SequenceNumber next = hasNext ? at(index + 1) : SequenceNumber();

    std::size_t place = runOf(index);
    if (m_Runs[place].first < index)
        ++place;
    // The runs that begin at the residue and the one after it are made anew where needed.
    const auto from = m_Runs.begin() + std::ptrdiff_t(place);
    const auto to =
        std::find_if(from, m_Runs.end(), [&](const Run &run) { return run.first > index + 1; });
    m_Runs.erase(from, to);

    const auto put = [this, &place](std::size_t first, const SequenceNumber &value) {
        if (place > 0 && follows(place - 1, first, value))
            return;
        m_Runs.insert(m_Runs.begin() + std::ptrdiff_t(place),
                      {static_cast<std::uint32_t>(first), value.number(), value.insertionCode()});
        ++place;
    };
    put(index, number);
    if (hasNext)
        put(index + 1, next);
    // What followed may now continue the run before it.
    if (place < m_Runs.size() && place > 0) {
        const Run &following = m_Runs[place];
        if (follows(place - 1, following.first, SequenceNumber(following.number, following.code)))
            m_Runs.erase(m_Runs.begin() + std::ptrdiff_t(place));
    }
}

bool ResidueNumbers::isDefault() const noexcept
{
    return m_Runs.empty() || (m_Runs.size() == 1 && m_Runs[0].number == 1 && m_Runs[0].code == ' ');
}

void ResidueNumbers::write(ValueWriter &out) const
{
    out.number(m_Runs.size());
    std::uint32_t last = 0;
    for (const Run &run : m_Runs) {
        out.number(run.first - last);
        out.signedNumber(run.number);
        out.character(run.code);
        last = run.first;
    }
}

ResidueNumbers ResidueNumbers::read(ValueReader &in, std::size_t count)
{
    using Limits = std::numeric_limits<std::int32_t>;
    constexpr std::size_t kLeastBytes = 3;
    ResidueNumbers numbers;
    const std::size_t runs = in.count(kLeastBytes);
    numbers.m_Runs.reserve(runs);
    std::size_t first = 0;
    for (std::size_t i = 0; i < runs && !in.failed(); ++i) {
        const std::uint64_t step = in.number(count);
        first += step;
        const auto number =
            static_cast<std::int32_t>(in.signedNumber(Limits::min(), Limits::max()));
        const char code = in.character();
        // The first run begins with the first residue.
        if ((step == 0) != (i == 0) || first >= count)
            in.fail("residue numbers are out of order");
        numbers.m_Runs.push_back({static_cast<std::uint32_t>(first), number, code});
    }
    return numbers;
}

std::size_t ResidueNumbers::bytes() const noexcept
{
    return sizeof(*this) + m_Runs.capacity() * sizeof(Run);
}

} // namespace TAMBO
