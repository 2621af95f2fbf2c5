// SPDX-License-Identifier: GPL-3.0-or-later
// Files of sessions with damaged bytes, the way users' files are read.
#include "SessionWalk.h"

#include "SessionReading.h"
#include "StoreReader.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

namespace {

// A file has a length that stands in it, so bytes are changed where they are.
constexpr std::size_t kWindow = 48;

// In memory, where there is such a folder. The same one each time.
const std::filesystem::path &file()
{
    static const std::filesystem::path path = [] {
        const std::filesystem::path memory = "/dev/shm";
        const auto folder =
            std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
        std::atexit([] { std::filesystem::remove(file()); });
        return folder / ("fuzz" + std::to_string(getpid()) + ".tambo");
    }();
    return path;
}

} // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *bytes, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *bytes, std::size_t size,
                                               std::size_t most, unsigned seed)
{
    if (size <= kWindow || seed % 64 == 0)
        return LLVMFuzzerMutate(bytes, size, most);
    // Mostly where something stands; empty pages are large.
    std::size_t begin = (seed * std::size_t(2654435761U)) % (size - kWindow);
    for (std::size_t i = 0; i < 4096 && bytes[begin] == 0; ++i)
        begin = (begin + 61) % (size - kWindow);
    std::uint8_t window[kWindow];
    std::copy_n(bytes + begin, kWindow, window);
    LLVMFuzzerMutate(window, kWindow, kWindow);
    std::copy_n(window, kWindow, bytes + begin);
    return size;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    std::ofstream(file(), std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char *>(bytes), std::streamsize(size));
    const auto session = TAMBO::sessions::openSession(file());
    if (TAMBO::fuzz::isTold(session))
        return 0;
    static_cast<void>(TAMBO::fuzz::isTold(TAMBO::sessions::originOf(*session.value())));
    TAMBO::fuzz::Work work;
    TAMBO::ObjectIndex index;
    if (!TAMBO::fuzz::isTold(
            TAMBO::sessions::readSession(*session.value(), work.space, work.history, index)))
        work.walk();
    else
        TAMBO::fuzz::check(work.space.objectCount() == 0 && work.history.size() == 0);
    return 0;
}
