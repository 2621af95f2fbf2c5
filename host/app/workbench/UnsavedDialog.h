// SPDX-License-Identifier: GPL-3.0-or-later
// Lists what would be lost by quitting or closing, each thing with a box to save it, and the jobs
// that still run. A session that has a file can be saved instead, with all that is in it.
#pragma once

#include "SavedPlaces.h"

#include <QDialog>

#include <optional>
#include <vector>

class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace TAMBO::services {
class JobList;
} // namespace TAMBO::services

namespace TAMBO::app {

class UnsavedDialog : public QDialog
{
    Q_OBJECT

public:
    enum class Purpose { Quit, Close };
    enum class Answer { Stay, Save, SaveSession, Discard };
    enum class Jobs { Wait, Leave, Cancel };

    // things, a session that is not saved, and running jobs, of which at least one is there.
    // session: the name of its file; empty without one. The list of jobs is null when they do not
    // matter; it outlives the dialog.
    UnsavedDialog(Purpose purpose, std::vector<SavedPlaces::Unsaved> things, const QString &session,
                  const services::JobList *jobs, QWidget *parent);
    ~UnsavedDialog() override;

    [[nodiscard]] Answer answer() const noexcept { return m_Answer; }
    // The indices of the things to save.
    [[nodiscard]] std::vector<std::size_t> checked() const;
    [[nodiscard]] Jobs jobs() const { return m_JobsAnswer.value_or(chosenJobs()); }

protected:
    void showEvent(QShowEvent *event) override;

private:
    [[nodiscard]] QString headline() const;
    [[nodiscard]] QString explanation() const;
    [[nodiscard]] bool isAboutJobs() const { return m_Things.empty() && m_Session.isEmpty(); }
    [[nodiscard]] QWidget *makeHead();
    void makeThings();
    void makeJobs();
    void makeButtons();
    void followChecks();
    void followJobs();
    void end(Answer answer);
    [[nodiscard]] Jobs chosenJobs() const;
    // What the checked things leave out although they name it.
    [[nodiscard]] QString note() const;

    Purpose m_Purpose;
    std::vector<SavedPlaces::Unsaved> m_Things;
    QString m_Session;
    const services::JobList *m_JobList;
    Answer m_Answer = Answer::Stay;
    // As it stood when the dialog ended.
    std::optional<Jobs> m_JobsAnswer;

    QLabel *m_Headline = nullptr;
    QTreeWidget *m_List = nullptr;
    QLabel *m_Note = nullptr;
    QGroupBox *m_Jobs = nullptr;
    QLabel *m_JobLines = nullptr;
    QRadioButton *m_Wait = nullptr;
    QRadioButton *m_Leave = nullptr;
    QRadioButton *m_Cancel = nullptr;
    // Null when there is nothing to save object by object.
    QPushButton *m_Save = nullptr;
};

} // namespace TAMBO::app
