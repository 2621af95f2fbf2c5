// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of a plug-in, good or bad.
#pragma once

#include "PluginDescriptor.h"

#include <QString>

namespace TAMBO::services {

enum class PluginState {
    // Known by its descriptor; its library was not opened.
    Found,
    Loaded,
    MissingFile,
    // Another file of its name counts, which was found first.
    Overruled,
    BrokenDescriptor,
    // Built against a kit that this workbench does not have.
    WrongVersion,
    // Not a library, or one that it needs is missing.
    Broken,
    UnresolvedSymbol,
    // Execute0, IsDone or Cleanup is missing.
    LacksFunction,
    ThrewOnLoad,
    // An exported function threw; it is not called again.
    ThrewInCall,
};

struct PluginRecord
{
    // Full path, and the file's name without it.
    QString file;
    QString name;
    PluginState state = PluginState::Broken;
    // One sentence for the user; empty while all is well.
    QString reason;
    // Without a descriptor: a plain tool, built against the kit of this workbench.
    PluginDescriptor descriptor = {};

    [[nodiscard]] bool isUsable() const noexcept { return state == PluginState::Loaded; }
    // Whether it can be opened, as far as its descriptor tells.
    [[nodiscard]] bool isPromising() const noexcept
    {
        return state == PluginState::Found || state == PluginState::Loaded;
    }
    [[nodiscard]] bool showsAlignments() const noexcept
    {
        return isPromising() && descriptor.role == PluginRole::Alignments;
    }
};

} // namespace TAMBO::services
