// SPDX-License-Identifier: GPL-3.0-or-later
// Reversible changes of the model, and who keeps them.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace TAMBO {

class Compound;

// One change that can be carried out. Carrying it out gives its inverse, so undo and redo are the
// same act. An edit keeps what is needed for its change and never a copy of an object.
class Edit
{
public:
    virtual ~Edit() = default;
    Edit(const Edit &) = delete;
    Edit &operator=(const Edit &) = delete;

    [[nodiscard]] virtual std::unique_ptr<Edit> apply() = 0;
    // What it occupies, itself included.
    [[nodiscard]] virtual std::size_t bytes() const = 0;
    // The kind of the edit as the user reads it: "move gap".
    [[nodiscard]] virtual const char *kind() const = 0;
    // The object changed; it exists as long as the edit does.
    [[nodiscard]] virtual Compound *subject() const = 0;

protected:
    Edit() = default;
};

// Receives the inverse of every change as it happens. Changes between begin() and end() are one
// step; a change outside of them is a step of its own.
class EditRecorder
{
public:
    virtual ~EditRecorder() = default;
    virtual void begin() = 0;
    virtual void record(std::unique_ptr<Edit> inverse) = 0;
    virtual void end() = 0;
};

// The recorder in use; null (the start) drops the inverses. Not owned.
void setEditRecorder(EditRecorder *recorder) noexcept;

} // namespace TAMBO
