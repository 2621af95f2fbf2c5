// SPDX-License-Identifier: GPL-3.0-or-later
#include "SelectObjectAnswers.h"

#include <deque>
#include <utility>

namespace TAMBO::services {

namespace {

using Answer = std::optional<std::vector<Compound *>>;

std::deque<Answer> &answers() noexcept
{
    static std::deque<Answer> answers;
    return answers;
}

SelectObjectQuestion &question() noexcept
{
    static SelectObjectQuestion question;
    return question;
}

} // namespace

void SelectObjectAnswers::push(std::vector<Compound *> choice)
{
    answers().emplace_back(std::move(choice));
}

void SelectObjectAnswers::pushCancel()
{
    answers().emplace_back(std::nullopt);
}

void SelectObjectAnswers::clear()
{
    answers().clear();
}

bool SelectObjectAnswers::isEmpty() noexcept
{
    return answers().empty();
}

std::optional<std::vector<Compound *>> SelectObjectAnswers::take()
{
    Answer answer = std::move(answers().front());
    answers().pop_front();
    return answer;
}

const SelectObjectQuestion &SelectObjectAnswers::lastQuestion() noexcept
{
    return question();
}

void SelectObjectAnswers::setLastQuestion(SelectObjectQuestion asked)
{
    question() = std::move(asked);
}

} // namespace TAMBO::services
