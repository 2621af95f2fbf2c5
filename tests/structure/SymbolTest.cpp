// SPDX-License-Identifier: GPL-3.0-or-later
// What the built files export, need and leave open, as binutils read it from them.
#include "BinaryFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace SymbolTest {

namespace fs = std::filesystem;

using BinaryFiles::outputOf;

// Type and name of each dynamic symbol; the address, which open ones lack, is left out.
struct Symbol
{
    char type;
    std::string name;
};

std::vector<Symbol> symbols(const std::string &options, const std::string &file)
{
    static const std::regex pattern(R"(^\s*(?:[0-9a-f]+ )?\s*([A-Za-z]) (.+)$)");
    std::vector<Symbol> found;
    for (const std::string &line : outputOf("nm -D " + options + " '" + file + "'")) {
        std::smatch match;
        if (std::regex_match(line, match, pattern))
            found.push_back({match[1].str().front(), match[2]});
    }
    return found;
}

std::set<std::string> dynamicEntries(const std::string &kind, const std::string &file)
{
    const std::regex pattern("\\(" + kind + R"(\).*\[(.+)\])");
    std::set<std::string> found;
    for (const std::string &line : outputOf("readelf -dW '" + file + "'")) {
        std::smatch match;
        if (std::regex_search(line, match, pattern))
            found.insert(match[1]);
    }
    return found;
}

TEST(EditorLibrary, ExportsItsThreeFunctionsAndNothingElse)
{
    std::set<std::string> names;
    for (const Symbol &symbol : symbols("--defined-only", EDITOR_FILE)) {
        EXPECT_EQ(symbol.type, 'T') << symbol.name;
        names.insert(symbol.name);
    }
    EXPECT_EQ(names, (std::set<std::string>{"Cleanup", "Execute0", "IsDone"}));
}

TEST(EditorLibrary, IsCalledByItsVersionedName)
{
    EXPECT_EQ(fs::path(EDITOR_FILE).filename(), "libKALMO2.so.0");
    EXPECT_EQ(dynamicEntries("SONAME", EDITOR_FILE), std::set<std::string>{"libKALMO2.so.0"});
}

TEST(EditorLibrary, NeedsTheToolkitAndTheSystemOnly)
{
    const std::regex allowed(
        R"((libQt6\w+|libc|libm|libstdc\+\+|libgcc_s|libasan|libubsan|ld-linux-.*)\.so\.\d+)");
    const std::set<std::string> needed = dynamicEntries("NEEDED", EDITOR_FILE);
    EXPECT_TRUE(needed.contains("libQt6Widgets.so.6"));
    for (const std::string &name : needed)
        EXPECT_TRUE(std::regex_match(name, allowed)) << name;
}

TEST(EditorLibrary, LeavesNoPathOfTheBuildMachine)
{
    EXPECT_TRUE(dynamicEntries("RUNPATH", EDITOR_FILE).empty());
    EXPECT_TRUE(dynamicEntries("RPATH", EDITOR_FILE).empty());
}

std::set<std::string> namesOf(const std::string &file)
{
    std::set<std::string> names;
    for (const Symbol &symbol : symbols("--defined-only", file))
        names.insert(symbol.name);
    return names;
}

// The program and the library that it is started with.
std::set<std::string> workbenchNames()
{
    std::set<std::string> names = namesOf(WORKBENCH_FILE);
    names.merge(namesOf(CORE_FILE));
    return names;
}

TEST(EditorLibrary, FindsEveryHostSymbolInTheWorkbench)
{
    const std::set<std::string> exported = workbenchNames();
    std::size_t fromHost = 0;
    for (const Symbol &symbol : symbols("--undefined-only", EDITOR_FILE)) {
        // Symbols of the toolkit and the system carry a version; weak ones may stay open.
        const bool elsewhere = symbol.name.find('@') != std::string::npos ||
                               symbol.name.starts_with("__asan") ||
                               symbol.name.starts_with("__ubsan") || symbol.type == 'w';
        if (elsewhere)
            continue;
        ++fromHost;
        EXPECT_TRUE(exported.contains(symbol.name)) << symbol.name;
    }
    EXPECT_GT(fromHost, 20u) << "the editor is to get its host from the process";
}

