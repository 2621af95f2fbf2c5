// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyDesk.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "Directories.h"
#include "FamilyDialog.h"
#include "FamilyOfAlignment.h"
#include "FamilyPreparing.h"
#include "LoadProgress.h"
#include "Logger.h"
#include "ModellingTools.h"
#include "ObjectSources.h"
#include "ObjectSpace.h"
#include "RunningFamily.h"
#include "Structure.h"
#include "SuperposeCommand.h"
#include "SuperposePlan.h"
#include "TemplateRecord.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;

fs::path withoutLinks(const fs::path &path)
{
    std::error_code error;
    fs::path canonical = fs::weakly_canonical(path, error);
    return error ? path : canonical;
}

QString shownPath(const fs::path &path)
{
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

QStringList textsOf(const std::vector<std::string> &sentences)
{
    QStringList texts;
    for (const std::string &sentence : sentences)
        texts << QString::fromStdString(sentence);
    return texts;
}

// The structures that came from files, the newest of each.
std::map<fs::path, Structure *> loadedModels(const ObjectSources &sources)
{
    std::map<fs::path, Structure *> models;
    for (Compound *object : *Space::instance()) {
        auto *const structure = dynamic_cast<Structure *>(object);
        if (structure != nullptr && structure->isModel())
            models[sources.fileOf(*structure)] = structure;
    }
    return models;
}

// Rows of the loaded alignments by their names.
class LoadedRows
{
public:
    explicit LoadedRows(const std::set<std::string> &names)
    {
        for (Alignment *alignment : ObjectSpace::get().referrers<Alignment>()) {
            Rows &rows =
                m_Rows.emplace_back(alignment, std::unordered_map<std::string, Places>()).second;
            const AlignmentTable &table = alignment->table();
            for (std::size_t row = 0; row < table.rowCount(); ++row) {
                const std::string name = table.row(row).name();
                if (names.contains(name))
                    rows[name].push_back(row);
            }
        }
    }

    // In the first alignment that has the model as the target's structure, and one of the template.
    [[nodiscard]] std::optional<SuperposeCommand::Pair>
    pairOf(const Structure &model, const std::string &target, const std::string &known) const
    {
        for (const auto &[alignment, rows] : m_Rows) {
            const auto moving = placeIn(*alignment, rows, target,
                                        [&](const Structure *found) { return found == &model; });
            const auto fixed = placeIn(*alignment, rows, known,
                                       [&](const Structure *found) { return found != &model; });
            if (moving && fixed)
                return SuperposeCommand::Pair{alignment, *fixed, *moving};
        }
        return std::nullopt;
    }

private:
    using Places = std::vector<unsigned long>;
    using Rows = std::unordered_map<std::string, Places>;

    template <typename Test>
    [[nodiscard]] static std::optional<unsigned long>
    placeIn(const Alignment &alignment, const Rows &rows, const std::string &name, Test test)
    {
        const auto found = rows.find(name);
        if (found == rows.end())
            return std::nullopt;
        for (const unsigned long row : found->second) {
            const std::optional<SuperposableRow> places = superposableRow(alignment, row);
            if (places && test(places->structure))
                return row;
        }
        return std::nullopt;
    }

    std::vector<std::pair<Alignment *, Rows>> m_Rows;
};

} // namespace

// All that the thread needs, so that nobody touches the alignment meanwhile.
struct FamilyDesk::Preparing
{
    families::Family family;
    std::vector<families::PlannedModel> plan;
    std::map<std::size_t, Result<StructureRecord>> templates;
    fs::path folder;
    families::FamilySettings settings;
    RunOrder order;
    Result<families::PreparedFamily> outcome = Failure(FailureKind::Cancelled, {});

    void run()
    {
        outcome = families::prepareFamily(
            family, plan, [this](std::size_t row) { return templates.at(row); }, folder, settings);
    }
};

FamilyDesk::FamilyDesk(const Parts &parts, Actions actions, QString program)
    : m_Parts(parts),
      m_Actions(std::move(actions)),
      m_Program(std::move(program)),
      m_Reader(parts.loader)
{
    connect(&m_Reader, &ModelsReader::finished, this, &FamilyDesk::opened);
}

