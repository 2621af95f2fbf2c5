// SPDX-License-Identifier: GPL-3.0-or-later
// What comes before a session is written: values that take long are made ready, and the user may
// call that off.
#include "SessionSaving.h"

#include "AppFixture.h"
#include "KeptValues.h"
#include "ObjectSources.h"
#include "SessionDocument.h"
#include "SessionReading.h"
#include "StoreReader.h"

#include <functional>
#include <memory>
#include <string>

namespace SessionSavingTest {

using namespace TAMBO;

class SlowValue final : public sessions::KeptValue
{
public:
    std::string name() const override { return "slow"; }
    std::string store() const override { return std::to_string(slices) + " left"; }
    Result<void> load(std::string_view, const ObjectIndex &) override { return {}; }
    bool prepare() override
    {
        slices -= slices > 0 ? 1 : 0;
        return slices > 0;
    }

    int slices = 5;
};

class SessionSavingTest : public RecordedFixture
{
protected:
    SessionSavingTest()
    {
        m_Values.add(m_Slow);
        alignment("family", {"AC-D", "A-CD"});
        m_Document.noteFile(m_File, {}, m_History.state());
    }
    ~SessionSavingTest() override { modelHooks().working = m_Working; }

    // What the user answers at each look.
    bool saveWith(const std::function<bool()> &goesOn)
    {
        modelHooks().working = [this, goesOn](const char *what, double, bool canBeGivenUp) {
            EXPECT_STREQ(what, "Saving the session");
            EXPECT_TRUE(canBeGivenUp);
            ++m_Looks;
            return goesOn();
        };
        return app::SessionSaving(m_Document, m_History, m_Values, m_Sources).save(nullptr);
    }
    [[nodiscard]] std::string keptInFile() const
    {
        std::string kept;
        const auto session = sessions::openSession(m_File.toStdString());
        EXPECT_TRUE(session);
        EXPECT_TRUE(session && session.value()->forEachValue([&](auto name, auto content) {
            if (name == "slow")
                kept = content;
            return Result<void>();
        }));
        return kept;
    }

    const decltype(modelHooks().working) m_Working = modelHooks().working;
    const QString m_File = path("work.tambo");
    SlowValue m_Slow;
    sessions::KeptValues m_Values;
    app::ObjectSources m_Sources;
    app::SessionDocument m_Document{m_History};
    int m_Looks = 0;
};

TEST_F(SessionSavingTest, ValuesAreReadyBeforeTheyAreStored)
{
    EXPECT_TRUE(saveWith([] { return true; }));
    EXPECT_EQ(keptInFile(), "0 left");
    EXPECT_GE(m_Looks, 4);
}

TEST_F(SessionSavingTest, BetweenTwoSlicesTheUserMayCallItOff)
{
    write("work.tambo", "as it was");
    EXPECT_FALSE(saveWith([this] { return m_Looks < 3; }));
    EXPECT_EQ(m_Looks, 3);
    EXPECT_EQ(m_Slow.slices, 2);
    EXPECT_EQ(bytesOf(m_File), "as it was");
}

TEST_F(SessionSavingTest, ACopyThatSomebodyElseHasSavedIsNotTheSessionsFile)
{
    app::SessionSaving saving(m_Document, m_History, m_Values, m_Sources);
    alignment("second", {"AC"});
    saving.noteSaved(write("copy.tambo", "a copy").toStdString());
    EXPECT_EQ(m_Document.file(), m_File);
    EXPECT_TRUE(m_Document.isModified());
}

TEST_F(SessionSavingTest, ItsOwnFileThatSomebodyElseHasSavedHoldsAll)
{
    app::SessionSaving saving(m_Document, m_History, m_Values, m_Sources);
    alignment("second", {"AC"});
    EXPECT_TRUE(m_Document.isModified());
    write("work.tambo", "anew");
    // By another name.
    saving.noteSaved(path("./work.tambo").toStdString());
    EXPECT_EQ(m_Document.file(), m_File);
    EXPECT_FALSE(m_Document.isModified());
    EXPECT_TRUE(m_Document.fileState());
    // Nobody is asked whether what stands there may be replaced.
    EXPECT_TRUE(saving.save(nullptr));
    EXPECT_EQ(keptInFile(), "0 left");
}

TEST_F(SessionSavingTest, OneWithoutAFileGetsTheFirst)
{
    m_Document.clear();
    app::SessionSaving saving(m_Document, m_History, m_Values, m_Sources);
    saving.noteSaved(write("first.tambo", "all").toStdString());
    EXPECT_EQ(m_Document.file(), path("first.tambo"));
    EXPECT_FALSE(m_Document.isModified());
}

} // namespace SessionSavingTest
