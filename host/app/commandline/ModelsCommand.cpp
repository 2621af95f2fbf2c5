// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelsCommand.h"

#include "Alignment.h"
#include "Directories.h"
#include "ExitStatus.h"
#include "FamilyOfAlignment.h"
#include "FamilyPreparing.h"
#include "FamilyResults.h"
#include "FamilyRun.h"
#include "FolderLock.h"
#include "FormatText.h"
#include "OpenedFamily.h"
#include "Text.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace TAMBO::app {

namespace {

namespace fs = std::filesystem;
using families::FamilyFolder;
using families::FamilyTarget;
using families::PreparedFamily;
using families::ResultRow;
using families::TargetState;

constexpr int kEndedBySignal = 128;
// Of a list that may have ten thousand lines.
constexpr std::size_t kMostLines = 20;

fs::path besideThisProgram(const char *name)
{
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::path() : self.parent_path() / name;
}

std::string percentText(double value)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f", value);
    return text.data();
}

void tellSome(std::ostream &to, const std::vector<std::string> &lines, const std::string &before)
{
    const std::size_t shown = lines.size() > kMostLines + 1 ? kMostLines : lines.size();
    for (std::size_t i = 0; i < shown; ++i)
        to << before << lines[i] << '\n';
    if (shown < lines.size())
        to << before << "and " << lines.size() - shown << " more; " << FamilyFolder::kListName
           << " has all\n";
}

// As the row says it; "ok" has more to tell.
std::string textOf(const ResultRow &row)
{
    std::string text(families::textOf(row.state));
    if (row.state != TargetState::Ok)
        return row.record.message.empty() ? text
                                          : text + ", " + formats::cleanText(row.record.message);
    if (row.record.modelled)
        text += ", " + std::to_string(*row.record.modelled) + " of " +
                counted(row.target.residues, "residue");
    if (row.record.started > 0)
        text += ", " + percentText(row.record.seconds) + " s";
    return text;
}

class ModelsCommand
{
public:
    ModelsCommand(const FamilyOrder &order, std::ostream &out, std::ostream &err)
        : m_Order(order), m_Out(out), m_Err(err)
    {
        m_Settings.tambo = besideThisProgram("tambo");
        m_Settings.kestram = besideThisProgram("kestram");
        if (access(m_Settings.kestram.c_str(), X_OK) != 0)
            m_Settings.kestram = families::programOnPath("kestram");
        m_Settings.workflow =
            QFile::encodeName(services::Directories::shared()).toStdString() + "/families";
    }

    [[nodiscard]] int run(const WithApplication &withApplication)
    {
        if (m_Order.task == FamilyOrder::Task::Table)
            return writeTable();
        if (const Result<void> ready = checkPrograms(); !ready)
            return complain(m_Err, ready.error(), kBadInput);
        if (m_Order.task != FamilyOrder::Task::Continue) {
            // A run waits for signals, and nothing of the toolkit is to be there then.
            if (const int status = withApplication([this] { return prepare(); }); status != 0)
                return status;
            if (m_Order.task == FamilyOrder::Task::Prepare)
                return tellPrepared();
        }
        return build();
    }

private:
    [[nodiscard]] Result<void> checkPrograms() const
    {
        if (m_Settings.kestram.empty())
            return Failure{
                FailureKind::NotFound,
                "the program \"kestram\", a part of Tambo, was not found; please install "
                "Tambo again"};
        // Nodes of a cluster may have it where the computer that hands out the jobs has not.
        const bool isElsewhere =
            m_Order.task == FamilyOrder::Task::Prepare || !m_Order.profile.empty();
        if (!isElsewhere && families::programOnPath("promod").empty())
            return Failure{FailureKind::NotFound,
                           "the modelling engine ProMod3 (program \"promod\") was not found; on "
                           "Debian, install the package promod3; with --prepare the folder is "
                           "written for another computer"};
        return {};
    }

    [[nodiscard]] int writeTable() const
    {
        const Result<FamilyFolder> folder = FamilyFolder::open(m_Order.folder);
        if (!folder)
            return complain(m_Err, folder.error(), kBadInput);
        if (const Result<void> written = families::writeResults(folder.value()); !written)
            return complain(m_Err, written.error(), kBadInput);
        return 0;
    }

