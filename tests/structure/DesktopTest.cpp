// SPDX-License-Identifier: GPL-3.0-or-later
// What the desktop is told of the files that the workbench opens.
#include "FormatTable.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace DesktopTest {

std::string types()
{
    std::ifstream stream(SOURCE_DIR "/packaging/desktop/tambo-mime.xml");
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

TEST(Desktop, KnowsEachEndingOfAFilePlainAndCompressed)
{
    const std::string known = types();
    for (const TAMBO::FormatEntry &format : TAMBO::kFormats) {
        for (const std::string_view ending : format.endings()) {
            const std::string pattern = "pattern=\"*" + std::string(ending);
            EXPECT_NE(known.find(pattern + '"'), std::string::npos) << ending;
            EXPECT_NE(known.find(pattern + ".gz\""), std::string::npos) << ending << ".gz";
        }
    }
}

} // namespace DesktopTest
