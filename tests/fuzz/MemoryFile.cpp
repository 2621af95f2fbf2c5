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

void checkResult(Result<FileContents> &result)
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

void checkSame(const RowRecord &row, const RowRecord &other)
{
    check(row.name == other.name && row.description == other.description);
    check(row.sequence.letters == other.sequence.letters);
    check(row.sequence.occupancy == other.sequence.occupancy);
    check(row.sequence.width == other.sequence.width);
    check(*row.link == *other.link && row.chainBreaks == other.chainBreaks);
    check(row.annotations == other.annotations);
    check(row.residueAnnotations == other.residueAnnotations);
}

void checkSame(const AlignmentRecord &alignment, const AlignmentRecord &other)
{
    check(alignment.name == other.name && alignment.isAligned == other.isAligned);
    check(alignment.remarks == other.remarks && alignment.annotations == other.annotations);
    check(alignment.columnAnnotations == other.columnAnnotations);
    check(alignment.rows.size() == other.rows.size());
    for (std::size_t row = 0; row < alignment.rows.size(); ++row)
        checkSame(alignment.rows[row], other.rows[row]);
}

Result<FileContents> read(const MemoryFile &file, Reader reader, const PartSizes &sizes)
{
    const ReadProgress noProgress;
    ByteSource source(file.path(), noProgress);
    TextReader text(source, sizes);
    Result<FileContents> result = reader(text);
    checkResult(result);
    return result;
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
    (void)read(MemoryFile(bytes, size), reader, {});
}

void readBytesInParts(const std::uint8_t *bytes, std::size_t size, Reader reader)
{
    const MemoryFile file(bytes, size);
    const Result<FileContents> whole = read(file, reader, {});
    const Result<FileContents> parts = read(file, reader, {0, 16 + size % 200, 1000});
    check(whole.has_value() == parts.has_value());
    if (!whole) {
        check(whole.error().message() == parts.error().message());
        return;
    }
    const std::vector<AlignmentRecord> &alignments = whole.value().alignments;
    check(alignments.size() == parts.value().alignments.size());
    for (std::size_t i = 0; i < alignments.size(); ++i)
        checkSame(alignments[i], parts.value().alignments[i]);
}

void readBytes(const std::uint8_t *bytes, std::size_t size)
{
    const MemoryFile file(bytes, size);
    Result<FileContents> result = readFile(file.path());
    checkResult(result);
}

} // namespace TAMBO::formats
