// SPDX-License-Identifier: GPL-3.0-or-later
// Values as bytes, and back: what is kept between two runs of the program is made of these. The
// bytes are the same on every machine. They say nothing of what they mean, so both sides go through
// the same values in the same order.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace TAMBO {

class ValueWriter
{
public:
    // In bytes.
    static constexpr std::size_t kLongestNumber = 10;

    // Small numbers take one byte, and one more for each further seven bits.
    void number(std::uint64_t value)
    {
        char bytes[kLongestNumber];
        std::size_t count = 0;
        for (; value > kLowBits; value >>= kBits)
            bytes[count++] = static_cast<char>(value | kMore);
        bytes[count++] = static_cast<char>(value);
        m_Bytes.append(bytes, count);
    }
    // Small whatever the sign.
    void signedNumber(std::int64_t value)
    {
        const auto bits = static_cast<std::uint64_t>(value);
        number(value < 0 ? ~(bits << 1) : bits << 1);
    }
    void flag(bool value) { m_Bytes.push_back(value ? '\1' : '\0'); }
    void character(char value) { m_Bytes.push_back(value); }
    // To the last bit.
    void real(float value) { fixed(std::bit_cast<std::uint32_t>(value)); }
    void real(double value) { fixed(std::bit_cast<std::uint64_t>(value)); }
    void text(std::string_view value)
    {
        number(value.size());
        m_Bytes.append(value);
    }
    // Without their length, which the reader has to know.
    void raw(std::string_view bytes) { m_Bytes.append(bytes); }
    void words(std::span<const std::uint64_t> values)
    {
        if constexpr (std::endian::native == std::endian::little) {
            m_Bytes.append(reinterpret_cast<const char *>(values.data()), values.size_bytes());
        } else {
            for (const std::uint64_t value : values)
                fixed(value);
        }
    }

    [[nodiscard]] const std::string &bytes() const noexcept { return m_Bytes; }
    [[nodiscard]] std::size_t size() const noexcept { return m_Bytes.size(); }
    // Room for so many bytes more, which are then not copied as they come.
    void reserve(std::size_t more) { m_Bytes.reserve(m_Bytes.size() + more); }
    // Begins anew.
    [[nodiscard]] std::string take() noexcept { return std::exchange(m_Bytes, {}); }
    // The same, and keeps the room for what comes next.
    void clear() noexcept { m_Bytes.clear(); }

private:
    friend class ValueReader;

    static constexpr unsigned kBits = 7;
    static constexpr std::uint64_t kLowBits = 0x7f;
    static constexpr std::uint64_t kMore = 0x80;

    template <typename Word> void fixed(Word value)
    {
        char bytes[sizeof(Word)];
        for (char &byte : bytes) {
            byte = static_cast<char>(value & 0xff);
            value >>= 8;
        }
        m_Bytes.append(bytes, sizeof(Word));
    }

    std::string m_Bytes;
};

// Of bytes that anybody may have written. What is not there, or cannot have been written, fails;
// from the first failure on every value is empty, so that the caller need look only now and then,
// and once before it believes what it has read.
class ValueReader
{
public:
    // The bytes outlive this.
    explicit ValueReader(std::string_view bytes) noexcept : m_Bytes(bytes) { }

