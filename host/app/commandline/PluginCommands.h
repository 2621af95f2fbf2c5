// SPDX-License-Identifier: GPL-3.0-or-later
// The sub-commands that plug-ins add to the program.
#pragma once

#include "PluginRecord.h"

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

class QIODevice;

namespace TAMBO::app {

class Plugins;

class PluginCommands
{
public:
    // Of those that plugins has found, which outlive this. A word that the program needs for
    // itself, or that an earlier plug-in offers, is left out with a line in the log.
    explicit PluginCommands(Plugins &plugins);

    [[nodiscard]] bool offers(const QString &word) const { return find(word) != nullptr; }
    // A line for each, as in the usage of the program; empty without any.
    [[nodiscard]] std::string usageText() const;
    // Opens the one library that offers the word and has it do the work. The exit status of the
    // program; 1 with a message, when the plug-in cannot be used or does not answer.
    int run(const QString &word, const QStringList &arguments, QIODevice &output,
            QIODevice &errors);

private:
    struct Offer
    {
        services::PluginCommand command;
        const services::PluginRecord *plugin;
    };

    [[nodiscard]] const Offer *find(const QString &word) const;

    Plugins &m_Plugins;
    std::vector<Offer> m_Offers;
};

} // namespace TAMBO::app
