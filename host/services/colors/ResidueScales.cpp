// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueScales.h"

#include "DataFile.h"
#include "Directories.h"
#include "Logger.h"
#include "Text.h"

#include <QDir>

#include <algorithm>
#include <cmath>
#include <locale>
#include <optional>
#include <sstream>

namespace TAMBO::services {

namespace {

std::unique_ptr<ResidueScales> &theScales()
{
    static std::unique_ptr<ResidueScales> scales;
    return scales;
}

Result<ResidueScale> readScale(const QString &path)
{
    const Result<std::string> text = readDataFile(path);
    if (!text)
        return text.error();
    return ResidueScales::parse(text.value(), path.toStdString());
}

// "A 1.8"
std::optional<float> plainValue(std::string_view line)
{
    if (line.size() < 2 || !isBlank(line[1]))
        return {};
    line.remove_prefix(1);
    const auto value = takePlainNumber<float>(line);
    return line.empty() ? value : std::nullopt;
}

bool parseValue(const std::string &line, char &letter, float &value)
{
    if (const std::optional<float> plain = plainValue(line)) {
        letter = line.front();
        value = *plain;
        return isCapitalLetter(letter);
    }
    std::istringstream fields(line);
    fields.imbue(std::locale::classic());
    std::string first;
    std::string rest;
    if (!(fields >> first >> value) || fields >> rest || first.size() != 1)
        return false;
    letter = first.front();
    return isCapitalLetter(letter) && std::isfinite(value);
}

// What follows the word on its line; nothing when the line begins otherwise.
std::optional<std::string> afterWord(std::string_view word, const std::string &line)
{
    if (line.substr(0, line.find_first_of(" \t")) != word)
        return {};
    return std::string(trimmed(line.substr(word.size())));
}

struct ScaleFile
{
    QString name;
    ResidueScale scale;
};

// At the place of what it replaces, else at the end.
void insert(std::vector<ScaleFile> &files, ScaleFile added)
{
    const auto isReplaced = [&](const ScaleFile &file) {
        return file.name == added.name || file.scale.name == added.scale.name;
    };
    const auto first = std::ranges::find_if(files, isReplaced);
    const auto index = first - files.begin();
    files.erase(std::remove_if(first, files.end(), isReplaced), files.end());
    files.insert(files.begin() + index, std::move(added));
}

} // namespace

ResidueScales::ResidueScales(std::vector<ResidueScale> scales) : m_Scales(std::move(scales)) { }

ResidueScales::ResidueScales(const std::vector<QString> &directories)
{
    std::vector<ScaleFile> read;
    for (const QString &directory : directories) {
        const QDir files(directory, QStringLiteral("*.scale"), QDir::Name, QDir::Files);
        for (const QString &name : files.entryList()) {
            Result<ResidueScale> scale = readScale(files.filePath(name));
            if (scale)
                insert(read, {name, std::move(scale).value()});
            else
                Logger::Write(QStringLiteral("A residue scale is left out: %1")
                                  .arg(QString::fromStdString(scale.error().message())),
                              Logger::Severity::Warning);
        }
    }
    for (ScaleFile &file : read)
        m_Scales.push_back(std::move(file.scale));
}

const ResidueScales &ResidueScales::instance()
{
    if (!theScales())
        theScales() = std::make_unique<ResidueScales>(
            std::vector<QString>{Directories::shared() + QStringLiteral("/scales"),
                                 Directories::config() + QStringLiteral("/scales")});
    return *theScales();
}

void ResidueScales::setInstance(std::unique_ptr<ResidueScales> scales)
{
    theScales() = std::move(scales);
}

Result<ResidueScale> ResidueScales::parse(std::string_view text, const std::string &fileName)
{
    ResidueScale scale;
    DataLines lines(text);
    while (lines.next()) {
        const std::string &line = lines.line();
        const auto failure = [&](const std::string &cause) {
            return Failure{FailureKind::BadInput, cause, {fileName, lines.number()}};
        };
        if (const auto name = afterWord("name", line)) {
            if (!scale.name.empty())
                return failure("the scale has a name already");
            if (name->empty())
                return failure("expected a name after \"name\"");
            scale.name = *name;
        } else if (const auto unit = afterWord("unit", line)) {
            if (!scale.unit.empty())
                return failure("the scale has a unit already");
            scale.unit = *unit;
        } else if (const auto source = afterWord("source", line)) {
            scale.source += (scale.source.empty() ? "" : " ") + *source;
        } else {
            char letter = '\0';
            float value = 0;
            if (!parseValue(line, letter, value))
                return failure("expected a letter from A to Z and a number");
            if (!scale.values.emplace(letter, value).second)
                return failure(
                    std::string{"the letter "}.append(1, letter).append(" has a value already"));
        }
    }
    if (scale.name.empty())
        return Failure{FailureKind::BadInput,
                       "expected a line \"name\" with the name of the scale",
                       {fileName}};
    return scale;
}

const ResidueScale *ResidueScales::find(std::string_view name) const
{
    const auto found = std::ranges::find(m_Scales, name, &ResidueScale::name);
    return found == m_Scales.end() ? nullptr : &*found;
}

} // namespace TAMBO::services
