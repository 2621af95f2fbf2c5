// SPDX-License-Identifier: GPL-3.0-or-later
#include "EditBytes.h"

#include <set>
#include <string>

namespace TAMBO {

namespace {

constexpr std::size_t kLongestKind = 100;

} // namespace

// Those side by side take a byte each.
void EditWriter::ascendingNumbers(std::span<const std::size_t> values)
{
    number(values.size());
    std::size_t last = 0;
    for (const std::size_t value : values) {
        number(value - last);
        last = value;
    }
}

std::vector<std::size_t> EditReader::ascendingNumbers()
{
    std::vector<std::size_t> values(count());
    std::size_t next = 0;
    for (std::size_t &value : values) {
        const std::uint64_t step = number();
        if (&value != values.data() && step == 0)
            fail("numbers do not ascend");
        if (step > SIZE_MAX - next)
            fail("a number is too large");
        value = next += step;
    }
    if (failed())
        values.clear();
    return values;
}

const char *EditReader::kind()
{
    // Few, however many edits there are.
    static auto *const known = new std::set<std::string, std::less<>>;
    const std::string_view text = this->text();
    if (text.size() > kLongestKind)
        fail("the kind of a change is too long");
    if (failed())
        return "";
    const auto found = known->find(text);
    return (found != known->end() ? found : known->emplace(text).first)->c_str();
}

Failure EditReader::failure() const
{
    return {FailureKind::BadInput, "A step of undo cannot be read: " + cause() + " (byte " +
                                       std::to_string(place()) + ")."};
}

} // namespace TAMBO
