// SPDX-License-Identifier: GPL-3.0-or-later
#include "Newick.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    using namespace companion;
    const auto result = readNewick({reinterpret_cast<const char *>(bytes), size});
    const auto *tree = std::get_if<Tree>(&result);
    if (tree == nullptr)
        return 0;
    // What has been read is written so that it is read as the same.
    const auto again = readNewick(writeNewick(*tree));
    const auto *sameTree = std::get_if<Tree>(&again);
    if (sameTree == nullptr || !(*sameTree == *tree))
        std::abort();
    return 0;
}
