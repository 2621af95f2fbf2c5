// SPDX-License-Identifier: GPL-3.0-or-later
// What a plug-in says of itself in the file beside its library, which is read before the library is
// opened.
#pragma once

#include "IniFile.h"
#include "KitVersion.h"
#include "Result.h"

#include <QString>

#include <vector>

namespace TAMBO::services {

// Of the kit that a plug-in was built against, or that a workbench has.
struct KitNumber
{
    int majorPart = kKitMajor;
    int minorPart = kKitMinor;

    // Whether what was built against the other kit works with this one.
    [[nodiscard]] bool takes(const KitNumber &other) const noexcept
    {
        return other.majorPart == majorPart && other.minorPart <= minorPart;
    }
    [[nodiscard]] QString text() const
    {
        return QStringLiteral("%1.%2").arg(majorPart).arg(minorPart);
    }
};

enum class PluginRole {
    Tool,
    // Its window shows alignments, and lets one choose by the slot GetAlignment().
    Alignments,
    // Has nothing that the user could open, and no entry in the Tools menu.
    Background,
};

// A sub-command of `tambo`.
struct PluginCommand
{
    QString word;
    // One line for `tambo --help`; may be empty.
    QString summary;
};

struct PluginDescriptor
{
    KitNumber kit;
    // By which the settings know it. Without a descriptor, or a name in it, the library's name
    // without "lib" and ".so".
    QString name;
    // For people; empty without one.
    QString title;
    PluginRole role = PluginRole::Tool;
    // Full paths; empty without one.
    QString icon;
    QString help;
    // As the descriptor names the page.
    QString helpName;
    std::vector<PluginCommand> commands;
    // What is none of the above: default settings.
    IniFile settings;
    // An icon or a page that is not there; the plug-in works without.
    std::vector<Failure> remarks;

    // "X.plugin" beside "X.so" and "X.so.0".
    [[nodiscard]] static QString fileOf(const QString &library);
    // "X" for ".../X.so" and ".../X.so.0".
    [[nodiscard]] static QString stemOf(const QString &library);
    // "libX" is called "X".
    [[nodiscard]] static QString nameOf(const QString &library);
    // Whether `tambo WORD` can be a command at all: letters, digits, "-" and "_" behind a letter.
    [[nodiscard]] static bool isCommandWord(const QString &word);

    // Of one that kit does not take the rest is read as far as it can be understood. The failure
    // names the file, the line and what was expected.
    static Result<PluginDescriptor> read(const QString &file, const KitNumber &kit);
};

} // namespace TAMBO::services
