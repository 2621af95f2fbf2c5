// SPDX-License-Identifier: GPL-3.0-or-later
// A value, or the reason why there is none: std::expected's interface for the one error we have.
// Of what gives no value, that it was done, or the reason why not.
#pragma once

#include "Failure.h"

#include <optional>
#include <utility>
#include <variant>

namespace TAMBO {

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

template <> class [[nodiscard]] Result<void>
{
public:
    Result() = default;
    Result(Failure failure) : m_Failure(std::move(failure)) { }

    [[nodiscard]] bool has_value() const noexcept { return !m_Failure; }
    [[nodiscard]] explicit operator bool() const noexcept { return has_value(); }
    [[nodiscard]] const Failure &error() const { return m_Failure.value(); }

private:
    std::optional<Failure> m_Failure;
};

} // namespace TAMBO