bool isOpen(const char *file, const std::string &name)
{
    return std::ranges::any_of(symbols("--undefined-only", file), [&](const Symbol &symbol) {
        return symbol.name.substr(0, symbol.name.find('@')) == name;
    });
}

// All but one thread belong to the workbench, which knows what may be touched from where.
TEST(EditorLibrary, StartsNoThread)
{
    for (const std::string name :
         {"pthread_create", "_ZN7QThread5startENS_8PriorityE", "_ZN7QThreadC1EP7QObject",
          "_ZN7QThreadC2EP7QObject", "_ZN11QThreadPool14globalInstanceEv",
          "_ZN6QMutex12lockInternalEv", "pthread_mutex_lock",
          "_ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE"})
        EXPECT_FALSE(isOpen(EDITOR_FILE, name)) << name;
}

// What is thrown through the toolkit's event loop ends the program.
TEST(EditorLibrary, ThrowsNothing)
{
    EXPECT_FALSE(isOpen(EDITOR_FILE, "__cxa_throw"));
    EXPECT_TRUE(isOpen(WORKBENCH_FILE, "__cxa_throw")) << "what throws is seen by it";
}

// Which variable, the tests of the window see.
TEST(EditorLibrary, ReadsTheEnvironmentInOneWay)
{
    EXPECT_TRUE(isOpen(EDITOR_FILE, "_Z27qEnvironmentVariableIsEmptyPKc"));
    for (const std::string name :
         {"getenv", "secure_getenv", "environ", "__environ", "_Z7qgetenvPKc",
          "_Z20qEnvironmentVariablePKc", "_Z20qEnvironmentVariablePKcRK7QString",
          "_Z25qEnvironmentVariableIsSetPKc", "_Z30qEnvironmentVariableIntValuePKcPb",
          "_ZN19QProcessEnvironment17systemEnvironmentEv"})
        EXPECT_FALSE(isOpen(EDITOR_FILE, name)) << name;
}

std::string withoutComments(const fs::path &file)
{
    std::ifstream stream(file);
    std::ostringstream text;
    for (std::string line; std::getline(stream, line);)
        text << line.substr(0, line.find("//")) << '\n';
    return text.str();
}

// The names of functions that a header declares and does not define: "Class::name(", or "name("
// outside of a class. What the compiler writes itself is left out.
std::vector<std::string> declaredFunctions(const std::string &header)
{
    static const std::regex opening(R"(class TAMBO_API (\w+)[^;{]*\{)");
    static const std::regex label(R"((public|protected|private|signals|public slots)\s*:)");
    static const std::regex function(R"((operator\S+|~?\w+)\s*\()");
    static const std::regex unneeded(R"(=\s*(0|default|delete)\s*$|\bfriend\b|\busing\b)");
    std::vector<std::string> found;
    std::string rest = header;
    std::smatch match;
    while (std::regex_search(rest, match, opening)) {
        const std::string name = match[1];
        std::string body = match.suffix();
        std::string statement;
        int depth = 1;
        std::size_t at = 0;
        for (; at < body.size() && depth > 0; ++at) {
            const char c = body[at];
            if (c == '{')
                ++depth;
            else if (c == '}' && --depth == 1)
                statement.clear(); // a body: defined in the header
            else if (c == ';' && depth == 1) {
                statement = std::regex_replace(statement, label, "");
                std::smatch called;
                if (!std::regex_search(statement, unneeded) &&
                    std::regex_search(statement, called, function))
                    found.push_back(name + "::" + called[1].str() + "(");
                statement.clear();
            } else if (depth == 1 && c != '}') {
                statement += c;
                if (statement.find("Q_OBJECT") != std::string::npos)
                    statement.clear();
            }
        }
        rest = body.substr(at);
    }
    static const std::regex free(R"(\nTAMBO_API [^;{]*?(\w+)\()");
    for (std::sregex_iterator next(header.begin(), header.end(), free), end; next != end; ++next)
        found.push_back((*next)[1].str() + "(");
    return found;
}