    [[nodiscard]] int prepare()
    {
        const Result<std::unique_ptr<OpenedFamily>> opened = OpenedFamily::open(m_Order);
        if (!opened)
            return complain(m_Err, opened.error(), kBadInput);
        const Alignment &alignment = opened.value()->alignment();
        std::error_code error;
        const families::Family family =
            familyOf(alignment, fs::absolute(opened.value()->file(), error));
        const auto plan = families::planModels(family, {m_Order.templateName, targetsIn(family)});
        if (!plan)
            return complain(m_Err, plan.error(), kBadInput);
        Result<PreparedFamily> prepared = families::prepareFamily(
            family, plan.value(), templatesOf(alignment), m_Order.folder, m_Settings);
        if (!prepared)
            return complain(m_Err, prepared.error(), kBadInput);
        m_Prepared.emplace(std::move(prepared).value());
        tellChoice();
        return 0;
    }
    // A name may have commas itself.
    [[nodiscard]] std::vector<std::string> targetsIn(const families::Family &family) const
    {
        std::set<std::string_view> names;
        for (const families::FamilyRow &row : family.rows)
            names.insert(row.name);
        std::vector<std::string> targets;
        for (const std::string &words : m_Order.targets) {
            if (names.contains(words)) {
                targets.push_back(words);
                continue;
            }
            for (std::size_t begin = 0; begin <= words.size();) {
                const std::size_t end = std::min(words.find(',', begin), words.size());
                targets.push_back(words.substr(begin, end - begin));
                begin = end + 1;
            }
        }
        return targets;
    }
    void tellChoice()
    {
        const std::string before = "tambo: ";
        tellSome(m_Err, m_Prepared->mapped, before);
        tellSome(m_Err, m_Prepared->changed, before);
        tellSome(m_Err, m_Prepared->remarks, before);
        if (!m_Order.templateName.empty())
            return;
        std::vector<std::string> chosen;
        for (const FamilyTarget &target : m_Prepared->asked)
            chosen.push_back(formats::cleanText(target.name + " on " + target.templateName) + ", " +
                             percentText(families::identityOf(target)) + " % identical");
        tellSome(m_Out, chosen, "");
        m_Out.flush();
    }
    [[nodiscard]] int tellPrepared() const
    {
        if (const Result<void> written = families::writeResults(m_Prepared->folder); !written)
            return complain(m_Err, written.error(), kBadInput);
        m_Out << m_Order.folder << ": " << counted(m_Prepared->asked.size(), "target")
              << " prepared; tambo models --continue " << formats::shellWord(m_Order.folder)
              << " builds the models\n";
        return m_Out.flush() ? 0 : complain(m_Err, unwrittenOutput(), kBadInput);
    }

    [[nodiscard]] int build()
    {
        const Result<FamilyFolder> folder = m_Prepared ? Result<FamilyFolder>(m_Prepared->folder)
                                                       : FamilyFolder::open(m_Order.folder);
        if (!folder)
            return complain(m_Err, folder.error(), kBadInput);
        const auto lock = families::FolderLock::take(m_Order.folder);
        if (!lock)
            return complain(m_Err, lock.error(), kBadInput);
        if (!m_Prepared) {
            if (const Result<void> asked = families::askForAll(folder.value(), m_Settings); !asked)
                return complain(m_Err, asked.error(), kBadInput);
        }
        families::RunSettings settings;
        settings.jobs = m_Order.jobs;
        settings.profile = m_Order.profile;
        settings.usesPool = m_Order.usesPool;
        settings.kestram = m_Settings.kestram;
        settings.megabytes = m_Settings.megabytes;
        const auto outcome = families::runFamily(
            folder.value(), m_Prepared ? m_Prepared->asked : folder.value().targets(), settings,
            lock.value(), [this](const families::TargetEnd &end) { tellEnd(end); });
        if (!outcome)
            return complain(m_Err, outcome.error(), kBadInput);
        return tellOutcome(outcome.value());
    }
    void tellEnd(const families::TargetEnd &end) const
    {
        m_Out << '[' << end.done << '/' << end.total << "] "
              << formats::cleanText(end.row.target.name + " on " + end.row.target.templateName)
              << ": " << textOf(end.row) << '\n'
              << std::flush;
    }
    [[nodiscard]] int tellOutcome(const families::RunOutcome &outcome) const
    {
        for (const std::string &remark : outcome.remarks)
            m_Err << "tambo: " << remark << '\n';
        std::map<TargetState, std::size_t> counts;
        for (const ResultRow &row : outcome.rows)
            ++counts[row.state];
        const char *separator = ": ";
        m_Out << (fs::path(m_Order.folder) / FamilyFolder::kTableName).string();
        for (const auto &[state, count] : counts) {
            m_Out << separator << count << ' ' << families::textOf(state);
            separator = ", ";
        }
        m_Out << '\n' << std::flush;
        if (outcome.signal != 0) {
            m_Err << "tambo: stopped; tambo models --continue "
                  << formats::shellWord(m_Order.folder) << " builds what is missing\n";
            return kEndedBySignal + outcome.signal;
        }
        if (!m_Out)
            return complain(m_Err, unwrittenOutput(), kBadInput);
        return counts[TargetState::Ok] == outcome.rows.size() ? 0 : kBadInput;
    }

    const FamilyOrder &m_Order;
    std::ostream &m_Out;
    std::ostream &m_Err;
    families::FamilySettings m_Settings;
    std::optional<PreparedFamily> m_Prepared;
};

} // namespace

int runModels(const FamilyOrder &order, const WithApplication &withApplication, std::ostream &out,
              std::ostream &err)
{
    return ModelsCommand(order, out, err).run(withApplication);
}

} // namespace TAMBO::app
