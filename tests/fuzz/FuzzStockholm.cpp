// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryFile.h"
#include "StockholmReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    TAMBO::formats::readBytesInParts(bytes, size, TAMBO::formats::readStockholm);
    TAMBO::formats::readBytesInParts(bytes, size, TAMBO::formats::readPlainRows);
    return 0;
}
