// SPDX-License-Identifier: GPL-3.0-or-later
// Why something could not be done: the one shape of it, from a reader's line to the box in front of
// the user.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace TAMBO {

// Code asks for the kind; what the text says is for people alone.
enum class FailureKind {
    // The user called it off, and need not be told.
    Cancelled,
    // What was named is not there.
    NotFound,
    // What was read or typed cannot be understood.
    BadInput,
    // What was asked for is understood, but not possible as things stand.
    Refused,
    // The system or another program did not do its part.
    System,
};

// Where the cause is to be found. A file as people call it; its lines count from 1, and 0 is none.
struct Place
{
    std::string file;
    std::uint64_t line = 0;
};

struct Failure
{
    // Nobody gets a kind without having chosen it.
    Failure(FailureKind ofKind, std::string what, Place where = {})
        : kind(ofKind), cause(std::move(what)), place(std::move(where))
    { }

    FailureKind kind;
    // Of a place, what is wrong there.
    std::string cause;
    Place place;

    // One sentence for the user, ready to be shown: "x.ali:7: cause".
    [[nodiscard]] std::string message() const
    {
        if (place.file.empty())
            return cause;
        const std::string line = place.line == 0 ? "" : ':' + std::to_string(place.line);
        return place.file + line + ": " + cause;
    }
};

} // namespace TAMBO
