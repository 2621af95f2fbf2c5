// SPDX-License-Identifier: GPL-3.0-or-later
// Models of families in the workbench: asks for them, has them built, shows what has come of them,
// and brings them in.
#pragma once

#include "FamilyWindow.h"
#include "ModelsReader.h"
#include "ObjectNotes.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QThread;
class QWidget;

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

namespace TAMBO::app {

class FamilyDialog;
class ObjectSources;
class RunningFamily;

class FamilyDesk : public QObject
{
    Q_OBJECT

public:
    // They outlive the desk.
    struct Parts
    {
        Loader &loader;
        const ObjectSources &sources;
        ObjectNotes &notes;
    };
    struct Actions
    {
        // What is in the tree now lies in files of the family's folder.
        std::function<void(const LoadReport &report)> opened;
        std::function<void(const QString &headline, const QStringList &causes)> tellFailure;
    };

    // program: the workbench's own, which runs beside it.
    FamilyDesk(const Parts &parts, Actions actions, QString program);
    // What runs goes on.
    ~FamilyDesk() override;

    // Models of families can be built when the reason is empty.
    [[nodiscard]] static QString whyNot();
    // Of an alignment, if one is chosen; there is at least one.
    void askForModels(const std::vector<Alignment *> &alignments, const Compound *chosen,
                      QWidget *parent);
    // Of a folder that the user chooses.
    void askForFolder(QWidget *parent);
    // Null when it is none of a family, which the user is told.
    FamilyWindow *show(const std::filesystem::path &folder);
    // The folder with the workflow's files.
    [[nodiscard]] static std::filesystem::path workflow();

    // How far models are with coming in.
    [[nodiscard]] ModelsReader &reader() noexcept { return m_Reader; }

private:
    struct Preparing;

    void prepare(const FamilyDialog &dialog);
    void prepared(const std::shared_ptr<Preparing> &preparing);
    [[nodiscard]] RunningFamily &runOf(const families::FamilyFolder &folder);
    void open(const std::vector<FamilyWindow::Chosen> &models);
    void opened(const LoadReport &report);
    [[nodiscard]] QString superpose(const std::vector<FamilyWindow::Chosen> &models) const;
    void sayIn(const std::filesystem::path &folder, const QString &text);

    Parts m_Parts;
    Actions m_Actions;
    QString m_Program;
    ModelsReader m_Reader;
    // By their folders, under the names without links.
    std::map<std::filesystem::path, QPointer<FamilyWindow>> m_Windows;
    std::map<std::filesystem::path, std::unique_ptr<RunningFamily>> m_Runs;
    // Of the models that come in now, by their files.
    std::map<std::filesystem::path, ObjectNote> m_Coming;
    std::filesystem::path m_ComingFrom;
    QThread *m_Thread = nullptr;
    QString m_LastFolder;
};

} // namespace TAMBO::app
