// SPDX-License-Identifier: GPL-3.0-or-later
// Answers for SelectObject given before it asks: for commands that run without a user, and tests.
#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <vector>

class QWidget;

namespace TAMBO {
class Compound;
}

namespace TAMBO::services {

struct SelectObjectQuestion
{
    QString caption;
    std::vector<Compound *> candidates;
    bool isSeveral = false;
    QWidget *parent = nullptr;
};

// Every answer serves one question, in the order of pushing; a dialog that finds one is not shown.
class SelectObjectAnswers
{
public:
    // Nothing stands for a cancelled dialog.
    using Choice = std::optional<std::vector<Compound *>>;
    using Answerer = std::function<Choice(const SelectObjectQuestion &question)>;

    // For an answer that depends on the question.
    static void pushAnswerer(Answerer answerer);
    // Objects that are no candidates are left out; a single choice of which nothing is left counts
    // as cancelled.
    static void push(std::vector<Compound *> choice);
    static void pushCancel();
    static void clear();
    [[nodiscard]] static bool isEmpty() noexcept;

    // Must not be called when there is no answer.
    [[nodiscard]] static Choice take(const SelectObjectQuestion &question);
};

} // namespace TAMBO::services
