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
        m_Files.push_back({absoluteOf(file), std::nullopt});
}

template <typename Condition>
ArrivingFiles::Arriving *ArrivingFiles::find(const std::filesystem::path &file, Condition condition)
{
    const auto found =
        std::ranges::find_if(m_Files, [&, absolute = absoluteOf(file)](const Arriving &arriving) {
            return condition(arriving) && arriving.file == absolute;
        });
    return found == m_Files.end() ? nullptr : &*found;
}

void ArrivingFiles::recordsBegin()
{
    for (Arriving &arriving : m_Files) {
        if (arriving.hasEnded)
            arriving.records = 0;
    }
}

void ArrivingFiles::comeWithNextRecord(const Paths &files)
{
    const auto isUnknown = [](const Arriving &arriving) { return !arriving.records; };
    for (const std::filesystem::path &file : files) {
        if (Arriving *const arriving = find(file, isUnknown))
            arriving->records = recordCount() + 1;
    }
}

void ArrivingFiles::end(const Paths &files)
{
    const auto isOpen = [](const Arriving &arriving) { return !arriving.hasEnded; };
    for (const std::filesystem::path &file : files) {
        if (Arriving *const arriving = find(file, isOpen)) {
            arriving->hasEnded = true;
            // Nothing may have come of the change.
            arriving->records = std::min(arriving->records.value_or(recordCount()), recordCount());
        }
    }
}

QStringList ArrivingFiles::filesIn(std::string_view content)
{
    ValueReader in(content);
    return readFiles(in);
}

std::string ArrivingFiles::store() const
{
    const auto isKept = [this](const Arriving &arriving) {
        return arriving.records && (!m_Records.areKept || m_Records.areKept(*arriving.records));
    };
    // Until its end it may still be asked for.
    std::erase_if(m_Files, [&isKept](const Arriving &arriving) {
        return arriving.hasEnded && isKept(arriving);
    });
    ValueWriter out;
    out.number(kArrivingVersion);
    bool isEmpty = true;
    for (const Arriving &arriving : m_Files) {
        if (isKept(arriving))
            continue;
        out.text(arriving.file.string());
        isEmpty = false;
    }
    return isEmpty ? std::string() : out.take();
}

Result<void> ArrivingFiles::load(std::string_view content, const ObjectIndex &)
{
    ValueReader in(content);
    m_Left = readFiles(in);
    return in.failed() ? Result<void>(Failure(FailureKind::BadInput, in.cause())) : Result<void>();
}

} // namespace TAMBO::app
