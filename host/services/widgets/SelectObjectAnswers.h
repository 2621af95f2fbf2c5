// SPDX-License-Identifier: GPL-3.0-or-later
// Answers for SelectObject given before it asks: for commands that run without a user, and tests.
#pragma once

#include <QString>

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
    // Objects that are no candidates are left out; a single choice of which nothing is left counts
    // as cancelled.
    static void push(std::vector<Compound *> choice);
    static void pushCancel();
    static void clear();
    [[nodiscard]] static bool isEmpty() noexcept;

    // Nothing stands for a cancelled dialog. Must not be called when there is no answer.
    [[nodiscard]] static std::optional<std::vector<Compound *>> take();

    // What was asked last, whoever answered; for tests.
    [[nodiscard]] static const SelectObjectQuestion &lastQuestion() noexcept;
    static void setLastQuestion(SelectObjectQuestion question);
};

} // namespace TAMBO::services
