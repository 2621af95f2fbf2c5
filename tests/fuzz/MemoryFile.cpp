// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryFile.h"

#include "RowPacking.h"

#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace TAMBO::formats {

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

void checkResult(Result<FileContents> result)
{
    if (!result) {
        check(!result.error().message().empty());
        return;
    }
    check(result.value().alignments.size() + result.value().structures.size() >= 1);
    for (AlignmentRecord &alignment : result.value().alignments) {
        unpackRows(alignment);
        check(!alignment.rows.empty());
        const std::uint64_t width = alignment.rows.front().sequence.width;
        for (const Annotation &said : alignment.columnAnnotations)
            check(said.text.size() == width);
        for (const RowRecord &row : alignment.rows) {
            for (const Annotation &said : row.residueAnnotations)
                check(said.text.size() == row.sequence.width);
            check(row.sequence.text().size() == row.sequence.width);
            check(!alignment.isAligned || row.sequence.width == width);
        }
    }
    for (const StructureRecord &structure : result.value().structures)
        for (const ChainRecord &chain : structure.chains)
            check(!chain.residues.empty());
}

} // namespace

MemoryFile::MemoryFile(const std::uint8_t *bytes, std::size_t size)
    : m_File(memfd_create("fuzz", MFD_CLOEXEC))
{
    check(m_File >= 0);
    check(write(m_File, bytes, size) == static_cast<ssize_t>(size));
}

MemoryFile::~MemoryFile()
{
    close(m_File);
}

std::filesystem::path MemoryFile::path() const
{
    return "/proc/self/fd/" + std::to_string(m_File);
}

void readBytes(const std::uint8_t *bytes, std::size_t size, Reader reader)
{
    const MemoryFile file(bytes, size);
    const ReadProgress noProgress;
    ByteSource source(file.path(), noProgress);
    TextReader text(source);
    checkResult(reader(text));
}

void readBytes(const std::uint8_t *bytes, std::size_t size)
{
    const MemoryFile file(bytes, size);
    checkResult(readFile(file.path()));
}

} // namespace TAMBO::formats
