// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellBlock.h"

#include <new>
#include <sys/mman.h>

namespace TAMBO::formats {

namespace {

// From here on what is lost of the last page is little.
constexpr std::size_t kOwnPages = (std::size_t{1} << 15U) / sizeof(std::uint64_t);

} // namespace

CellBlock::CellBlock(std::size_t words) : m_Size(words)
{
    if (words < kOwnPages) {
        m_Words = new std::uint64_t[words];
        return;
    }
    void *const pages = ::mmap(nullptr, words * sizeof(std::uint64_t), PROT_READ | PROT_WRITE,
                               MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED)
        throw std::bad_alloc();
    m_Words = static_cast<std::uint64_t *>(pages);
}

CellBlock::~CellBlock()
{
    if (m_Size < kOwnPages)
        delete[] m_Words;
    else
        ::munmap(m_Words, m_Size * sizeof(std::uint64_t));
}

} // namespace TAMBO::formats
