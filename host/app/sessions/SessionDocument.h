// SPDX-License-Identifier: GPL-3.0-or-later
// The file of the session that is open, if it has one, and whether it holds what has been done.
// Owned by the workbench.
#pragma once

#include "FileState.h"
#include "KeptValue.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace TAMBO {
class Compound;
class History;
} // namespace TAMBO

namespace TAMBO::app {

class SessionDocument : public QObject, public sessions::KeptValue
{
    Q_OBJECT

public:
    // Of the value in a store that is written while one works. Files have none: a file knows where
    // it is.
    static constexpr std::string_view kName = "session-file";

    // The history outlives this.
    explicit SessionDocument(const History &history) : m_History(history) { }
    ~SessionDocument() override;

    // Empty when the session has no file.
    [[nodiscard]] const QString &file() const noexcept { return m_File; }
    [[nodiscard]] bool hasFile() const noexcept { return !m_File.isEmpty(); }
    // As it was read or written.
    [[nodiscard]] const std::optional<FileState> &fileState() const noexcept { return m_FileState; }
    // There is a file, and it does not hold the present state.
    [[nodiscard]] bool isModified() const noexcept;
    // Which of the objects it holds as they are; none without a file.
    [[nodiscard]] std::vector<bool> holds(const std::vector<const Compound *> &objects) const;
    // Of a window, with the mark for changes.
    [[nodiscard]] QString title() const;

    // The file holds that state.
    void noteFile(const QString &file, const std::optional<FileState> &fileState,
                  std::uint64_t state);
    // Something may have changed.
    void follow();

    // ---- KeptValue

    [[nodiscard]] std::string name() const override { return std::string(kName); }
    [[nodiscard]] bool isForFiles() const override { return false; }
    [[nodiscard]] std::string store() const override;
    [[nodiscard]] Result<void> load(std::string_view content, const ObjectIndex &objects) override;
    void clear() override;

signals:
    // The file, or whether it holds what has been done.
    void changed();

private:
    const History &m_History;
    QString m_File;
    std::optional<FileState> m_FileState;
    // What the file holds; nothing for a state that is not known any more.
    std::optional<std::uint64_t> m_State;
    bool m_WasModified = false;
};

} // namespace TAMBO::app
