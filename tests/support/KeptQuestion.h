// SPDX-License-Identifier: GPL-3.0-or-later
// Answers the next question for objects in advance, and keeps what was asked.
#pragma once

#include "SelectObjectAnswers.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

class KeptQuestion
{
public:
    using Answers = TAMBO::services::SelectObjectAnswers;
    using Question = TAMBO::services::SelectObjectQuestion;

    // Cancelled.
    KeptQuestion() { answer(std::nullopt); }
    explicit KeptQuestion(std::vector<TAMBO::Compound *> choice) { answer(std::move(choice)); }

    [[nodiscard]] const Question *operator->() const { return m_Question.get(); }

private:
    void answer(Answers::Choice choice)
    {
        Answers::pushAnswerer(
            [question = m_Question, choice = std::move(choice)](const Question &asked) {
                *question = asked;
                return choice;
            });
    }

    // Who asks may outlive the test's own part of it.
    std::shared_ptr<Question> m_Question = std::make_shared<Question>();
};
