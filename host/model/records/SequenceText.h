// SPDX-License-Identifier: GPL-3.0-or-later
// The name and the letters of one sequence in one allocation, from the reader of its file to the
// object that shows it. A million sequences with a string each for both would take half as much
// again as their letters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace TAMBO {

class SequenceText
{
public:
    SequenceText() noexcept = default;
    SequenceText(std::string_view name, std::string_view letters);
    // So many letters, which the caller fills in at once.
    SequenceText(std::string_view name, std::size_t letters);
    SequenceText(SequenceText &&other) noexcept : m_Head(std::exchange(other.m_Head, &s_Empty)) { }
    SequenceText(const SequenceText &other) : SequenceText(other.name(), other.letters()) { }
    ~SequenceText();
    SequenceText &operator=(SequenceText other) noexcept
    {
        std::swap(m_Head, other.m_Head);
        return *this;
    }

    [[nodiscard]] std::string_view name() const noexcept
    {
        return {text() + m_Head->letters, m_Head->name};
    }
    [[nodiscard]] std::string_view letters() const noexcept { return {text(), m_Head->letters}; }
    [[nodiscard]] char letter(std::size_t index) const noexcept { return text()[index]; }
    [[nodiscard]] std::size_t letterCount() const noexcept { return m_Head->letters; }

    [[nodiscard]] char *letterRoom() noexcept { return text(); }

    // The letters move; views of them no longer hold.
    void setName(std::string_view name);

    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    // The letters follow it, and the name them.
    struct Head
    {
        std::uint32_t letters;
        std::uint32_t name;
    };

    [[nodiscard]] char *text() noexcept { return reinterpret_cast<char *>(m_Head + 1); }
    [[nodiscard]] const char *text() const noexcept
    {
        return reinterpret_cast<const char *>(m_Head + 1);
    }

    // Of texts without a character. Nothing is ever written into it.
    static Head s_Empty;

    Head *m_Head = &s_Empty;
};

} // namespace TAMBO