TEST(DeclaredFunctions, AreThoseWithoutABody)
{
    const std::string header = "class TAMBO_API A : public B\n{\n    Q_OBJECT\npublic:\n"
                               "    A();\n    ~A() override;\n    int one() const { return m; }\n"
                               "    virtual int two() = 0;\n    A &operator++();\n"
                               "    A(const A &) = delete;\nprivate:\n    void three(int x = 1);\n"
                               "    int m = 0;\n};\n\nTAMBO_API void four(int a,\n  int b);\n";
    EXPECT_EQ(
        declaredFunctions(header),
        (std::vector<std::string>{"A::A(", "A::~A(", "A::operator++(", "A::three(", "four("}));
}

TEST(Workbench, ExportsEveryFunctionThatTheKitDeclares)
{
    // Functions that give a std::string carry the tag of its layout.
    static const std::regex abiTag(R"(\[abi:\w+\])");
    std::string exported;
    for (const char *const file : {WORKBENCH_FILE, CORE_FILE})
        for (const Symbol &symbol : symbols("-C --defined-only", file))
            exported += " " + std::regex_replace(symbol.name, abiTag, "") + "\n";
    std::size_t checked = 0;
    for (const auto &entry : fs::directory_iterator(fs::path(SOURCE_DIR) / "include")) {
        if (entry.path().extension() != ".h")
            continue;
        for (const std::string &name : declaredFunctions(withoutComments(entry.path()))) {
            ++checked;
            const bool found = exported.find(" " + name) != std::string::npos ||
                               exported.find(" TAMBO::" + name) != std::string::npos;
            EXPECT_TRUE(found) << entry.path().filename() << ": " << name;
        }
    }
    EXPECT_GT(checked, 60u);
}

TEST(Workbench, FindsItsLibraryWhereverBothAre)
{
    EXPECT_TRUE(dynamicEntries("NEEDED", WORKBENCH_FILE).contains("libtambo-core.so"));
    EXPECT_EQ(dynamicEntries("RUNPATH", WORKBENCH_FILE),
              std::set<std::string>{"$ORIGIN/../lib/tambo/parts"});
    EXPECT_EQ(dynamicEntries("SONAME", CORE_FILE), std::set<std::string>{"libtambo-core.so"});
}

TEST(CoreLibrary, NeedsNoToolkit)
{
    const std::regex allowed(
        R"((libz|libsqlite3|libc|libm|libstdc\+\+|libgcc_s|ld-linux-.*)\.so\.\d+)");
    for (const std::string &name : dynamicEntries("NEEDED", CORE_FILE))
        EXPECT_TRUE(std::regex_match(name, allowed)) << name;
    EXPECT_TRUE(dynamicEntries("RUNPATH", CORE_FILE).empty());
}

TEST(CoreLibrary, HandsOutNothingOfOtherLibraries)
{
    for (const std::string &name : namesOf(CORE_FILE))
        EXPECT_FALSE(std::regex_search(name, std::regex("^_ZN?K?(St|5gemmi|3tao|10fast_float)")))
            << name;
}

// The names of variables that are defined in a file, those that it keeps to itself included, but
// for those of one source and constants.
std::set<std::string> variablesOf(const std::string &file)
{
    static const std::regex pattern(
        R"(^[0-9a-f]+ [bBdDuV] (TAMBO::.+|guard variable for TAMBO::.+)$)");
    static const std::regex constant(R"(\(anonymous namespace\)|::k[A-Z]\w*$|::Rare<.*::usual$)");
    std::set<std::string> names;
    for (const std::string &line : outputOf("nm -C --defined-only '" + file + "'")) {
        std::smatch match;
        if (std::regex_match(line, match, pattern) && !std::regex_search(match[1].str(), constant))
            names.insert(match[1]);
    }
    return names;
}

TEST(CoreLibrary, HasEachVariableOfTheModelForAllWhoUseIt)
{
    const std::set<std::string> shared = variablesOf(CORE_FILE);
    EXPECT_TRUE(shared.contains("TAMBO::SequenceText::s_Empty"));
    for (const std::string &name : variablesOf(WORKBENCH_FILE))
        EXPECT_FALSE(shared.contains(name)) << name << " is there twice: define it in a source";
}

} // namespace SymbolTest
