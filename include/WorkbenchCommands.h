// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that the workbench itself answers, and what their data is.
#pragma once

#include "PluginManager.h"

#include <QString>

#include <functional>
#include <string>
#include <vector>

namespace TAMBO {

class Alignment;
class Compound;

// What SaveALI is handed. Read in this order; lives for the one call.
struct SaveRequest
{
    // The file; an old one is replaced by a complete new one.
    QString path;
    Alignment *alignment;
};

// What AlignRows is handed. Lives for the one call.
struct AlignRowsRequest
{
    Alignment *alignment;
    // Those that are aligned to the others.
    std::vector<unsigned long> rows;
    // No column comes: rows with residues that have no place then stay as they are.
    bool keepsColumns;
    // What was done, for the user. He has been told already why nothing was.
    QString told;
};

// What RealignAll is handed. Lives for the one call.
struct RealignRequest
{
    Alignment *alignment;
    // What was done, or that there was nothing to do, for the user.
    QString told;
};

// What AddSequences is handed. Lives for the one call.
struct AddSequencesRequest
{
    Alignment *alignment;
    // Those that are rows of it already are left out.
    std::vector<Compound *> sequences;
    // What was done, or that there was nothing to do, for the user.
    QString told;
};

// What AddFiles is handed. Lives for the one call.
struct AddFilesRequest
{
    Alignment *alignment;
    // Called with what was done, or that there was nothing to do, for the user; maybe after the
    // call. Not when he chose no file, has cancelled it, or has been told already why nothing was.
    std::function<void(const QString &told)> tell;
};

struct CommandName
{
    const char *group;
    const char *service;
    const char *command;
};

// Each call blocks until the command is done. caller is the name of the plug-in, text one for the
// log.
class WorkbenchCommands
{
public:
    using Outcome = PluginManager::Outcome;

    // Execute: the user chooses files, which are opened. Without data, or with a bool that is set
    // to whether one was chosen.
    static constexpr CommandName kOpenFile{"Data", "OpenFile", "open"};
    // Command with a SaveRequest.
    static constexpr CommandName kSaveAlignment{"Parse", "PIR", "SaveALI"};
    // Command with read-only data: the full path of a PDB file, Latin-1, ending in a zero byte.
    static constexpr CommandName kReadStructure{"Parse", "PDB", "ReadPDB"};
    // Execute with an Alignment.
    static constexpr CommandName kRealign{"Calculate", "Alignment", "Malign"};
    // Execute with a RealignRequest.
    static constexpr CommandName kRealignAll{"Calculate", "Alignment", "RealignAll"};

    // Execute with an AlignRowsRequest.
    static constexpr CommandName kAlignRows{"Calculate", "Alignment", "AlignRows"};

    // Execute with an AddSequencesRequest.
    static constexpr CommandName kAddSequences{"Calculate", "Alignment", "AddSequences"};

    // Execute with an AddFilesRequest.
    static constexpr CommandName kAddFiles{"Calculate", "Alignment", "AddFiles"};

    // Execute with an Alignment.
    static constexpr CommandName kShowAlignment{"Data", "Alignment", "show"};

    // Execute with an Alignment.
    static constexpr CommandName kExportAlignment{"Data", "Alignment", "export"};

    // Execute with an Alignment.
    static constexpr CommandName kSaveAlignmentAs{"Data", "Alignment", "saveAs"};

    static constexpr CommandName kAll[] = {kOpenFile,        kSaveAlignment,  kReadStructure,
                                           kRealign,         kRealignAll,     kAlignRows,
                                           kAddSequences,    kAddFiles,       kShowAlignment,
                                           kExportAlignment, kSaveAlignmentAs};

    // Choosing nothing is no failure; what was chosen may arrive later. isChosen may be null.
    static Outcome openFile(const std::string &caller, bool *isChosen = nullptr)
    {
        return PluginManager::Execute(kOpenFile.group, kOpenFile.service, caller, kOpenFile.command,
                                      static_cast<void *>(isChosen));
    }

