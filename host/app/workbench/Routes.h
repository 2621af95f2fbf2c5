// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that the workbench itself answers for plug-ins.
#pragma once

#include "Loader.h"
#include "WriteOptions.h"

#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>

struct PluginCall;

namespace TAMBO {
class Alignment;
struct AddFilesRequest;
struct AddSequencesRequest;
struct AlignRowsRequest;
struct RealignRequest;
class Compound;
class KeptState;
} // namespace TAMBO

namespace TAMBO::app {

class WritableObject;

// Registered while it lives.
class Routes
{
public:
    // What the workbench does for them.
    struct Actions
    {
        // With a file dialog over the window; whether one was chosen.
        std::function<bool(QWidget *parent)> askAndOpen;
        std::function<bool(Alignment &alignment)> realign;
        std::function<bool(RealignRequest &request)> realignAll;
        std::function<bool(AlignRowsRequest &request)> alignRows;
        std::function<bool(AddSequencesRequest &request)> addSequences;
        // With a file dialog.
        std::function<bool(const AddFilesRequest &request)> addFiles;
        // In a window.
        std::function<bool(Alignment &alignment)> show;
        // The user chooses file and format.
        std::function<void(Alignment &alignment)> exportTo;
        std::function<void(Alignment &alignment)> saveAs;
        std::function<void(const LoadReport &report)> tellBadFiles;
        std::function<void(const QString &headline, const QStringList &causes)> tellFailure;
        // Writes, and returns when the file is complete, or as it was. When empty, it is written in
        // the calling thread, which does nothing else meanwhile.
        std::function<Result<void>(const std::shared_ptr<const WritableObject> &object,
                                   const QString &path, const WriteOptions &options)>
            write;
        // The alignment's state as it is now.
        std::function<std::unique_ptr<KeptState>(const Alignment &alignment)> keepState;
        // A PIR file that the caller keeps was written from that state, with these losses.
        std::function<void(Alignment &alignment, const QString &file, const QStringList &losses,
                           const KeptState *state)>
            noteWritten;
    };

    Routes(Loader &loader, Actions actions);
    ~Routes();
    Routes(const Routes &) = delete;
    Routes &operator=(const Routes &) = delete;

private:
    bool openFile(const PluginCall &call);
    bool readPdb(const PluginCall &call);
    bool realign(const PluginCall &call);
    bool realignAll(const PluginCall &call);
    bool alignRows(const PluginCall &call);
    bool addSequences(const PluginCall &call);
    bool addFiles(const PluginCall &call);
    bool show(const PluginCall &call);
    bool exportTo(const PluginCall &call);
    bool saveAs(const PluginCall &call);
    bool savePir(const PluginCall &call);

    // What has to wait may come to its turn when the loader has gone, and this too.
    QPointer<Loader> m_Loader;
    Actions m_Actions;
};

} // namespace TAMBO::app
