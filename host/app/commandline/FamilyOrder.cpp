// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyOrder.h"

#include "Text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace TAMBO::app {

namespace {

constexpr const char *kBestTemplate = "best";
constexpr int kMostJobs = 10'000;

Failure wrongModels(std::string sentence)
{
    return {FailureKind::BadInput, std::move(sentence)};
}

// The options with a word behind them, and what that is.
constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kWithWord = {
    {{"--template", "the name of a row, or \"best\""},
     {"--targets", "names of rows, with commas between them"},
     {"--out", "a folder"},
     {"--object", "the name of an alignment"},
     {"--jobs", "how many models are to be built at a time"},
     {"--profile", "a profile of Snakemake"},
     {"--continue", "a folder that is prepared"},
     {"--table", "a folder that is prepared"}}};

class FamilyWords
{
public:
    [[nodiscard]] Result<FamilyOrder> parse(const std::vector<std::string> &words)
    {
        bool optionsEnded = false;
        for (std::size_t i = 0; i < words.size(); ++i) {
            const std::string &word = words[i];
            if (optionsEnded || word.size() < 2 || word.front() != '-') {
                if (word.empty())
                    return wrongModels("a file name is empty");
                m_Order.files.push_back(word);
                continue;
            }
            const auto *const known =
                std::ranges::find(kWithWord, word, [](const auto &option) { return option.first; });
            if (word == "--") {
                optionsEnded = true;
            } else if (known == kWithWord.end()) {
                if (const Result<void> taken = take(word); !taken)
                    return taken.error();
            } else if (++i == words.size() || words[i].empty()) {
                return wrongModels(word + " needs " + std::string(known->second));
            } else if (const Result<void> taken = take(word, words[i]); !taken) {
                return taken.error();
            }
        }
        return checked();
    }

private:
    [[nodiscard]] Result<void> take(const std::string &option)
    {
        if (option == "--pool")
            m_Order.usesPool = true;
        else if (option == "--prepare")
            m_IsPrepared = true;
        else
            return wrongModels("models knows no option " + option);
        return {};
    }
    [[nodiscard]] Result<void> take(const std::string &option, const std::string &value)
    {
        if (option == "--template") {
            m_Template = value;
        } else if (option == "--targets") {
            m_Order.targets.push_back(value);
        } else if (option == "--object") {
            m_Order.object = value;
        } else if (option == "--profile") {
            m_Order.profile = value;
        } else if (option == "--jobs") {
            m_Order.jobs = numberIn<int>(value);
            if (!m_Order.jobs || *m_Order.jobs < 1 || *m_Order.jobs > kMostJobs)
                return wrongModels("--jobs needs a number from 1 to " + std::to_string(kMostJobs) +
                                   " instead of " + value);
        } else {
            if (!m_Order.folder.empty())
                return wrongModels("models works in one folder; --out, --continue and --table "
                                   "name it");
            m_Order.folder = value;
            m_Order.task = option == "--continue" ? FamilyOrder::Task::Continue
                           : option == "--table"  ? FamilyOrder::Task::Table
                                                  : FamilyOrder::Task::Build;
        }
        return {};
    }
    [[nodiscard]] Result<FamilyOrder> checked()
    {
        using Task = FamilyOrder::Task;
        if (m_Order.folder.empty())
            return wrongModels("models needs a folder for them: --out DIR");
        const bool isOfFamily = m_Order.task == Task::Build;
        if (isOfFamily && m_Order.files.empty())
            return wrongModels("models needs the file of a family");
        if (!isOfFamily && (!m_Order.files.empty() || m_Template || !m_Order.targets.empty() ||
                            m_Order.object || m_IsPrepared))
            return wrongModels("--continue and --table take a folder as it is prepared, without a "
                               "family, a template or targets");
        const bool isRun = m_Order.jobs || m_Order.usesPool || !m_Order.profile.empty();
        if (isRun && (m_IsPrepared || m_Order.task == Task::Table))
            return wrongModels("--jobs, --profile and --pool are for building models, which "
                               "--prepare and --table do not");
        if (m_Order.usesPool && !m_Order.profile.empty())
            return wrongModels("--profile is for Snakemake, which --pool does without");
        if (m_IsPrepared)
            m_Order.task = Task::Prepare;
        if (m_Template && *m_Template != kBestTemplate)
            m_Order.templateName = *m_Template;
        return std::move(m_Order);
    }

    FamilyOrder m_Order;
    std::optional<std::string> m_Template;
    bool m_IsPrepared = false;
};

} // namespace

Result<FamilyOrder> parseFamilyOrder(const std::vector<std::string> &words)
{
    return FamilyWords().parse(words);
}

} // namespace TAMBO::app
