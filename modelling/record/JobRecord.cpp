// SPDX-License-Identifier: GPL-3.0-or-later
#include "JobRecord.h"

#include "ReplacementFile.h"
#include "Text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <sys/stat.h>

namespace kestram {

namespace {

namespace fs = std::filesystem;
using TAMBO::Failure;
using TAMBO::FailureKind;
using TAMBO::Result;
using RecordJson = nlohmann::ordered_json;

constexpr std::array<std::pair<JobState, std::string_view>, 4> kStates = {
    {{JobState::Running, "running"},
     {JobState::Ok, "ok"},
     {JobState::Failed, "failed"},
     {JobState::Killed, "killed"}}};

constexpr const char *kScores = "residue_scores";
// A target of 100,000 residues needs 3 MB.
constexpr std::uintmax_t kMostBytes = std::uintmax_t{1} << 26U;

// The fields of a record, of which each may be missing. What is wrong is thrown, and told by
// readJobRecord().
class RecordFields
{
public:
    explicit RecordFields(const RecordJson &json) : m_Json(json) { }

    void read(const char *name, std::string &value) const
    {
        if (const RecordJson *const found = find(name)) {
            expect(found->is_string(), name, "a text");
            value = found->get<std::string>();
        }
    }
    void read(const char *name, double &value) const
    {
        if (const RecordJson *const found = find(name))
            value = number(*found, name);
    }
    void read(const char *name, std::optional<double> &value) const
    {
        if (const RecordJson *const found = find(name))
            value = number(*found, name);
    }
    void read(const char *name, std::optional<std::size_t> &value) const
    {
        if (const RecordJson *const found = find(name))
            value = count(*found, name);
    }
    void read(const char *name, long &value) const
    {
        if (const RecordJson *const found = find(name))
            value = static_cast<long>(whole(*found, name, std::numeric_limits<long>::max()));
    }
    void read(const char *name, std::optional<int> &value) const
    {
        if (const RecordJson *const found = find(name))
            value = static_cast<int>(whole(*found, name, std::numeric_limits<int>::max()));
    }
    void read(const char *name, std::vector<std::pair<std::size_t, double>> &values) const
    {
        const RecordJson *const found = find(name);
        if (found == nullptr)
            return;
        expect(found->is_array(), name, "a list");
        for (const RecordJson &pair : *found) {
            expect(pair.is_array() && pair.size() == 2, name, "pairs of a letter and its score");
            values.emplace_back(count(pair[0], name), number(pair[1], name));
        }
    }
    // Without it, nobody knows what the rest means.
    [[nodiscard]] JobState state() const
    {
        std::string text;
        read("state", text);
        const auto *const found =
            std::ranges::find(kStates, text, [](const auto &state) { return state.second; });
        expect(found != kStates.end(), "state", "running, ok, failed or killed");
        return found->first;
    }

private:
    [[nodiscard]] const RecordJson *find(const char *name) const
    {
        const auto found = m_Json.find(name);
        return found == m_Json.end() || found->is_null() ? nullptr : &*found;
    }
    static void expect(bool isTrue, const char *name, const char *what)
    {
        if (!isTrue)
            throw std::invalid_argument(std::string("\"") + name + "\" is not " + what);
    }
    static double number(const RecordJson &value, const char *name)
    {
        expect(value.is_number() && std::isfinite(value.get<double>()), name, "a number");
        return value.get<double>();
    }
    static std::uint64_t whole(const RecordJson &value, const char *name, std::uint64_t most)
    {
        expect(value.is_number_unsigned() && value.get<std::uint64_t>() <= most, name,
               "a count that is possible");
        return value.get<std::uint64_t>();
    }
    static std::size_t count(const RecordJson &value, const char *name)
    {
        return whole(value, name, std::numeric_limits<std::size_t>::max());
    }

