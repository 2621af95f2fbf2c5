// SPDX-License-Identifier: GPL-3.0-or-later
#include "ContentHash.h"

#include <algorithm>
#include <cstring>

namespace TAMBO {

namespace {

constexpr std::size_t kHashWord = sizeof(std::uint64_t);

// One to one for each word, so that contents that differ in one word alone never come out the same.
std::uint64_t mixed(std::uint64_t state, const char *bytes) noexcept
{
    constexpr std::uint64_t spread = 0x9e3779b97f4a7c15U;
    constexpr unsigned half = 32;
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, kHashWord);
    state = (state ^ word) * spread;
    return state ^ (state >> half);
}

} // namespace

void ContentHash::add(std::string_view bytes) noexcept
{
    const std::size_t filled = m_Size % kHashWord;
    m_Size += bytes.size();
    if (filled > 0) {
        const std::size_t count = std::min(kHashWord - filled, bytes.size());
        std::copy_n(bytes.data(), count, m_Rest.data() + filled);
        bytes.remove_prefix(count);
        if (filled + count < kHashWord)
            return;
        m_State = mixed(m_State, m_Rest.data());
    }
    for (; bytes.size() >= kHashWord; bytes.remove_prefix(kHashWord))
        m_State = mixed(m_State, bytes.data());
    std::ranges::copy(bytes, m_Rest.data());
}

std::uint64_t ContentHash::value() const noexcept
{
    std::array<char, kHashWord> last{};
    std::copy_n(m_Rest.data(), m_Size % kHashWord, last.data());
    std::array<char, kHashWord> size{};
    std::memcpy(size.data(), &m_Size, kHashWord);
    return mixed(mixed(m_State, last.data()), size.data());
}

} // namespace TAMBO
