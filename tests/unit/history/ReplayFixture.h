// SPDX-License-Identifier: GPL-3.0-or-later
// A program that keeps a journal, ends at any moment, and begins again with what was kept.
#pragma once

#include "unit/history/AllChanges.h"

#include "HistoryReplay.h"
#include "ObjectEditBytes.h"
#include "ObjectIndex.h"
#include "ObjectLoader.h"
#include "ObjectStore.h"
#include "ObjectWriter.h"
#include "StepRecords.h"

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class ReplayFixture : public AllChanges
{
protected:
    using AllChanges::AllChanges;
    ~ReplayFixture() override
    {
        TAMBO::setStepJournal(nullptr);
        history.clear();
    }

    struct Stored
    {
        std::string objects;
        std::vector<std::string> steps;
        std::string state;
    };

    // What is done from here on goes into the records.
    void keepJournal()
    {
        records.clear();
        TAMBO::setStepJournal(&m_Journal);
    }
    Stored stored() const;
    // Nothing is left of the program but what was kept.
    void endProgram()
    {
        TAMBO::setStepJournal(nullptr);
        m_Index.reset();
        history.clear();
        space().reset();
    }
    TAMBO::Result<void> load(const Stored &kept);
    TAMBO::Result<void> replay(const std::vector<std::string> &kept);

    // Portraits and labels of all states, in the order of the steps. Ends where it began.
    std::vector<std::string> allStates();

    std::vector<std::string> records;

private:
    TAMBO::ObjectEditWriter m_Writer{TAMBO::ObjectContents::Inside};
    TAMBO::StepRecords m_Journal{m_Writer,
                                 [this](std::string record) { records.push_back(record); }};
    std::optional<TAMBO::ObjectIndex> m_Index;
};

inline ReplayFixture::Stored ReplayFixture::stored() const
{
    Stored kept;
    std::vector<const TAMBO::StoredObject *> owned;
    for (const TAMBO::Compound *object : history.ownedObjects())
        owned.push_back(TAMBO::StoredObject::from(object));
    TAMBO::ObjectStore store(space(), owned);
    TAMBO::ObjectWriter objects;
    while (store.writeNext(objects, std::numeric_limits<std::size_t>::max()))
        ;
    kept.objects = objects.take();
    TAMBO::ObjectEditWriter out(TAMBO::ObjectContents::Elsewhere);
    for (std::size_t i = 0; i < history.size(); ++i) {
        history.storeStep(i, out);
        kept.steps.push_back(out.take());
    }
    history.storeState(out);
    kept.state = out.take();
    return kept;
}

inline TAMBO::Result<void> ReplayFixture::load(const Stored &kept)
{
    TAMBO::ObjectIndex &index = m_Index.emplace();
    index.add(space());
    TAMBO::ObjectLoader loader(index);
    TAMBO::Result<void> done = loader.read(kept.objects);
    if (done)
        done = loader.complete();
    if (done)
        done = loader.fill(space());
    for (std::size_t i = 0; done && i < kept.steps.size(); ++i) {
        TAMBO::ObjectEditReader in(kept.steps[i], index, &loader);
        done = history.loadStep(in);
    }
    if (done) {
        TAMBO::ObjectEditReader in(kept.state, index, &loader);
        done = history.loadState(in);
    }
    return done;
}

inline TAMBO::Result<void> ReplayFixture::replay(const std::vector<std::string> &kept)
{
    TAMBO::HistoryReplay replay(history, [this](std::string_view bytes) {
        return std::make_unique<TAMBO::ObjectEditReader>(bytes, *m_Index);
    });
    for (const std::string &record : kept) {
        TAMBO::Result<void> done = replay.replay(record);
        if (!done)
            return done;
    }
    return {};
}

inline std::vector<std::string> ReplayFixture::allStates()
{
    const std::size_t position = history.position();
    std::vector<std::string> states;
    for (std::size_t i = 0; i <= history.size(); ++i) {
        EXPECT_TRUE(history.goTo(i)) << i;
        states.push_back(lastingPortrait() + history.undoLabel());
        for (const TAMBO::UnsavedObject &one : history.unsavedObjects())
            states.back() += ' ' + std::to_string(TAMBO::identityOf(*one.object)) + ':' +
                             std::to_string(one.parts.number());
    }
    EXPECT_TRUE(history.goTo(position));
    return states;
}
