// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptFixture.h"

#include "Alignment.h"
#include "Compound.h"
#include "Edit.h"
#include "ObjectSpace.h"
#include "Space.h"

#include <cstdlib>
#include <fstream>
#include <ostream>
#include <stdexcept>

ScriptFixture::ScriptFixture()
{
    std::string made = (std::filesystem::temp_directory_path() / "tambo-scripts-XXXXXX").string();
    if (::mkdtemp(made.data()) == nullptr)
        throw std::runtime_error("no folder for scripts");
    folder = made;
    TAMBO::setEditRecorder(&m_History);
}

ScriptFixture::~ScriptFixture()
{
    atBreath = nullptr;
    engine().forget();
    m_History.clear();
    TAMBO::ObjectSpace::get().reset();
    std::error_code error;
    std::filesystem::remove_all(folder, error);
}

void ScriptFixture::write(std::string_view text, Kind kind)
{
    written.emplace_back(kind, text);
}

void ScriptFixture::opened(const TAMBO::Compound &object, const std::filesystem::path &file)
{
    sources.emplace_back(object.Name(), file);
}

TAMBO::scripting::ScriptEngine &ScriptFixture::engine()
{
    const TAMBO::Result<TAMBO::scripting::ScriptEngine *> found =
        TAMBO::scripting::scriptEngine(*this);
    if (!found)
        throw std::runtime_error(found.error().message());
    return *found.value();
}

std::filesystem::path ScriptFixture::write(const std::string &name, const std::string &text)
{
    const std::filesystem::path file = folder / name;
    std::ofstream(file) << text;
    return file;
}

void ScriptFixture::runWell(const std::string &text)
{
    const Outcome outcome = run(text);
    EXPECT_EQ(outcome.end, Outcome::End::Done) << outcome.trace << outcome.message;
}

std::string ScriptFixture::shown() const
{
    std::string all;
    for (const auto &[kind, text] : written)
        all += text;
    return all;
}

std::string ScriptFixture::shown(Kind kind) const
{
    std::string all;
    for (const auto &[itsKind, text] : written)
        all += itsKind == kind ? text : "";
    return all;
}

std::vector<std::string> ScriptFixture::labels() const
{
    std::vector<std::string> found;
    for (std::size_t i = 0; i < m_History.position(); ++i)
        found.push_back(m_History.label(i));
    return found;
}

std::vector<std::string> ScriptFixture::names()
{
    std::vector<std::string> found;
    for (const TAMBO::Compound *const object : *TAMBO::Space::instance()) {
        if (dynamic_cast<const TAMBO::Alignment *>(object) != nullptr)
            found.push_back(object->Name());
    }
    return found;
}

void PrintTo(TAMBO::scripting::ScriptOutcome::End end, std::ostream *out)
{
    *out << (end == TAMBO::scripting::ScriptOutcome::End::Done     ? "Done"
             : end == TAMBO::scripting::ScriptOutcome::End::Failed ? "Failed"
                                                                   : "Stopped");
}
