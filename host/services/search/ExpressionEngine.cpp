// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExpressionEngine.h"

#include <QCoreApplication>

#include <array>
#include <cstdint>

#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

namespace TAMBO::services {

namespace {

// What the search at one place may cost. Compiled, 200,000 steps are a few milliseconds; who takes
// more is tried once more by the form that can be interrupted.
constexpr std::uint32_t kCompiledSteps = 200'000;
constexpr std::uint32_t kSteps = 10'000'000;
constexpr std::uint32_t kKibibytes = 256U * 1024;
// An expression such as (A|-)* takes some bytes a column.
constexpr std::size_t kFirstStack = std::size_t(32) * 1024;
constexpr std::size_t kLargestStack = std::size_t(16) * 1024 * 1024;

PCRE2_SPTR16 unitsOf(const QString &text)
{
    return reinterpret_cast<PCRE2_SPTR16>(text.utf16());
}

QString messageOf(int code)
{
    std::array<PCRE2_UCHAR16, 256> message{};
    const int length = pcre2_get_error_message_16(code, message.data(), message.size());
    return length < 0
               ? QString::number(code)
               : QString::fromUtf16(reinterpret_cast<const char16_t *>(message.data()), length);
}

template <auto Release> struct Releaser
{
    template <typename Object> void operator()(Object *object) const { Release(object); }
};
template <typename Object, auto Release> using Owned = std::unique_ptr<Object, Releaser<Release>>;

int stopWhenCancelled(pcre2_callout_block_16 * /*place*/, void *flag)
{
    const bool stops =
        static_cast<const std::atomic<bool> *>(flag)->load(std::memory_order_relaxed);
    return stops ? PCRE2_ERROR_CALLOUT : 0;
}

} // namespace

struct ExpressionEngine::Form
{
    Form(const QString &expression, std::uint32_t options)
    {
        code.reset(pcre2_compile_16(unitsOf(expression), std::size_t(expression.size()),
                                    PCRE2_UTF | PCRE2_USE_OFFSET_LIMIT | options, &error,
                                    &errorPlace, nullptr));
        if (!code)
            return;
        match.reset(pcre2_match_data_create_from_pattern_16(code.get(), nullptr));
        context.reset(pcre2_match_context_create_16(nullptr));
        pcre2_set_match_limit_16(context.get(), kSteps);
        pcre2_set_heap_limit_16(context.get(), kKibibytes);
    }

    // False when this computer's processor is one that the engine cannot compile for.
    bool compile()
    {
        if (pcre2_jit_compile_16(code.get(), PCRE2_JIT_COMPLETE) != 0)
            return false;
        stack.reset(pcre2_jit_stack_create_16(kFirstStack, kLargestStack, nullptr));
        pcre2_jit_stack_assign_16(context.get(), nullptr, stack.get());
        pcre2_set_match_limit_16(context.get(), kCompiledSteps);
        return true;
    }

    int error = 0;
    std::size_t errorPlace = 0;
    Owned<pcre2_code_16, pcre2_code_free_16> code;
    Owned<pcre2_match_data_16, pcre2_match_data_free_16> match;
    Owned<pcre2_jit_stack_16, pcre2_jit_stack_free_16> stack;
    Owned<pcre2_match_context_16, pcre2_match_context_free_16> context;
};

ExpressionEngine::ExpressionEngine(const QString &expression)
    : m_Expression(expression),
      m_CanBeSliced(!expression.contains(QLatin1String("\\G")) &&
                    !expression.contains(QLatin1String("(*"))),
      m_Compiled(std::make_unique<Form>(expression, 0U))
{
    if (!m_Compiled->code)
        m_Validity =
            Failure{FailureKind::BadInput,
                    QCoreApplication::translate("ExpressionEngine", "%1 at position %2")
                        .arg(messageOf(m_Compiled->error), QString::number(m_Compiled->errorPlace))
                        .toStdString()};
    else if (!m_Compiled->compile())
        m_Compiled.reset();
}

ExpressionEngine::~ExpressionEngine() = default;

ExpressionEngine::Answer ExpressionEngine::findFast(const QString &text, std::size_t first,
                                                    std::size_t last)
{
    return m_Compiled ? find(*m_Compiled, text, first, last) : Answer::TooCostly;
}

ExpressionEngine::Answer ExpressionEngine::findPatiently(const QString &text, std::size_t first,
                                                         std::size_t last,
                                                         const std::atomic<bool> &isCancelled)
{
    // Calls back before each item of the expression.
    if (!m_Interpreted)
        m_Interpreted = std::make_unique<Form>(m_Expression, PCRE2_AUTO_CALLOUT);
    pcre2_set_callout_16(m_Interpreted->context.get(), stopWhenCancelled,
                         const_cast<std::atomic<bool> *>(&isCancelled));
    return find(*m_Interpreted, text, first, last);
}

ExpressionEngine::Answer ExpressionEngine::find(Form &form, const QString &text, std::size_t first,
                                                std::size_t last)
{
    m_Latest = &form;
    pcre2_set_offset_limit_16(form.context.get(), last);
    m_Code = pcre2_match_16(form.code.get(), unitsOf(text), std::size_t(text.size()), first,
                            PCRE2_NO_UTF_CHECK, form.match.get(), form.context.get());
    if (m_Code >= 0)
        return Answer::Match;
    if (m_Code == PCRE2_ERROR_NOMATCH)
        return Answer::NoMatch;
    return m_Code == PCRE2_ERROR_CALLOUT ? Answer::Cancelled : Answer::TooCostly;
}

std::size_t ExpressionEngine::begin() const
{
    return pcre2_get_ovector_pointer_16(m_Latest->match.get())[0];
}

std::size_t ExpressionEngine::end() const
{
    return pcre2_get_ovector_pointer_16(m_Latest->match.get())[1];
}

QString ExpressionEngine::reason() const
{
    return messageOf(m_Code);
}

} // namespace TAMBO::services