    const RecordJson &m_Json;
};

template <typename Value> void add(RecordJson &json, const char *name, std::optional<Value> value)
{
    json[name] = value ? RecordJson(*value) : RecordJson(nullptr);
}

Result<std::string> recordText(const fs::path &file)
{
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::exists(status))
        return Failure{FailureKind::NotFound, "is not there", {file.filename().string()}};
    // A pipe would keep the reader waiting.
    if (!fs::is_regular_file(status) || fs::file_size(file, error) > kMostBytes || error)
        return Failure{
            FailureKind::BadInput, "is no record of a modelling job", {file.filename().string()}};
    std::ifstream stream(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (!stream.is_open() || stream.bad())
        return Failure{FailureKind::System,
                       std::string("cannot be read: ") + std::strerror(errno),
                       {file.filename().string()}};
    return text;
}

JobRecord recordOf(const RecordJson &json)
{
    const RecordFields fields(json);
    JobRecord record;
    record.state = fields.state();
    fields.read("target", record.target);
    fields.read("template", record.templateName);
    fields.read("host", record.host);
    fields.read("job", record.job);
    fields.read("process", record.process);
    fields.read("started", record.started);
    fields.read("seconds", record.seconds);
    fields.read("exit_status", record.exitStatus);
    fields.read("message", record.message);
    fields.read("engine", record.engine);
    fields.read("residues", record.residues);
    fields.read("modelled", record.modelled);
    fields.read("gaps", record.gaps);
    fields.read("ca_rms", record.caRms);
    fields.read("ca_count", record.caCount);
    fields.read("backbone_score", record.backboneScore);
    fields.read(kScores, record.residueScores);
    return record;
}

// None for all of it.
RecordJson::parser_callback_t filterOf(RecordParts parts)
{
    if (parts == RecordParts::All)
        return nullptr;
    return [](int, RecordJson::parse_event_t event, const RecordJson &parsed) {
        return event != RecordJson::parse_event_t::key || parsed != kScores;
    };
}

// A line for each field but the scores, which would take one for each residue otherwise.
std::string textOf(const RecordJson &json)
{
    std::string text = "{";
    const char *separator = "\n";
    for (const auto &[name, value] : json.items()) {
        // A name of a row may be in any encoding.
        text += separator + RecordJson(name).dump() + ": " +
                value.dump(-1, ' ', false, RecordJson::error_handler_t::replace);
        separator = ",\n";
    }
    return text + "\n}\n";
}

} // namespace

std::string_view textOf(JobState state)
{
    return std::ranges::find(kStates, state, [](const auto &pair) { return pair.first; })->second;
}

Result<JobRecord> readJobRecord(const fs::path &file, RecordParts parts)
{
    const Result<std::string> text = recordText(file);
    if (!text)
        return text.error();
    const auto bad = [&file](const std::string &cause) {
        return Failure{FailureKind::BadInput,
                       "is no record of a modelling job: " + cause,
                       {file.filename().string()}};
    };
    try {
        const RecordJson json = RecordJson::parse(text.value(), filterOf(parts));
        if (!json.is_object())
            return bad("it does not begin with {");
        return recordOf(json);
    } catch (const RecordJson::parse_error &error) {
        return bad("it cannot be understood from byte " + std::to_string(error.byte) + " on");
    } catch (const std::exception &error) {
        return bad(error.what());
    }
}

void sayThatItGoesOn(const fs::path &file)
{
    // The clock is that of the disk, as it is for records that are written. One that has gone, or
    // cannot be reached now, is told next time.
    [[maybe_unused]] const int failed =
        utimensat(AT_FDCWD, file.c_str(), nullptr, AT_SYMLINK_NOFOLLOW);
}

Result<void> writeJobRecord(const fs::path &file, const JobRecord &record)
{
    RecordJson json = {{"state", textOf(record.state)},
                       {"target", record.target},
                       {"template", record.templateName},
                       {"host", record.host},
                       {"job", record.job},
                       {"process", record.process},
                       {"started", record.started},
                       {"seconds", record.seconds}};
    add(json, "exit_status", record.exitStatus);
    json["message"] = record.message;
    json["engine"] = record.engine;
    add(json, "residues", record.residues);
    add(json, "modelled", record.modelled);
    add(json, "gaps", record.gaps);
    add(json, "ca_rms", record.caRms);
    add(json, "ca_count", record.caCount);
    add(json, "backbone_score", record.backboneScore);
    json[kScores] = record.residueScores;
    TAMBO::formats::ReplacementFile replacement(file);
    replacement.write(textOf(json));
    if (Result<void> completed = replacement.complete(); !completed)
        return completed;
    return replacement.putInPlace();
}

} // namespace kestram
