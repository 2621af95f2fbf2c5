// SPDX-License-Identifier: GPL-3.0-or-later
// A value, or the reason why there is none: std::expected's interface for the one error we have.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace TAMBO {

// message is one sentence for the user, ready to be shown: for bad input it names file, line and
// cause ("x.ali:7: ...").
struct Failure
{
    std::string message;
};

template <typename T> class [[nodiscard]] Result
{
public:
    Result(T value) : m_Content(std::move(value)) { }
    Result(Failure failure) : m_Content(std::move(failure)) { }

    [[nodiscard]] bool has_value() const noexcept { return m_Content.index() == 0; }
    [[nodiscard]] explicit operator bool() const noexcept { return has_value(); }
    [[nodiscard]] T &value() & { return std::get<0>(m_Content); }
    [[nodiscard]] const T &value() const & { return std::get<0>(m_Content); }
    [[nodiscard]] T &&value() && { return std::get<0>(std::move(m_Content)); }
    [[nodiscard]] T *operator->() { return &std::get<0>(m_Content); }
    [[nodiscard]] const Failure &error() const { return std::get<1>(m_Content); }

private:
    std::variant<T, Failure> m_Content;
};

} // namespace TAMBO
