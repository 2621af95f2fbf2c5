// SPDX-License-Identifier: GPL-3.0-or-later
// Recognising and unpacking included.
#include "MemoryFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    TAMBO::formats::readBytes(bytes, size);
    return 0;
}
