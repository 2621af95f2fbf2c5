// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps with each alignment how many columns it has, answers others who ask for it, and remembers
// with the work which alignment that was.
#include <Alignment.h>
#include <DataAdder.h>
#include <DataMaker.h>
#include <DataPoint.h>
#include <Export.h>
#include <Logger.h>
#include <PluginAnswer.h>
#include <PluginManager.h>
#include <PluginValues.h>
#include <SessionPart.h>
#include <Space.h>
#include <StepFollower.h>
#include <StepName.h>
#include <WorkbenchValues.h>

#include <cstdint>
#include <string>

namespace {

using TAMBO::CompoundKind;
using TAMBO::DataMaker;
using TAMBO::SequenceNumber;
using TAMBO::Space;
using TAMBO::Vertex;

class WidthKeeper final : public StepFollower
{
public:
    void stepEnds(const StepChanges &changes) override
    {
        for (const StepChange &change : changes.objects) {
            if (change.isDisplayOnly || change.object->Kind() != CompoundKind::Alignment)
                continue;
            auto *alignment = dynamic_cast<TAMBO::Alignment *>(change.object);
            DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
            if (guard.m_good)
                PluginValues::Set(alignment, "widths", "columns",
                                  std::to_string(alignment->width()));
        }
    }
};

WidthKeeper s_Keeper;

class LastAsked final : public SessionPart
{
public:
    LastAsked() : SessionPart("widths") { }

    void remember(const TAMBO::Alignment *alignment)
    {
        m_Number = NumberOf(alignment);
        hasChanged();
    }
    std::string store() const override { return m_Number == 0 ? "" : std::to_string(m_Number); }
    // What is no number throws, which is logged, and nothing is remembered.
    void restore(const std::string &state) override
    {
        const TAMBO::Compound *object = ObjectOf(static_cast<std::uint32_t>(std::stoul(state)));
        if (object == nullptr)
            return;
        m_Number = NumberOf(object);
        Logger::Write(
            QString("Widths: %1 was asked for last").arg(QString::fromStdString(object->Name())));
    }
    void clear() override { m_Number = 0; }

private:
    std::uint32_t m_Number = 0;
};

LastAsked s_LastAsked;

bool tellWidth(const PluginCall &call)
{
    auto *alignment = static_cast<TAMBO::Alignment *>(call.data);
    if (alignment == nullptr)
        return false;
    s_LastAsked.remember(alignment);
    const std::string width = PluginValues::Get(alignment, "widths", "columns").value_or("unknown");
    Logger::Write(
        QString("Widths: %1 has %2 columns")
            .arg(QString::fromStdString(alignment->Name()), QString::fromStdString(width)));
    return true;
}

const PluginAnswer s_Answer("Calculate", "Columns", "Width", tellWidth);

void askForWidths()
{
    for (TAMBO::Compound *object : *Space::instance())
        if (object->Kind() == CompoundKind::Alignment)
            PluginManager::Execute("Calculate", "Columns", "Widths", "Width",
                                   dynamic_cast<TAMBO::Alignment *>(object));
}

void makeDipeptide()
{
    TAMBO::StructureValues values;
    values.chains = {{"A",
                      {{"ALA", SequenceNumber("10"), {{"CA", "C", Vertex(0, 0, 0)}}},
                       {"GLY", SequenceNumber("10A"), {{"CA", "C", Vertex(3.8F, 0, 0)}}}}}};

    DataAdder<Space> change(nullptr, Space::instance());
    if (!change.m_good)
        return;
    const StepName name("Make a dipeptide");
    DataMaker::makeStructure("dipeptide", values);
    DataMaker::makeSequence("tail", "GSGS");
}

void countRuns()
{
    const std::string before = WorkbenchValues::Get("widths", "runs").value_or("0");
    WorkbenchValues::Set("widths", "runs", std::to_string(std::stoi(before) + 1));
}

} // namespace

extern "C" {

TAMBO_API void Execute0()
{
    countRuns();
    if (Space::instance()->ChildCount() == 0)
        makeDipeptide();
    askForWidths();
}

TAMBO_API bool IsDone()
{
    return true;
}

TAMBO_API void Cleanup() { }

} // extern "C"
