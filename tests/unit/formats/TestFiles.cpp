// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestFiles.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace TAMBO::formats {

namespace fs = std::filesystem;

TemporaryFile::TemporaryFile(const std::string &name, std::string_view bytes)
{
    std::string folder = (fs::temp_directory_path() / "formats-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    m_Path = fs::path(folder) / name;
    std::ofstream(m_Path, std::ios::binary) << bytes;
}

TemporaryFile::~TemporaryFile()
{
    fs::remove_all(m_Path.parent_path());
}

fs::path dataFile(const std::string &name)
{
    return fs::path(TEST_DATA_DIR) / name;
}

std::string bytesOf(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.good()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string gzipped(std::string_view bytes)
{
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, 6, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
    std::string packed(deflateBound(&stream, bytes.size()) + 64, '\0');
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef *>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::vector<Fact> facts(const std::string &table)
{
    const auto cellsOf = [](const std::string &line) {
        std::vector<std::string> cells(1);
        for (const char c : line) {
            if (c == '\t')
                cells.emplace_back();
            else
                cells.back() += c;
        }
        return cells;
    };
    std::ifstream file(dataFile(table));
    std::string line;
    std::getline(file, line);
    const std::vector<std::string> columns = cellsOf(line);
    std::vector<Fact> rows;
    while (std::getline(file, line)) {
        const std::vector<std::string> cells = cellsOf(line);
        Fact fact;
        for (std::size_t i = 0; i < columns.size(); ++i)
            fact[columns[i]] = i < cells.size() ? cells[i] : std::string();
        rows.push_back(fact);
    }
    EXPECT_FALSE(rows.empty()) << table;
    return rows;
}

FileContents contentsOf(const fs::path &path)
{
    Result<FileContents> result = readFile(path);
    if (!result) {
        ADD_FAILURE() << path << ": " << result.error().message();
        return {};
    }
    return std::move(result).value();
}

FileContents contentsOf(const std::string &name, std::string_view bytes)
{
    return contentsOf(TemporaryFile(name, bytes).path());
}

AlignmentRecord alignmentOf(const std::string &name, std::string_view bytes,
                            const std::string &format)
{
    FileContents contents = contentsOf(name, bytes);
    EXPECT_EQ(contents.format, format);
    EXPECT_EQ(contents.alignments.size(), 1U);
    return contents.alignments.empty() ? AlignmentRecord() : std::move(contents.alignments[0]);
}

std::string messageOf(const fs::path &path)
{
    const Result<FileContents> result = readFile(path);
    EXPECT_FALSE(result) << path << " was read as " << result.value().format;
    return result ? std::string() : result.error().message();
}

std::string messageOf(const std::string &name, std::string_view bytes)
{
    return messageOf(TemporaryFile(name, bytes).path());
}

std::vector<std::string> rowTexts(const AlignmentRecord &alignment)
{
    std::vector<std::string> texts;
    for (const RowRecord &row : alignment.rows)
        texts.push_back(row.sequence.text());
    return texts;
}

std::vector<std::string> rowNames(const AlignmentRecord &alignment)
{
    std::vector<std::string> names;
    for (const RowRecord &row : alignment.rows)
        names.push_back(row.name);
    return names;
}

bool hasAlphaCarbon(const ResidueRecord &residue)
{
    return std::any_of(residue.atoms.begin(), residue.atoms.end(), [](const AtomRecord &atom) {
        return atom.name == "CA" && atom.element == "C";
    });
}

std::string sequenceOf(const ChainRecord &chain)
{
    std::string sequence;
    for (const ResidueRecord &residue : chain.residues)
        if (hasAlphaCarbon(residue))
            sequence += residue.letter;
    return sequence;
}

} // namespace TAMBO::formats
