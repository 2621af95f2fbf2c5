// SPDX-License-Identifier: GPL-3.0-or-later
// An empty Space with a history over it, and small objects to fill it with. Settings and the log
// stand in a directory of the test's own.
#pragma once

#include "Alignment.h"
#include "DataAdder.h"
#include "History.h"
#include "Hooks.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "PluginFolders.h"
#include "Structure.h"

#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

class AppFixture : public testing::Test
{
protected:
    using Compounds = std::vector<TAMBO::Compound *>;

    AppFixture();
    ~AppFixture() override;

    static TAMBO::ObjectSpace &space() { return TAMBO::ObjectSpace::get(); }

    // Residues are numbered from 1.
    static TAMBO::Structure &structure(const std::string &name, const std::string &chain,
                                       const std::string &letters);
    static TAMBO::Peptide &sequence(const std::string &name, const std::string &letters);
    // Rows of text with "-" for a gap; each brings a sequence of its own.
    static TAMBO::Alignment &alignment(const std::string &name,
                                       const std::vector<std::string> &rows);
    static std::vector<std::string> rowsOf(const TAMBO::Alignment &alignment);
    static std::vector<std::string> topLevelNames();

    // What the model has to tell comes to the log, as in the program.
    static void logTheModel();

    // In a folder of the test's own.
    [[nodiscard]] QString path(const QString &name) const { return m_Folder.filePath(name); }
    QString write(const QString &name, const QByteArray &text);
    static QByteArray bytesOf(const QString &path);
    // Another program's writing, at another time than ours.
    void changeBehind(const QString &name, const QByteArray &text);
    void touch(const QString &name) const;
    // For a workbench that is not to look into the folders of the machine.
    static TAMBO::services::PluginFolders withoutPlugins()
    {
        return TAMBO::services::PluginFolders(
            std::vector<TAMBO::services::PluginFolders::Folder>());
    }

    // Locks that refused a guard.
    std::vector<std::string> m_Refused;
    QTemporaryDir m_Folder;
};

// As AppFixture, with every change recorded.
class RecordedFixture : public AppFixture
{
protected:
    RecordedFixture();
    ~RecordedFixture() override;

    TAMBO::History m_History;
};