FamilyDesk::~FamilyDesk()
{
    if (m_Thread != nullptr) {
        m_Thread->wait();
        delete m_Thread;
    }
    for (const auto &[folder, window] : m_Windows)
        delete window;
}

QString FamilyDesk::whyNot()
{
    const ModellingTools tools(QCoreApplication::applicationDirPath());
    return tools.isPossible() ? QString() : tools.stateText();
}

fs::path FamilyDesk::workflow()
{
    return QFile::encodeName(services::Directories::shared() + QStringLiteral("/families"))
        .toStdString();
}

// ---- Having models built

void FamilyDesk::askForModels(const std::vector<Alignment *> &alignments, const Compound *chosen,
                              QWidget *parent)
{
    FamilyDialog dialog(
        alignments, chosen,
        [this](const Alignment &alignment) { return m_Parts.sources.fileOf(alignment); }, parent);
    if (dialog.exec() == QDialog::Accepted && dialog.alignment() != nullptr)
        prepare(dialog);
}

void FamilyDesk::prepare(const FamilyDialog &dialog)
{
    if (m_Thread != nullptr)
        return m_Actions.tellFailure(tr("Another family is just being prepared."), {});
    const auto preparing = std::make_shared<Preparing>();
    preparing->family = dialog.family();
    preparing->plan = dialog.plan();
    preparing->folder = dialog.folder();
    preparing->order = dialog.order();
    const QString kestram = QStandardPaths::findExecutable(QStringLiteral("kestram"));
    preparing->settings = {QFile::encodeName(kestram).toStdString(),
                           QFile::encodeName(m_Program).toStdString(), workflow()};
    for (const families::PlannedModel &model : preparing->plan) {
        if (!preparing->templates.contains(model.templateRow))
            preparing->templates.emplace(model.templateRow,
                                         templateRecord(*dialog.alignment(), model.templateRow));
    }
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    m_Thread = QThread::create([preparing] { preparing->run(); });
    connect(m_Thread, &QThread::finished, this, [this, preparing] { prepared(preparing); });
    m_Thread->start();
}

void FamilyDesk::prepared(const std::shared_ptr<Preparing> &preparing)
{
    QGuiApplication::restoreOverrideCursor();
    std::exchange(m_Thread, nullptr)->deleteLater();
    const QString family = QString::fromStdString(preparing->family.name);
    if (!preparing->outcome) {
        const QString cause = QString::fromStdString(preparing->outcome.error().message());
        Logger::Write(cause, Logger::Severity::Error);
        m_Actions.tellFailure(tr("The models of %1 cannot be built.").arg(family), {cause});
        return;
    }
    const families::PreparedFamily &made = preparing->outcome.value();
    const QStringList notes = textsOf(made.remarks) + textsOf(made.changed) + textsOf(made.mapped);
    for (const QString &note : notes)
        Logger::Write(note);
    FamilyWindow *const window = show(made.folder.path());
    if (window == nullptr)
        return;
    window->setNotes(notes);
    const Result<void> started = runOf(made.folder).start(preparing->order);
    if (!started)
        m_Actions.tellFailure(tr("The models of %1 cannot be built.").arg(family),
                              {QString::fromStdString(started.error().message())});
}

RunningFamily &FamilyDesk::runOf(const families::FamilyFolder &folder)
{
    std::unique_ptr<RunningFamily> &run = m_Runs[withoutLinks(folder.path())];
    if (run == nullptr)
        run = std::make_unique<RunningFamily>(m_Program, withoutLinks(folder.path()),
                                              QString::fromStdString(folder.name()));
    return *run;
}

// ---- Showing what has come of them

void FamilyDesk::askForFolder(QWidget *parent)
{
    const QString chosen = QFileDialog::getExistingDirectory(
        parent, tr("Folder with the Models of a Family"), m_LastFolder);
    if (chosen.isEmpty())
        return;
    m_LastFolder = QFileInfo(chosen).path();
    show(QFile::encodeName(chosen).toStdString());
}

