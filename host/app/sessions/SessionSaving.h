// SPDX-License-Identifier: GPL-3.0-or-later
// Saves the session for the user, with the questions that this takes over a window.
#pragma once

#include "FileCheck.h"
#include "Result.h"
#include "StoreRecord.h"

#include <QCoreApplication>
#include <QString>

#include <filesystem>
#include <optional>
#include <vector>

class QWidget;

namespace TAMBO {
class History;
}

namespace TAMBO::sessions {
class KeptValues;
}

namespace TAMBO::app {

class ObjectSources;
class SessionDocument;

class SessionSaving
{
    Q_DECLARE_TR_FUNCTIONS(SessionSaving)

public:
    // All outlive this.
    SessionSaving(SessionDocument &document, const History &history, sessions::KeptValues &values,
                  const ObjectSources &sources)
        : m_Document(document), m_History(history), m_Values(values), m_Sources(sources)
    { }

    // Into the file that it has; otherwise with a dialog. False when it is not saved: a failure has
    // been told, and what the user has called off need not be.
    [[nodiscard]] bool save(QWidget *parent);
    [[nodiscard]] bool saveAs(QWidget *parent);
    // As they are now, which may take long; nothing when the user gives it up.
    [[nodiscard]] std::optional<std::vector<sessions::NamedValue>> values() const;
    // Somebody else has saved it as it is now: a copy, or the file of a session that had none or
    // this one.
    void noteSaved(const std::filesystem::path &file);

private:
    enum class Choice { GoOn, SaveAs, Stop };

    [[nodiscard]] bool saveTo(const QString &file, QWidget *parent);
    [[nodiscard]] QString askFile(QWidget *parent) const;
    [[nodiscard]] QString suggestedFile() const;
    [[nodiscard]] QString suggestedFolder() const;
    [[nodiscard]] FileCheck checkOf(const QString &file) const;
    // expected becomes the file that may be replaced.
    [[nodiscard]] Choice askAboutChange(const QString &file, std::optional<FileState> &expected,
                                        QWidget *parent) const;
    [[nodiscard]] Result<std::optional<FileState>>
    write(const QString &file, const std::optional<FileState> &expected, QWidget *parent) const;

    SessionDocument &m_Document;
    const History &m_History;
    sessions::KeptValues &m_Values;
    const ObjectSources &m_Sources;
};

} // namespace TAMBO::app
