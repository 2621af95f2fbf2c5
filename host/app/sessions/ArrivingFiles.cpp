// SPDX-License-Identifier: GPL-3.0-or-later
#include "ArrivingFiles.h"

#include "ValueBytes.h"

#include <QFile>

#include <algorithm>
#include <system_error>

namespace TAMBO::app {

namespace {

constexpr std::uint64_t kArrivingVersion = 1;

std::filesystem::path absoluteOf(const std::filesystem::path &file)
{
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::absolute(file, error);
    return error ? file : absolute;
}

QStringList readFiles(ValueReader &in)
{
    QStringList files;
    if (in.number() != kArrivingVersion)
        in.fail("it was written by a newer version of the program");
    while (!in.atEnd()) {
        const std::string_view file = in.fileName();
        files << QFile::decodeName(QByteArray(file.data(), qsizetype(file.size())));
    }
    return in.failed() ? QStringList() : files;
}

} // namespace

void ArrivingFiles::begin(const Paths &files)
{
    for (const std::filesystem::path &file : files)
        m_Files.push_back({absoluteOf(file)});
}

void ArrivingFiles::end(const Paths &files)
{
    for (const std::filesystem::path &file : files) {
        const std::filesystem::path absolute = absoluteOf(file);
        const auto found = std::ranges::find_if(m_Files, [&](const Arriving &arriving) {
            return !arriving.hasEnded && arriving.file == absolute;
        });
        if (found != m_Files.end())
            found->hasEnded = true;
    }
}

QStringList ArrivingFiles::filesIn(std::string_view content)
{
    ValueReader in(content);
    return readFiles(in);
}

std::string ArrivingFiles::store() const
{
    if (!m_IsKept || m_IsKept())
        std::erase_if(m_Files, [](const Arriving &arriving) { return arriving.hasEnded; });
    if (m_Files.empty())
        return {};
    ValueWriter out;
    out.number(kArrivingVersion);
    for (const Arriving &arriving : m_Files)
        out.text(arriving.file.string());
    return out.take();
}

Result<void> ArrivingFiles::load(std::string_view content, const ObjectIndex &)
{
    ValueReader in(content);
    m_Left = readFiles(in);
    return in.failed() ? Result<void>(Failure(FailureKind::BadInput, in.cause())) : Result<void>();
}

} // namespace TAMBO::app
