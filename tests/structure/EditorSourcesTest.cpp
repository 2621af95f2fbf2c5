// SPDX-License-Identifier: GPL-3.0-or-later
// Habits of the editor's sources that no run of the program shows.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace EditorSourcesTest {

namespace fs = std::filesystem;

const fs::path kRoot = SOURCE_DIR;

// Without comments.
std::string codeOf(const fs::path &file)
{
    std::ifstream stream(file);
    std::string code;
    for (std::string line; std::getline(stream, line);)
        code += line.substr(0, line.find("//")) + '\n';
    return code;
}

std::vector<std::pair<std::string, std::string>> sourcesOf(const char *folder)
{
    std::vector<std::pair<std::string, std::string>> sources;
    for (const auto &entry : fs::recursive_directory_iterator(kRoot / folder)) {
        const fs::path &file = entry.path();
        if (file.extension() == ".cpp" || file.extension() == ".h")
            sources.emplace_back(file.filename().string(), codeOf(file));
    }
    return sources;
}

void expectNone(const char *folder, const std::string &pattern)
{
    for (const auto &[name, code] : sourcesOf(folder))
        EXPECT_FALSE(std::regex_search(code, std::regex(pattern))) << name << ": " << pattern;
}

// The statement that follows the one with a "new", for each of them.
std::vector<std::string> followersOfNew(const std::string &code)
{
    static const std::regex made(R"(\bnew (ZEP::)?[A-Z])");
    std::vector<std::string> followers;
    for (std::sregex_iterator next(code.begin(), code.end(), made), end; next != end; ++next) {
        const auto begin = code.find(';', static_cast<std::size_t>(next->position())) + 1;
        followers.push_back(code.substr(begin, code.find(';', begin) - begin));
    }
    return followers;
}

TEST(EditorSources, CheckWhatTheyMakeInTheNextStatement)
{
    std::size_t made = 0;
    for (const auto &[name, code] : sourcesOf("plugins/editor")) {
        for (const std::string &follower : followersOfNew(code)) {
            ++made;
            EXPECT_NE(follower.find("TAMBO_CHECK_PTR("), std::string::npos) << name << follower;
        }
    }
    EXPECT_GT(made, 20U);
}

TEST(EditorSources, WriteChecksOfTheirOwnKindOnly)
{
    for (const char *folder : {"plugins/editor", "include"})
        expectNone(folder, R"(\bQ_(ASSERT|ASSERT_X|CHECK_PTR|ASSUME)\b|\bassert\()");
}

TEST(EditorSources, StartNoThread)
{
    expectNone("plugins/editor",
               R"(\bQThread\b|\bQtConcurrent\b|std::(j?thread|async)\b|\bQMutex\b)");
}

TEST(EditorSources, ThrowNothing)
{
    expectNone("plugins/editor", R"(\bthrow\b)");
}

