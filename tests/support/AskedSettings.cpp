// SPDX-License-Identifier: GPL-3.0-or-later
// Linked into a test program, it notes every setting that a case makes the program ask for. Each
// has to be explained in the help, so that a new one does not stay a secret.
#include "Config.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <utility>

#define CONFIG_GET_SETTING                                                                         \
    "_ZN6Config10GetSettingERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEES7_"

namespace AskedSettings {

using Key = std::pair<std::string, std::string>;

std::set<Key> &asked()
{
    static std::set<Key> keys;
    return keys;
}

// The linker leads calls of Config::GetSetting here (--wrap).
Setting wrapped(const std::string &section,
                const std::string &key) asm("__wrap_" CONFIG_GET_SETTING);
Setting real(const std::string &section, const std::string &key) asm("__real_" CONFIG_GET_SETTING);

Setting wrapped(const std::string &section, const std::string &key)
{
    asked().emplace(section, key);
    return real(section, key);
}

// How the help calls a key: tool bars are counted, and explained by the first.
std::string explainedAs(const std::string &key)
{
    const std::size_t name = key.find_last_not_of("0123456789") + 1;
    return name == key.size() ? key : key.substr(0, name) + '1';
}

// Sections whose keys are names of scales, commands and files, which somebody may add to.
bool isFreelyNamed(const Key &key)
{
    static const std::set<std::string> sections = {"KM2_Colormaps", "Plugins", "Realign"};
    return sections.contains(key.first) && key.second != "Aligner";
}

class AreExplained : public testing::Environment
{
public:
    void TearDown() override
    {
        std::ifstream stream(SOURCE_DIR "/share/help/settings.html");
        const std::string help{std::istreambuf_iterator<char>(stream), {}};
        EXPECT_FALSE(help.empty());
        for (const Key &key : asked()) {
            const std::string explained = "<code>" + explainedAs(key.second) + "</code>";
            EXPECT_TRUE(isFreelyNamed(key) || help.find(explained) != std::string::npos)
                << key.first << '/' << key.second << " is not explained in the help";
        }
    }
};

[[maybe_unused]] const testing::Environment *const kEnvironment =
    testing::AddGlobalTestEnvironment(new AreExplained);

} // namespace AskedSettings
