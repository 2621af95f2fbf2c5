// SPDX-License-Identifier: GPL-3.0-or-later
#include "UnsavedCount.h"

#include "History.h"

#include <charconv>
#include <utility>

namespace TAMBO::app {

std::string UnsavedCount::store() const
{
    return std::to_string(m_History.unsavedSteps());
}

std::optional<std::uint64_t> UnsavedCount::revision() const
{
    const std::uint64_t now = m_History.revision();
    if (std::exchange(m_Seen, now) == now)
        m_Rested = now;
    return m_Rested;
}

std::optional<std::uint64_t> UnsavedCount::read(std::string_view content)
{
    std::uint64_t count = 0;
    const char *const end = content.data() + content.size();
    const auto [last, error] = std::from_chars(content.data(), end, count);
    return error == std::errc() && last == end ? std::optional(count) : std::nullopt;
}

} // namespace TAMBO::app