FamilyWindow *FamilyDesk::show(const fs::path &folder)
{
    const fs::path path = withoutLinks(folder);
    QPointer<FamilyWindow> &window = m_Windows[path];
    if (window == nullptr) {
        const Result<families::FamilyFolder> found = families::FamilyFolder::open(path);
        if (!found) {
            m_Windows.erase(path);
            m_Actions.tellFailure(
                tr("%1 cannot be shown as models of a family.").arg(shownPath(folder)),
                {QString::fromStdString(found.error().message())});
            return nullptr;
        }
        FamilyWindow::Actions actions;
        actions.open = [this](const auto &models) { open(models); };
        actions.superpose = [this](const auto &models) { return superpose(models); };
        actions.tellFailure = m_Actions.tellFailure;
        window = new FamilyWindow(found.value(), runOf(found.value()), std::move(actions));
        new LoadProgress(m_Reader, window);
    }
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

void FamilyDesk::sayIn(const fs::path &folder, const QString &text)
{
    const auto window = m_Windows.find(folder);
    if (window != m_Windows.end() && window->second != nullptr)
        window->second->say(text);
}

// ---- Bringing them in

void FamilyDesk::open(const std::vector<FamilyWindow::Chosen> &models)
{
    const fs::path folder = models.front().files.model.parent_path().parent_path();
    if (m_Reader.isBusy())
        return sayIn(folder, tr("Other models are just being opened."));
    const std::map<fs::path, Structure *> loaded = loadedModels(m_Parts.sources);
    std::vector<ModelFiles> files;
    m_Coming.clear();
    for (const FamilyWindow::Chosen &model : models) {
        const auto there = loaded.find(model.files.model);
        const ObjectNote *const note =
            there == loaded.end() ? nullptr : m_Parts.notes.of(*there->second);
        if (note != nullptr && *note == model.note)
            continue;
        files.push_back(model.files);
        m_Coming[model.files.model] = model.note;
    }
    if (files.empty())
        return sayIn(folder, models.size() == 1 ? tr("This model is open already.")
                                                : tr("All of these models are open already."));
    m_ComingFrom = folder;
    static_cast<void>(m_Reader.open(std::move(files)));
}

void FamilyDesk::opened(const LoadReport &report)
{
    for (std::size_t i = 0; i < report.structures.size(); ++i) {
        const auto note = m_Coming.find(report.structureOrigins[i].file);
        if (note != m_Coming.end())
            m_Parts.notes.set(*report.structures[i], note->second);
    }
    m_Coming.clear();
    m_Actions.opened(report);
    const std::size_t count = report.structures.size();
    if (report.isCancelled)
        sayIn(m_ComingFrom, tr("Opening was cancelled, nothing is loaded."));
    else if (count > 0)
        sayIn(m_ComingFrom, count == 1 ? tr("Opened 1 model") : tr("Opened %1 models").arg(count));
}

QString FamilyDesk::superpose(const std::vector<FamilyWindow::Chosen> &models) const
{
    const std::map<fs::path, Structure *> loaded = loadedModels(m_Parts.sources);
    std::set<std::string> names;
    for (const FamilyWindow::Chosen &model : models) {
        names.insert(model.target);
        names.insert(model.templateName);
    }
    const LoadedRows rows(names);
    std::vector<SuperposeCommand::Pair> pairs;
    std::size_t open = 0;
    for (const FamilyWindow::Chosen &model : models) {
        const auto found = loaded.find(model.files.model);
        if (found == loaded.end())
            continue;
        ++open;
        if (const auto pair = rows.pairOf(*found->second, model.target, model.templateName))
            pairs.push_back(*pair);
    }
    if (open == 0)
        return tr("None of these models is open.");
    if (pairs.empty())
        return tr("Superposing takes the alignment of the family with the templates' structures; "
                  "it is not open.");
    // A model lies exactly on its template where the two were aligned when it was built. Columns
    // that were edited since then would pull all of it away.
    const std::size_t count =
        SuperposeCommand::runEach(pairs, {0, FitChoice::kAllColumns, FitChoice::kUsualCutoff});
    if (count == open)
        return count == 1 ? tr("Superposed 1 model on its template")
                          : tr("Superposed %1 models on their templates").arg(count);
    return tr("Superposed %1 of %2 models on their templates; the log has the reasons")
        .arg(count)
        .arg(open);
}

} // namespace TAMBO::app

#include "moc_FamilyDesk.cpp"
