// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectFiles.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "FileName.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "Structure.h"
#include "WritableObject.h"

#include <map>
#include <unordered_set>
#include <utility>

namespace TAMBO::app {

namespace {

// Names that nobody has yet.
class FreeNames
{
public:
    [[nodiscard]] std::string take(const std::string &object, const char *kind,
                                   const WriteOptions &options)
    {
        std::string base = fileNameOf(object);
        // Neither hidden nor a folder.
        if (base.starts_with('.'))
            base.front() = '_';
        if (base.empty())
            base = kind;
        const std::string ending(fileEndings(options.format).front());
        std::string name = base + ending;
        // Where to go on is kept: a thousand objects may have one name.
        std::size_t &number = m_Last[inSmallLetters(name)];
        for (; !m_Taken.insert(inSmallLetters(name)).second; ++number)
            name = base + '-' + std::to_string(number + 2) + ending;
        return name;
    }

private:
    [[nodiscard]] static std::string inSmallLetters(std::string text)
    {
        for (char &letter : text)
            letter = letter >= 'A' && letter <= 'Z' ? char(letter - 'A' + 'a') : letter;
        return text;
    }

    std::unordered_set<std::string> m_Taken;
    std::map<std::string, std::size_t> m_Last;
};

std::unordered_set<const Compound *> shownIn(const ObjectSpace &space)
{
    std::unordered_set<const Compound *> shown;
    for (std::size_t i = 0; i < space.objectCount(); ++i) {
        const auto *const alignment = dynamic_cast<const Alignment *>(space.object(i));
        if (alignment == nullptr)
            continue;
        const AlignmentTable &table = alignment->table();
        for (std::size_t row = 0; row < table.rowCount(); ++row)
            shown.insert(&table.row(row).sequence());
    }
    return shown;
}

WriteOptions optionsFor(const ObjectFile &sequences, const WriteOptions &wanted)
{
    ObjectFile asked = sequences;
    asked.options = wanted;
    return asked.content().checkWritable(wanted) ? wanted : WriteOptions();
}

} // namespace

WritableObject ObjectFile::content() const
{
    if (objects.size() == 1)
        return WritableObject(*objects.front());
    std::vector<const Peptide *> sequences;
    sequences.reserve(objects.size());
    for (const Compound *const object : objects)
        sequences.push_back(dynamic_cast<const Peptide *>(object));
    return {"sequences", sequences};
}

std::vector<ObjectFile> objectFilesOf(const ObjectSpace &space, const ObjectFileOptions &options)
{
    std::vector<ObjectFile> files;
    FreeNames names;
    ObjectFile sequences;
    const std::unordered_set<const Compound *> shown = shownIn(space);
    for (std::size_t i = 0; i < space.objectCount(); ++i) {
        const Compound *const object = space.object(i);
        if (dynamic_cast<const Structure *>(object) != nullptr)
            files.push_back({names.take(object->Name(), "structure", options.structures),
                             {object},
                             options.structures});
        else if (dynamic_cast<const Alignment *>(object) != nullptr)
            files.push_back({names.take(object->Name(), "alignment", options.alignments),
                             {object},
                             options.alignments});
        else if (dynamic_cast<const Peptide *>(object) != nullptr && !shown.contains(object))
            sequences.objects.push_back(object);
    }
    if (sequences.objects.empty())
        return files;
    sequences.options = optionsFor(sequences, options.alignments);
    sequences.name = names.take(sequences.objects.size() == 1 ? sequences.objects.front()->Name()
                                                              : std::string(),
                                "sequences", sequences.options);
    files.push_back(std::move(sequences));
    return files;
}

} // namespace TAMBO::app