    // As a PIR file. Failed, with a message for the user, when it cannot be written; the file is as
    // it was then.
    static Outcome saveAlignment(const std::string &caller, const std::string &text,
                                 Alignment &alignment, const QString &path)
    {
        SaveRequest request{path, &alignment};
        return PluginManager::Command(kSaveAlignment.group, kSaveAlignment.service, caller, text,
                                      kSaveAlignment.command, static_cast<void *>(&request));
    }

    // Adds the structures of a PDB file, at once or as soon as no change is being published. Failed
    // when nothing could be read.
    static Outcome readStructure(const std::string &caller, const std::string &text,
                                 const QString &path)
    {
        const QByteArray latin1 = path.toLatin1();
        return PluginManager::Command(kReadStructure.group, kReadStructure.service, caller, text,
                                      kReadStructure.command,
                                      static_cast<const void *>(latin1.constData()));
    }

    // The columns of the alignment's range are aligned anew by another program.
    static Outcome realign(const std::string &caller, Alignment &alignment)
    {
        return PluginManager::Execute(kRealign.group, kRealign.service, caller, kRealign.command,
                                      static_cast<void *>(&alignment));
    }

    // All columns are aligned anew, and are the range then; one step of undo. The user waits for
    // it, and may cancel it. Failed when nothing has changed; he has been told why.
    static Outcome realignAll(const std::string &caller, RealignRequest &request)
    {
        return PluginManager::Execute(kRealignAll.group, kRealignAll.service, caller,
                                      kRealignAll.command, static_cast<void *>(&request));
    }

    // The rows are aligned by another program to the others, whose columns stay together; one step
    // of undo. The user waits for it, and may cancel it. Failed when nothing has changed; he has
    // been told why.
    static Outcome alignRows(const std::string &caller, AlignRowsRequest &request)
    {
        return PluginManager::Execute(kAlignRows.group, kAlignRows.service, caller,
                                      kAlignRows.command, static_cast<void *>(&request));
    }

    // The sequences become rows behind the others and are aligned to them by another program, as by
    // alignRows(); one step of undo. Nothing is added before they are aligned. Failed when nothing
    // has changed; the user has been told why.
    static Outcome addSequences(const std::string &caller, AddSequencesRequest &request)
    {
        return PluginManager::Execute(kAddSequences.group, kAddSequences.service, caller,
                                      kAddSequences.command, static_cast<void *>(&request));
    }

    // The user chooses files, which are opened as by openFile(); when their objects have come, all
    // their sequences are added as by addSequences(). Choosing nothing is no failure.
    static Outcome addFiles(const std::string &caller, AddFilesRequest &request)
    {
        return PluginManager::Execute(kAddFiles.group, kAddFiles.service, caller, kAddFiles.command,
                                      static_cast<void *>(&request));
    }

    // In a window of its own, or in the one that shows it already. Failed, with a message for the
    // user, when no window can be opened.
    static Outcome showAlignment(const std::string &caller, Alignment &alignment)
    {
        return PluginManager::Execute(kShowAlignment.group, kShowAlignment.service, caller,
                                      kShowAlignment.command, static_cast<void *>(&alignment));
    }

    // The user chooses file and format, over the window in use. Choosing nothing is no failure;
    // what takes long is written when this has returned, and the workbench tells what has come of
    // it.
    static Outcome exportAlignment(const std::string &caller, Alignment &alignment)
    {
        return PluginManager::Execute(kExportAlignment.group, kExportAlignment.service, caller,
                                      kExportAlignment.command, static_cast<void *>(&alignment));
    }

    // The same, and the file is that of the alignment from then on: it counts as saved, and the
    // workbench saves it there. Written when this has returned.
    static Outcome saveAlignmentAs(const std::string &caller, Alignment &alignment)
    {
        return PluginManager::Execute(kSaveAlignmentAs.group, kSaveAlignmentAs.service, caller,
                                      kSaveAlignmentAs.command, static_cast<void *>(&alignment));
    }
};

} // namespace TAMBO
