// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrivateDirectory.h"

#include "Directories.h"
#include "Logger.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TAMBO::services {

namespace {

Failure failure(const QString &path, const char *cause)
{
    return {FailureKind::System, cause, {path.toStdString()}};
}

Failure systemFailure(const QString &path)
{
    const QString cause = QString::fromLocal8Bit(std::strerror(errno));
    return {FailureKind::System, cause.toStdString(), {path.toStdString()}};
}

class Descriptor
{
public:
    explicit Descriptor(int number) noexcept : m_Number(number) { }
    ~Descriptor()
    {
        if (m_Number >= 0)
            ::close(m_Number);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    [[nodiscard]] int number() const noexcept { return m_Number; }

private:
    int m_Number;
};

QString makeScratchDirectory()
{
    const QString wanted = Directories::scratch();
    Result<QString> made = makePrivateDirectory(wanted, ::geteuid());
    if (made)
        return made.value();

    QByteArray pattern = QFile::encodeName(QDir::tempPath() + QStringLiteral("/tambo-XXXXXX"));
    if (::mkdtemp(pattern.data()) == nullptr) {
        Logger::Write(QStringLiteral("No directory for temporary files: %1")
                          .arg(QString::fromStdString(made.error().message())),
                      Logger::Severity::Error);
        // Below a device nothing can ever be opened, so whoever goes on fails at once instead of
        // writing where others can.
        return QStringLiteral("/dev/null");
    }
    const QString replacement = QFile::decodeName(pattern);
    Logger::Write(QStringLiteral("Temporary files go to %1: %2")
                      .arg(replacement, QString::fromStdString(made.error().message())),
                  Logger::Severity::Warning);
    return replacement;
}

} // namespace

Result<QString> makePrivateDirectory(const QString &path, uid_t owner)
{
    const QByteArray name = QFile::encodeName(path);
    if (!QDir().mkpath(QFileInfo(path).path()))
        return failure(path, "the directory above it cannot be made");
    if (::mkdir(name.constData(), 0700) != 0 && errno != EEXIST)
        return systemFailure(path);

    // Everything below is asked of the opened directory, so that nobody can exchange it meanwhile;
    // a link that somebody placed there is not followed.
    const Descriptor directory(
        ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (directory.number() < 0)
        return systemFailure(path);
    struct stat facts
    {
    };
    if (::fstat(directory.number(), &facts) != 0)
        return systemFailure(path);
    if (facts.st_uid != owner)
        return failure(path, "belongs to another user");
    if ((facts.st_mode & 07777U) != 0700U && ::fchmod(directory.number(), 0700) != 0)
        return systemFailure(path);
    return path;
}

const QString &personalScratchDirectory()
{
    static QString directory;
    // Made again when somebody cleaned up meanwhile; a job that ran would miss it anyway.
    if (directory.isEmpty() || !QFileInfo(directory).isDir())
        directory = makeScratchDirectory();
    return directory;
}

} // namespace TAMBO::services