TEST(EditorSources, ReadOneVariableOfTheEnvironment)
{
    static const std::regex reading(R"rx((?:qEnvironmentVariable\w*|qgetenv|getenv)\("([^"]*)")rx");
    for (const auto &[name, code] : sourcesOf("plugins/editor"))
        for (std::sregex_iterator next(code.begin(), code.end(), reading), end; next != end; ++next)
            EXPECT_EQ((*next)[1], "KESTRAM") << name;
}

TEST(EditorSources, DeleteNoObjectOfTheWorkbench)
{
    // Windows, items and boxes of their own; everything else belongs to the workbench or to
    // parents.
    static const std::regex deletion(R"(\bdelete (\w+);)");
    for (const auto &[name, code] : sourcesOf("plugins/editor"))
        for (std::sregex_iterator next(code.begin(), code.end(), deletion), end; next != end;
             ++next) {
            const std::string what = (*next)[1];
            EXPECT_TRUE(what == "window" || what == "item" || what == "box")
                << name << ": " << what;
        }
}

// The texts follow each other in the code.
void expectInOrder(const char *file, const std::vector<std::string> &texts)
{
    const char *room = fs::exists(kRoot / "plugins/editor/dialogs" / file) ? "dialogs" : "window";
    const std::string code = codeOf(kRoot / "plugins/editor" / room / file);
    std::size_t place = 0;
    for (const std::string &text : texts) {
        const std::size_t found = code.find(text, place);
        ASSERT_NE(found, std::string::npos) << file << ": " << text;
        place = found + text.size();
    }
}

TEST(EditorSources, MakeTheColorDialogInItsFixedOrder)
{
    expectInOrder("AcidColor.h", {"class AcidColor : public BaseDialog", "m_Method", "m_Swatches",
                                  "int m_CurrentMethod", "m_Tables", "m_Colors"});
    expectInOrder(
        "AcidColor.cpp",
        {R"(BaseDialog("Color Residues", QSize(200, 150), 7, 3, "No help", false, false, )"
         "parent, nullptr)",
         "CreateComboBox(this, false)", "populate()", "addWidget(m_Method, 3)", "addLayout(grid)",
         R"(createSwatch(kUnknown, "Unknown"))", "StartWidget()", "CreateTooltips()",
         "&QComboBox::activated, this, &AcidColor::MethodSelected"});
    expectInOrder("JLabel.h",
                  {"class JLabel : public QLabel", "mousePressEvent(QMouseEvent *event) override",
                   "bool m_On = true", "int m_Index"});
    expectInOrder("JLabel.cpp", {"::mousePressEvent", "m_On = !m_On", "switched(m_Index)",
                                 "QLabel::mousePressEvent(event)"});
}

TEST(EditorSources, OverrideApplyAloneInTheDialogs)
{
    static const std::regex overriding(R"((\S+)\([^)]*\) override)");
    for (const std::string name : {"AcidColor", "SequenceSelector"}) {
        const std::string code = codeOf(kRoot / "plugins/editor/dialogs" / (name + ".h"));
        std::vector<std::string> found;
        for (std::sregex_iterator next(code.begin(), code.end(), overriding), end; next != end;
             ++next)
            found.push_back((*next)[1]);
        EXPECT_EQ(found, (std::vector<std::string>{'~' + name, "Apply"}));
    }
}

TEST(EditorSources, LeaveTheTextOfFilesToTheWorkbench)
{
    expectNone("plugins/editor", R"(>P1;|structure[XMN]?:)");
}

TEST(EditorSources, SayWhereAnAlignmentWasNotMadeAndGoOn)
{
    expectInOrder("KALMO2Acquire.cpp",
                  {"for_each(space->begin(), space->end(), GetAlignmentObj(",
                   R"(makeAlignment("SeqAli", chosen);)",
                   R"(TAMBO_ASSERT(0 != newAli, "KalmoIO", 245);)", "Populate(newAli);",
                   "AddSequences()", "candidateSequences()", "m_Data == nullptr", "duplicate(",
                   R"(TAMBO_ASSERT(0 != newAli, "KalmoIO", 273);)"});
}

TEST(EditorSources, MakeTheSequenceSelectorInItsFixedOrder)
{
    expectInOrder("SequenceSelector.h", {"class SequenceSelector : public BaseDialog", "*m_Box",
                                         "&m_Candidates", "&m_Chosen"});
    expectInOrder("SequenceSelector.cpp",
                  {"class Adder", R"(TAMBO_ASSERT(Box->count() == Index, "SequenceSelector", 157))",
                   "class Feedback",
                   R"(BaseDialog("Select " + title, QSize(200, 150), 3, 3, "No help", )"
                   "false, true, parent, nullptr)",
                   "GetTopLevelLayout()", R"(TAMBO_CHECK_PTR(layout, "SequenceSelector", 83))",
                   "CreateListbox(this)", "setSelectionMode(", "populate()", "addWidget(m_Box, 3)",
                   "StartWidget()", "CreateTooltips()", "for_each(m_Candidates.begin(), ", "Adder(",
                   "::Apply()", "m_Chosen.clear()", "for_each(m_Candidates.begin(), ",
                   "Feedback("});
}

TEST(EditorSources, LetTheMenuGoBeforeAFileIsAskedFor)
{
    expectInOrder("KalmoIO.cpp",
                  {"KALMO2::Save()\n{\n", "sync()", "m_Data == nullptr", "getSaveFileName",
                   "KALMO2::OpenFile()\n{\n", "sync()", "PluginManager::Execute"});
}

TEST(Settings, AreAllExplainedInTheHelp)
{
    static const std::regex reading(R"rx(GetSetting\("\w+", "(\w+)"\)|settingOr\([^"]*"(\w+)")rx");
    const fs::path page = kRoot / "share/help/settings.html";
    std::ifstream stream(page);
    const std::string help{std::istreambuf_iterator<char>(stream), {}};
    std::size_t settings = 0;
    for (const char *folder : {"host", "plugins/editor"})
        for (const auto &[name, code] : sourcesOf(folder))
            for (std::sregex_iterator next(code.begin(), code.end(), reading), end; next != end;
                 ++next) {
                const std::string key = (*next)[1].matched ? (*next)[1] : (*next)[2];
                EXPECT_NE(help.find("<code>" + key + "</code>"), std::string::npos)
                    << key << " in " << name;
                ++settings;
            }
    EXPECT_GE(settings, 10U);
}

} // namespace EditorSourcesTest
