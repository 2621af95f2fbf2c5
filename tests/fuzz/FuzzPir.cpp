// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryFile.h"
#include "PirReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    TAMBO::formats::readBytesInParts(bytes, size, TAMBO::formats::readPir);
    return 0;
}
