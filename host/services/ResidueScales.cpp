// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueScales.h"

#include "Directories.h"
#include "Logger.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <locale>
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
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Failure{(path + QStringLiteral(": ") + file.errorString()).toStdString()};
    const QByteArray text = file.readAll();
    return ResidueScales::parse({text.constData(), std::size_t(text.size())}, path.toStdString());
}

// "A 1.8"
bool parseValue(const std::string &line, char &letter, float &value)
{
    std::istringstream fields(line);
    fields.imbue(std::locale::classic());
    std::string first;
    std::string rest;
    if (!(fields >> first >> value) || fields >> rest || first.size() != 1)
        return false;
    letter = first.front();
    return letter >= 'A' && letter <= 'Z' && std::isfinite(value);
}

std::string trimmedFrom(const std::string &line, std::size_t start)
{
    const auto first = line.find_first_not_of(" \t\r", start);
    if (first == std::string::npos)
        return {};
    return line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
}

} // namespace

ResidueScales::ResidueScales(std::vector<ResidueScale> scales) : m_Scales(std::move(scales)) { }

ResidueScales::ResidueScales(const std::vector<QString> &directories)
{
    for (const QString &directory : directories) {
        const QDir files(directory, QStringLiteral("*.scale"), QDir::Name, QDir::Files);
        for (const QString &name : files.entryList()) {
            Result<ResidueScale> scale = readScale(files.filePath(name));
            if (scale)
                add(std::move(scale).value());
            else
                Logger::Write(QStringLiteral("A residue scale is left out: %1")
                                  .arg(QString::fromStdString(scale.error().message)),
                              Logger::Severity::Warning);
        }
    }
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
    std::istringstream lines{std::string(text)};
    ResidueScale scale;
    std::string line;
    for (unsigned long number = 1; std::getline(lines, line); ++number) {
        line.erase(std::min(line.find('#'), line.size()));
        if (line.find_first_not_of(" \t\r") == std::string::npos)
            continue;
        const std::string place = fileName + ":" + std::to_string(number) + ": ";
        if (line.starts_with("name ") && scale.name.empty()) {
            scale.name = trimmedFrom(line, 5);
            continue;
        }
        char letter = '\0';
        float value = 0;
        if (!parseValue(line, letter, value))
            return Failure{place + "expected a letter from A to Z and a number"};
        if (!scale.values.emplace(letter, value).second)
            return Failure{place + "the letter " + letter + " has a value already"};
    }
    if (scale.name.empty())
        return Failure{fileName + ": expected a line \"name\" with the name of the scale"};
    return scale;
}

void ResidueScales::add(ResidueScale scale)
{
    const auto same = std::ranges::find(m_Scales, scale.name, &ResidueScale::name);
    if (same != m_Scales.end())
        *same = std::move(scale);
    else
        m_Scales.push_back(std::move(scale));
}

const ResidueScale *ResidueScales::find(std::string_view name) const
{
    const auto found = std::ranges::find(m_Scales, name, &ResidueScale::name);
    return found == m_Scales.end() ? nullptr : &*found;
}

} // namespace TAMBO::services
