// SPDX-License-Identifier: GPL-3.0-or-later
#include "SelectObjectAnswers.h"

#include <deque>
#include <utility>

namespace TAMBO::services {

namespace {

std::deque<SelectObjectAnswers::Answerer> &answers() noexcept
{
    static std::deque<SelectObjectAnswers::Answerer> answers;
    return answers;
}

} // namespace

void SelectObjectAnswers::pushAnswerer(Answerer answerer)
{
    answers().push_back(std::move(answerer));
}

void SelectObjectAnswers::push(std::vector<Compound *> choice)
{
    pushAnswerer([choice = std::move(choice)](const SelectObjectQuestion &) { return choice; });
}

void SelectObjectAnswers::pushCancel()
{
    pushAnswerer([](const SelectObjectQuestion &) { return std::nullopt; });
}

void SelectObjectAnswers::clear()
{
    answers().clear();
}

bool SelectObjectAnswers::isEmpty() noexcept
{
    return answers().empty();
}

SelectObjectAnswers::Choice SelectObjectAnswers::take(const SelectObjectQuestion &question)
{
    const Answerer answerer = std::move(answers().front());
    answers().pop_front();
    return answerer(question);
}

} // namespace TAMBO::services
