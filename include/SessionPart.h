// SPDX-License-Identifier: GPL-3.0-or-later
// State of a plug-in's own that is kept with the user's work, such as which of its windows are open
// and what they show.
#pragma once

#include "Export.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace TAMBO {
class Compound;
}

// Registered while it exists. It comes back as bytes when the workbench recovers what was not
// saved, and with whatever else brings back all objects together with their history. What is kept
// waits while nobody of its name is registered, as when the plug-in is missing, and is written
// again as it is. Values that belong to one object are PluginValues; those that do not belong to
// the work WorkbenchValues. It is no step of undo. What a function throws is logged: the part is
// called no more until other work is loaded, and what was kept stays. All calls are made in the GUI
// thread.
class TAMBO_API SessionPart
{
public:
    // In bytes. A name is UTF-8 without control characters, and not empty.
    static constexpr std::size_t kLongestName = 100;
    static constexpr std::size_t kLongestState = 16U << 20;

    virtual ~SessionPart();
    SessionPart(const SessionPart &) = delete;
    SessionPart &operator=(const SessionPart &) = delete;

    // False for one that was refused, with a line in the log: its name is none, or another part has
    // it. Nothing of it is kept then.
    [[nodiscard]] bool isGood() const noexcept { return m_IsGood; }
    [[nodiscard]] const std::string &name() const noexcept { return m_Name; }

    // The state, as text or any bytes; empty for none. Called some time after hasChanged(), while
    // the user rests, and whenever all is written. One that is too long is not kept, which the log
    // says; what was kept before stays.
    [[nodiscard]] virtual std::string store() const = 0;
    // What store() gave, maybe in another version of the plug-in, or what somebody has made of it:
    // believe nothing. All objects are there. Called from the event loop when the state has been
    // waiting for this part.
    virtual void restore(const std::string &state) = 0;
    // Other work takes the place of what was there; its state, if it has one, comes next. Objects
    // of before may have gone.
    virtual void clear();

    // The state is to be stored again. To be called whenever it has changed, however often.
    void hasChanged();

    // A number for an object in the state, the same for as long as there is the object. 0 for null
    // and for parts of another object, such as residues and atoms.
    [[nodiscard]] static std::uint32_t NumberOf(const TAMBO::Compound *object);
    // Within restore(): the object that has the number; null when it is not in the tree.
    [[nodiscard]] static TAMBO::Compound *ObjectOf(std::uint32_t number);

protected:
    explicit SessionPart(std::string name);

private:
    std::string m_Name;
    bool m_IsGood = false;
};
