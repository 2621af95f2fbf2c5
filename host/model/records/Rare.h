// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <utility>

namespace TAMBO {

// A member that nearly always has its type's default value, and takes no room beyond a pointer
// then.
template <typename T> class Rare
{
public:
    Rare() = default;
    Rare(const Rare &other) : m_Value(other.m_Value ? std::make_unique<T>(*other.m_Value) : nullptr)
    { }
    Rare(Rare &&) noexcept = default;
    ~Rare() = default;
    Rare &operator=(Rare other) noexcept
    {
        m_Value = std::move(other.m_Value);
        return *this;
    }
    Rare &operator=(T value)
    {
        if (value == T())
            m_Value.reset();
        else
            change() = std::move(value);
        return *this;
    }

    // Nobody has asked to change it.
    [[nodiscard]] bool isUsual() const noexcept { return m_Value == nullptr; }
    [[nodiscard]] const T &operator*() const noexcept
    {
        static const T usual;
        return m_Value != nullptr ? *m_Value : usual;
    }
    [[nodiscard]] const T *operator->() const noexcept { return &**this; }
    // From here on it takes room.
    [[nodiscard]] T &change()
    {
        if (m_Value == nullptr)
            m_Value = std::make_unique<T>();
        return *m_Value;
    }

private:
    std::unique_ptr<T> m_Value;
};

} // namespace TAMBO
