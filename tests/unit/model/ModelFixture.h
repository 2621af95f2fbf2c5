// SPDX-License-Identifier: GPL-3.0-or-later
// An empty Space, small objects to fill it with, and ears for everything that the model says.
#pragma once

#include "ChangeScope.h"
#include "DataPointBase.h"
#include "Hooks.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "Records.h"
#include "Structure.h"
#include "Subscriber.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// A guard as the templates of the plug-in kit make it, without the toolkit's checks.
class Guard : public DataPointBase
{
public:
    Guard(Publisher::ActionType action, const TAMBO::Compound &object,
          Subscriber *originator = nullptr)
        : DataPointBase(originator, action, &object)
    { }
    explicit Guard(Publisher::ActionType action, Subscriber *originator = nullptr)
        : DataPointBase(originator, action)
    { }
};

// Writes down what it is told: "update add delete".
class RecordingSubscriber : public Subscriber
{
public:
    void commUpdate() override { note("update"); }
    void commAdd() override { note("add"); }
    void commDelete() override { note("delete"); }

    std::vector<std::string> calls;
    // Run at each call, after it has been noted.
    std::function<void()> reaction;

private:
    void note(const char *call)
    {
        calls.emplace_back(call);
        if (reaction)
            reaction();
    }
};

// A residue record with a CA atom at (x, 0, 0).
inline TAMBO::ResidueRecord residueRecord(const std::string &typeName, char letter,
                                          const std::string &number, float x = 0)
{
    TAMBO::ResidueRecord residue;
    residue.typeName = typeName;
    residue.letter = letter;
    residue.number = TAMBO::SequenceNumber(number);
    residue.atoms.push_back({"N", "N", TAMBO::Vertex(x - 1, 0, 0)});
    residue.atoms.push_back({"CA", "C", TAMBO::Vertex(x, 0, 0)});
    return residue;
}

class ModelFixture : public ::testing::Test
{
protected:
    using Texts = std::vector<std::string>;

    ModelFixture()
    {
        TAMBO::modelHooks().log = [this](const std::string &message, TAMBO::LogSeverity) {
            log.push_back(message);
        };
        TAMBO::modelHooks().refused = [this](const TAMBO::Compound &locked) {
            refused.push_back(locked.Name());
        };
        TAMBO::modelHooks().changed = [this] { ++changes; };
    }
    ~ModelFixture() override
    {
        TAMBO::setEditRecorder(nullptr);
        TAMBO::ObjectSpace::get().reset();
        TAMBO::modelHooks() = {};
    }

    static TAMBO::ObjectSpace &space() { return TAMBO::ObjectSpace::get(); }

    static TAMBO::Peptide &peptide(const std::string &name, const std::string &letters)
    {
        auto made = std::make_unique<TAMBO::Peptide>(name, letters);
        return static_cast<TAMBO::Peptide &>(space().add(std::move(made)));
    }

    // Chain letters become residues numbered from 1 with a CA atom each, at x = number.
    static TAMBO::ChainRecord chainRecord(const std::string &name, const std::string &letters,
                                          int firstNumber = 1);
    static TAMBO::Structure &
    structure(const std::string &name,
              const std::vector<std::pair<std::string, std::string>> &chains)
    {
        TAMBO::StructureRecord record;
        record.name = name;
        for (const auto &[chain, letters] : chains)
            record.chains.push_back(chainRecord(chain, letters));
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }

    static Texts numbersOf(const TAMBO::Peptide &peptide)
    {
        Texts numbers;
        for (std::size_t i = 0; i < peptide.residueCount(); ++i)
            numbers.push_back(peptide.number(i).getValue());
        return numbers;
    }
    static std::vector<unsigned> colorsOf(const TAMBO::Peptide &peptide)
    {
        std::vector<unsigned> colors;
        for (std::size_t i = 0; i < peptide.residueCount(); ++i)
            colors.push_back(peptide.ownColor(i).rgb());
        return colors;
    }
    static Texts topLevelNames()
    {
        Texts names;
        for (const TAMBO::Compound *object : space())
            names.push_back(object->Name());
        return names;
    }

    Texts log;
    Texts refused;
    int changes = 0;
};

inline TAMBO::ChainRecord ModelFixture::chainRecord(const std::string &name,
                                                    const std::string &letters, int firstNumber)
{
    TAMBO::ChainRecord chain;
    chain.name = name;
    int number = firstNumber;
    for (const char letter : letters) {
        const std::string typeName = letter == 'A' ? "ALA" : letter == 'G' ? "GLY" : "UNK";
        chain.residues.push_back(
            residueRecord(typeName, letter, std::to_string(number), float(number)));
        ++number;
    }
    return chain;
}
