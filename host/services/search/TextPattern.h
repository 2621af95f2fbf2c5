// SPDX-License-Identifier: GPL-3.0-or-later
// A regular expression that is looked for in the texts of rows, and can be given up at any time.
#pragma once

#include "ExpressionEngine.h"

#include <QString>

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace TAMBO::services {

class TextPattern
{
public:
    enum class End {
        Whole,
        // Behind an empty match the search would never get on.
        EmptyMatch,
        Cancelled,
        // A place costs more than the limits allow.
        GaveUp
    };
    struct Outcome
    {
        End end = End::Whole;
        // The place at which the search was given up, and what the engine says of it.
        std::size_t place = 0;
        QString reason;
    };

    explicit TextPattern(const QString &text);
    ~TextPattern();
    TextPattern(const TextPattern &) = delete;
    TextPattern &operator=(const TextPattern &) = delete;

    // Whether the text is a regular expression; the failure says what is wrong with it, and where.
    // One that is none matches nothing.
    [[nodiscard]] const Result<void> &validity() const noexcept { return m_Engine->validity(); }

    // Calls visit(begin, length) for each match, of which none overlaps the one before. In one
    // thread at a time; the flag may be set by any.
    using Visitor = std::function<void(unsigned long, unsigned long)>;
    [[nodiscard]] Outcome forEachMatch(const std::string &row, const Visitor &visit,
                                       const std::atomic<bool> &isCancelled);

private:
    void findPlain(const std::string &row, const Visitor &visit) const;
    [[nodiscard]] ExpressionEngine::Answer findInTime(const QString &text, std::size_t first,
                                                      std::size_t last);

    // The text when no character of it has a meaning of its own.
    std::optional<std::string> m_Plain;
    std::unique_ptr<ExpressionEngine> m_Engine;
    // How many places are tried at a time; by how long that takes.
    std::size_t m_Slice;
};

} // namespace TAMBO::services
