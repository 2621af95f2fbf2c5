// SPDX-License-Identifier: GPL-3.0-or-later
// Something of a session that is no object and no step of undo, such as what is selected or which
// windows are open: kept as bytes under a name, by whoever knows what is in them.
#pragma once

#include "Result.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace TAMBO {
class ObjectIndex;
}

namespace TAMBO::sessions {

class KeptValue
{
public:
    KeptValue() = default;
    virtual ~KeptValue();
    KeptValue(const KeptValue &) = delete;
    KeptValue &operator=(const KeptValue &) = delete;

    // The same for ever: it stands in files.
    [[nodiscard]] virtual std::string name() const = 0;
    // As it is now. Empty when there is nothing to keep.
    [[nodiscard]] virtual std::string store() const = 0;
    // Objects and history are there. References to objects that are not there are left out; a
    // failure changes nothing. Not called for what is empty.
    [[nodiscard]] virtual Result<void> load(std::string_view content,
                                            const ObjectIndex &objects) = 0;
    // Does about a millisecond of what takes long about store(), so that others have their turn in
    // between. False when nothing of that is left.
    virtual bool prepare() { return false; }
    // Whether steps of undo change it as well, so that it has to be written with each of them.
    [[nodiscard]] virtual bool followsSteps() const { return false; }
    // Not what only the program that runs, or the one that comes after it, can use: a session's
    // file goes without.
    [[nodiscard]] virtual bool isForFiles() const { return true; }
    // Another session begins: nothing that was noted of this one counts, and other objects may have
    // the numbers that its objects had.
    virtual void clear() { }
    // Another number when store() may give something else than it did; for one that takes its time
    // to be stored. None: nobody knows but by storing it.
    [[nodiscard]] virtual std::optional<std::uint64_t> revision() const { return std::nullopt; }
};

} // namespace TAMBO::sessions
