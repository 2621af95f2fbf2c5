// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryFile.h"
#include "NexusReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    TAMBO::formats::readBytes(bytes, size, TAMBO::formats::readNexus);
    return 0;
}
