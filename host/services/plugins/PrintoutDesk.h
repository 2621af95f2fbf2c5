// SPDX-License-Identifier: GPL-3.0-or-later
// Where plug-ins ask for a place to print to, and report what was printed.
#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace TAMBO {
class Compound;
}

namespace TAMBO::services {

class PrintoutDesk : public QObject
{
    Q_OBJECT

public:
    using FolderOf = std::function<QString(const Compound &object)>;

    static PrintoutDesk &instance();

    // Who knows the folder of the file that an object is from. May be empty.
    void setFolderOf(FolderOf folderOf) { m_FolderOf = std::move(folderOf); }

    // One that is there and can be written to; at the worst the home of the user.
    [[nodiscard]] QString folderFor(const Compound &object) const;
    // Its folder is the one that is offered from now on, in later sessions too.
    void noteWritten(const QString &path);
    // What the file is, "PostScript": by what is in it, else by its ending; may be empty.
    [[nodiscard]] static QString formatOf(const QString &path);
    void noteSent(const QString &printer);
    void noteRefused(const QString &cause);

signals:
    void written(const QString &path);
    void sent(const QString &printer);
    void refused(const QString &cause);

private:
    FolderOf m_FolderOf;
};

} // namespace TAMBO::services
