// SPDX-License-Identifier: GPL-3.0-or-later
// "Models of NAME": how far the models of a family are, and what has come of each. It can be closed
// while they are built, and opened again for the folder.
#pragma once

#include "BaseWindow.h"
#include "ModelsJob.h"
#include "ObjectNotes.h"
#include "ResultsLook.h"

#include <QStringList>

#include <filesystem>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

class QLabel;
class QProgressBar;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

namespace TAMBO::app {

class ResultsModel;
class ResultsWatch;
class RunChoice;
class RunningFamily;

class FamilyWindow : public BaseWindow
{
    Q_OBJECT

public:
    // A model that has been built, and what is noted of it.
    struct Chosen
    {
        ModelFiles files;
        ObjectNote note;
        std::string target;
        std::string templateName;
    };
    struct Actions
    {
        std::function<void(const std::vector<Chosen> &models)> open;
        // Those of them that are loaded; what came of it.
        std::function<QString(const std::vector<Chosen> &models)> superpose;
        std::function<void(const QString &headline, const QStringList &causes)> tellFailure;
    };

    // The run outlives the window.
    FamilyWindow(const families::FamilyFolder &folder, RunningFamily &run, Actions actions);
    ~FamilyWindow() override;

    [[nodiscard]] const std::filesystem::path &folder() const { return m_Path; }
    // What was told when the folder was prepared.
    void setNotes(const QStringList &notes);
    // In the status line.
    void say(const QString &text);

    void Kill(BaseWindow *window) override;

private:
    void makeControls();
    void makeTable();
    [[nodiscard]] QPushButton *addButton(const QString &text, const char *name, const QString &tip,
                                         void (FamilyWindow::*act)());
    void take(const ResultsLook::News &news);
    void follow();
    [[nodiscard]] QString progressText() const;
    // The rows that are picked, or else all; those with a model.
    [[nodiscard]] std::vector<Chosen> chosen() const;
    void run();
    void stop();
    void openModels();
    void openModelAt(const QModelIndex &shown);
    void superpose();
    void exportTable();
    void openFolder();
    [[nodiscard]] Chosen chosenAt(int row) const;

    std::filesystem::path m_Path;
    QString m_Family;
    RunningFamily &m_Running;
    Actions m_Actions;
    std::shared_ptr<const families::FamilyFolder> m_Folder;
    bool m_IsAtWork = false;

    ResultsModel *m_Results = nullptr;
    QSortFilterProxyModel *m_Shown = nullptr;
    ResultsWatch *m_Watch = nullptr;
    QTableView *m_Table = nullptr;
    RunChoice *m_Choice = nullptr;
    QLabel *m_Says = nullptr;
    QLabel *m_Notes = nullptr;
    QProgressBar *m_Progress = nullptr;
    QPushButton *m_Run = nullptr;
    QPushButton *m_Stop = nullptr;
    QPushButton *m_Open = nullptr;
    QPushButton *m_Superpose = nullptr;
    QPushButton *m_Export = nullptr;
};

} // namespace TAMBO::app
