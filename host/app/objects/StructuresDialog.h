// SPDX-License-Identifier: GPL-3.0-or-later
// Several structures, as they lie now, as one file of models or of chains, or as a file each.
#pragma once

#include "MergedFiles.h"
#include "WriteDialog.h"

#include <memory>
#include <vector>

class QComboBox;

namespace TAMBO {
class Compound;
class KeptState;
} // namespace TAMBO

namespace TAMBO::app {

class ObjectReferences;

class StructuresDialog : public WriteDialog
{
    Q_OBJECT

public:
    // Two at least, which are copied: they may go while the dialog is open.
    StructuresDialog(const std::vector<Structure *> &structures, QWidget *parent);
    ~StructuresDialog() override;

    void setPlaces(const SavedPlaces &places) override;

protected:
    [[nodiscard]] Verdict verdict(const WriteOptions &chosen) const override;
    [[nodiscard]] std::vector<ExportRuns::Order> orders(const QString &target) override;

private:
    // One that was copied.
    struct Copied
    {
        std::unique_ptr<ObjectReferences> structure;
        QString name;
        std::shared_ptr<const KeptState> state = nullptr;

        // Null when it has gone.
        [[nodiscard]] Compound *object() const;
    };

    [[nodiscard]] MergedFiles::Kind kind() const;
    void followKind();
    [[nodiscard]] ExportRuns::Part part(std::size_t structure) const;
    [[nodiscard]] ExportRuns::Order order(const QString &file, std::size_t structure) const;
    [[nodiscard]] bool mayReplaceAll(const QStringList &files);

    MergedFiles m_Structures;
    std::vector<Copied> m_Copied;
    QComboBox *m_Kind = nullptr;
};

} // namespace TAMBO::app
