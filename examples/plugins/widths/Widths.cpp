// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps with each alignment how many columns it has, and answers others who ask for it.
#include <Alignment.h>
#include <DataAdder.h>
#include <DataMaker.h>
#include <DataPoint.h>
#include <Export.h>
#include <Logger.h>
#include <PluginAnswer.h>
#include <PluginManager.h>
#include <PluginValues.h>
#include <Space.h>
#include <StepFollower.h>
#include <StepName.h>
#include <WorkbenchValues.h>

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

bool tellWidth(const PluginCall &call)
{
    auto *alignment = static_cast<TAMBO::Alignment *>(call.data);
    if (alignment == nullptr)
        return false;
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
