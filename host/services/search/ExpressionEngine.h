// SPDX-License-Identifier: GPL-3.0-or-later
// A regular expression in both forms of the engine: compiled, which is fast and cannot be
// interrupted, and interpreted, which can. In the syntax of the toolkit, whose engine it is.
#pragma once

#include "Result.h"

#include <QString>

#include <atomic>
#include <cstddef>
#include <memory>

namespace TAMBO::services {

class ExpressionEngine
{
public:
    enum class Answer { Match, NoMatch, TooCostly, Cancelled };

    explicit ExpressionEngine(const QString &expression);
    ~ExpressionEngine();
    ExpressionEngine(const ExpressionEngine &) = delete;
    ExpressionEngine &operator=(const ExpressionEngine &) = delete;

    // Whether it is a regular expression; otherwise it must not be looked for.
    [[nodiscard]] const Result<void> &validity() const noexcept { return m_Validity; }
    // False for an expression that refers to the place where the search began, or that has a say in
    // where it goes on. Such a search has to have all places at once.
    [[nodiscard]] bool canBeSliced() const noexcept { return m_CanBeSliced; }

    // Looks for a match that begins at one of the places [first, last] of the text, beginnings to
    // the left preferred.
    [[nodiscard]] Answer findFast(const QString &text, std::size_t first, std::size_t last);
    [[nodiscard]] Answer findPatiently(const QString &text, std::size_t first, std::size_t last,
                                       const std::atomic<bool> &isCancelled);
    // Of the last match.
    [[nodiscard]] std::size_t begin() const;
    [[nodiscard]] std::size_t end() const;
    // Why the last search was too costly.
    [[nodiscard]] QString reason() const;

private:
    struct Form;

    [[nodiscard]] Answer find(Form &form, const QString &text, std::size_t first, std::size_t last);

    QString m_Expression;
    Result<void> m_Validity;
    bool m_CanBeSliced;
    std::unique_ptr<Form> m_Compiled;
    // Made when it is first needed.
    std::unique_ptr<Form> m_Interpreted;
    const Form *m_Latest = nullptr;
    int m_Code = 0;
};

} // namespace TAMBO::services
