// SPDX-License-Identifier: GPL-3.0-or-later
#include "PreparedFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace fs = std::filesystem;

namespace {

// --job RECORD MODEL ALIGNMENT STRUCTURE
constexpr const char *kAdapter = R"sh(#!/bin/sh
record=$2
tell() {
    printf '{\n    "state": "%s",\n    "job": "%s"\n}\n' "$1" "$SLURM_JOB_ID" >"$record.new"
    mv "$record.new" "$record"
}
trap 'tell killed; exit 143' TERM INT
echo "memory $SLURM_MEM_PER_NODE" >>"${record%.json}.starts"
tell running
while [ -e "$4.hold" ]; do sleep 0.05; done
cat "$4" "$5" >"$3.new" || { rm "$3.new"; tell failed; exit 1; }
mv "$3.new" "$3"
tell ok
echo "all is well" >&2
)sh";

// models --table FOLDER
constexpr const char *kWorkbench = R"sh(#!/bin/sh
[ "$1 $2" = "models --table" ] && cd "$3" || exit 2
for record in runs/*.json; do
    file=${record#runs/}
    echo "${file%.json} $(sed -n 's/.*"state": "\(.*\)".*/\1/p' "$record")"
done >results.tsv
)sh";

void put(const fs::path &file, const std::string &text)
{
    std::ofstream(file, std::ios::binary) << text;
}

void putProgram(const fs::path &file, const std::string &text)
{
    put(file, text);
    fs::permissions(file, fs::perms::owner_all);
}

} // namespace

PreparedFolder::PreparedFolder(const std::vector<std::string> &files)
{
    std::string name = (fs::temp_directory_path() / "some family-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        return;
    m_Root = name;
    m_Folder = m_Root / "its models";
    fs::create_directory(m_Root / "bin");
    putProgram(m_Root / "bin/kestram", kAdapter);
    putProgram(m_Root / "bin/tambo", kWorkbench);
    fs::copy(SOURCE_DIR "/share/families", m_Folder, fs::copy_options::recursive);
    for (const char *folder : {"inputs", "templates", "models", "runs"})
        fs::create_directory(m_Folder / folder);
    put(m_Folder / "templates/known.pdb", "the template\n");

    std::string run;
    std::string templates;
    std::string list;
    for (const std::string &file : files) {
        restoreInput(file);
        run += (run.empty() ? "\"" : ", \"") + file + '"';
        templates += (templates.empty() ? "\"" : ", \"") + file + "\": \"known\"";
        list += file + "\tknown\n";
    }
    put(m_Folder / "config.json", "{\"kestram\": \"" + (m_Root / "bin/kestram").string() +
                                      "\", \"tambo\": \"" + (m_Root / "bin/tambo").string() +
                                      "\", \"memory_mb\": 2000, \"run\": [" + run +
                                      "], \"templates\": {" + templates + "}}\n");
    put(m_Folder / "list.tsv", list);
}

PreparedFolder::~PreparedFolder()
{
    std::error_code ignored;
    fs::remove_all(m_Root, ignored);
}

void PreparedFolder::removeInput(const std::string &file) const
{
    fs::remove(m_Folder / "inputs" / (file + ".ali"));
}

void PreparedFolder::restoreInput(const std::string &file) const
{
    put(m_Folder / "inputs" / (file + ".ali"), "rows of " + file + '\n');
}

void PreparedFolder::hold(const std::string &file) const
{
    put(m_Folder / "inputs" / (file + ".ali.hold"), {});
}

void PreparedFolder::letGo(const std::string &file) const
{
    fs::remove(m_Folder / "inputs" / (file + ".ali.hold"));
}

bool PreparedFolder::isRunning(const std::string &file) const
{
    return contentsOf(m_Folder / "runs" / (file + ".json")).find("running") != std::string::npos;
}

std::string PreparedFolder::models() const
{
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(m_Folder / "models"))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    std::string text;
    for (const std::string &name : names)
        text += ' ' + name;
    return text;
}

std::size_t PreparedFolder::startsOf(const std::string &file) const
{
    return std::size_t(
        std::ranges::count(contentsOf(m_Folder / "runs" / (file + ".starts")), '\n'));
}

std::string PreparedFolder::table() const
{
    return contentsOf(m_Folder / "results.tsv");
}

std::string PreparedFolder::logOf(const std::string &file) const
{
    return contentsOf(m_Folder / "runs" / (file + ".log"));
}
