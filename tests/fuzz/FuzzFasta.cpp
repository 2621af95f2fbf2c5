// SPDX-License-Identifier: GPL-3.0-or-later
#include "FastaReader.h"
#include "MemoryFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    TAMBO::formats::readBytesInParts(bytes, size, TAMBO::formats::readFasta);
    return 0;
}
