// SPDX-License-Identifier: GPL-3.0-or-later
// What other programs hand over by the clipboard or by dropping it.
#pragma once

#include "Result.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <filesystem>
#include <memory>

class QMimeData;

namespace TAMBO::app {

[[nodiscard]] QStringList localFiles(const QMimeData &data);

// Texts that were pasted, as files to be read. They are nobody's files: what is read from them has
// none to be saved to. They go with this.
class PastedTexts
{
public:
    // Letters alone are a sequence without its name, and get one.
    [[nodiscard]] Result<std::filesystem::path> add(const QString &text);
    [[nodiscard]] bool has(const std::filesystem::path &file) const;

private:
    [[nodiscard]] QString folder() const;

    std::unique_ptr<QTemporaryDir> m_Folder;
    int m_Count = 0;
};

} // namespace TAMBO::app