    [[nodiscard]] std::uint64_t number()
    {
        std::uint64_t value = 0;
        for (unsigned shift = 0;; shift += ValueWriter::kBits) {
            if (m_Place == m_Bytes.size()) {
                fail(kTooShort);
                return 0;
            }
            const auto byte = static_cast<unsigned char>(m_Bytes[m_Place++]);
            const std::uint64_t low = byte & ValueWriter::kLowBits;
            const bool isLast = low == byte;
            const bool isTooLong = !isLast && shift + ValueWriter::kBits >= kNumberBits;
            const bool isPadded = isLast && low == 0 && shift > 0;
            if (isTooLong || isPadded || (low << shift >> shift) != low) {
                fail("a number is damaged");
                return 0;
            }
            value |= low << shift;
            if (isLast)
                return value;
        }
    }
    // One that is not above the limit.
    [[nodiscard]] std::uint64_t number(std::uint64_t most)
    {
        const std::uint64_t value = number();
        if (value <= most)
            return value;
        fail("a number is too large");
        return 0;
    }
    [[nodiscard]] std::int64_t signedNumber()
    {
        const std::uint64_t value = number();
        return static_cast<std::int64_t>((value & 1) != 0 ? ~(value >> 1) : value >> 1);
    }
    // Between two limits, both of which belong to it.
    [[nodiscard]] std::int64_t signedNumber(std::int64_t least, std::int64_t most)
    {
        const std::int64_t value = signedNumber();
        if (value >= least && value <= most)
            return value;
        fail("a number is out of bounds");
        return 0;
    }
    // Of things each of which takes so many bytes at least: so many can be there, and a caller may
    // make room for them.
    [[nodiscard]] std::size_t count(std::size_t leastBytes = 1)
    {
        const std::uint64_t value = number();
        if (value <= left() / leastBytes)
            return value;
        fail(kTooShort);
        return 0;
    }
    [[nodiscard]] bool flag()
    {
        const char value = character();
        if (value == '\0' || value == '\1')
            return value == '\1';
        fail("a flag is damaged");
        return false;
    }
    [[nodiscard]] char character()
    {
        const std::string_view value = raw(1);
        return value.empty() ? '\0' : value.front();
    }
    [[nodiscard]] float real32() { return std::bit_cast<float>(fixed<std::uint32_t>()); }
    [[nodiscard]] double real64() { return std::bit_cast<double>(fixed<std::uint64_t>()); }
    // A part of the bytes.
    [[nodiscard]] std::string_view text() { return raw(number()); }
    // As the system spells it.
    [[nodiscard]] std::string_view fileName()
    {
        const std::string_view name = text();
        if (name.find('\0') == std::string_view::npos)
            return name;
        fail("a file has a name that no file can have");
        return {};
    }
    [[nodiscard]] std::string_view raw(std::uint64_t size)
    {
        if (size > left()) {
            fail(kTooShort);
            return {};
        }
        const std::string_view value = m_Bytes.substr(m_Place, size);
        m_Place += size;
        return value;
    }
    // As many as the values are; they are left alone when there are fewer.
    void words(std::span<std::uint64_t> values)
    {
        if (values.size() > left() / sizeof(std::uint64_t))
            return fail(kTooShort);
        if constexpr (std::endian::native == std::endian::little) {
            if (!values.empty())
                std::memcpy(values.data(), m_Bytes.data() + m_Place, values.size_bytes());
            m_Place += values.size_bytes();
        } else {
            for (std::uint64_t &value : values)
                value = fixed<std::uint64_t>();
        }
    }

    // How many bytes are still to be read; none after a failure.
    [[nodiscard]] std::size_t left() const noexcept { return m_Bytes.size() - m_Place; }
    [[nodiscard]] bool atEnd() const noexcept { return left() == 0; }
    // Of the next value, or of the first failure.
    [[nodiscard]] std::size_t place() const noexcept { return m_HasFailed ? m_FailedAt : m_Place; }

    [[nodiscard]] bool failed() const noexcept { return m_HasFailed; }
    // Also for a caller to whom values mean nothing that can be. The first cause stays.
    void fail(std::string_view cause)
    {
        if (m_HasFailed)
            return;
        m_HasFailed = true;
        m_Cause = cause;
        m_FailedAt = m_Place;
        m_Place = m_Bytes.size();
    }
    // "a number is damaged"; empty without a failure.
    [[nodiscard]] const std::string &cause() const noexcept { return m_Cause; }

private:
    static constexpr unsigned kNumberBits = std::numeric_limits<std::uint64_t>::digits;
    static constexpr std::string_view kTooShort = "the end is missing";

    template <typename Word> [[nodiscard]] Word fixed()
    {
        Word value = 0;
        const std::string_view bytes = raw(sizeof(Word));
        for (std::size_t i = bytes.size(); i-- > 0;)
            value = static_cast<Word>(value << 8) | static_cast<unsigned char>(bytes[i]);
        return value;
    }

    std::string_view m_Bytes;
    std::size_t m_Place = 0;
    bool m_HasFailed = false;
    std::size_t m_FailedAt = 0;
    std::string m_Cause;
};

} // namespace TAMBO
