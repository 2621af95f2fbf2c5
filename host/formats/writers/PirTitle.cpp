// SPDX-License-Identifier: GPL-3.0-or-later
#include "PirTitle.h"

#include "FormatText.h"

#include <algorithm>

namespace TAMBO::formats {

namespace {

std::string joined(const PirFields &fields)
{
    std::string title;
    for (std::size_t i = 0; i < fields.size(); ++i)
        title += (i == 0 ? "" : ":") + fields[i];
    return title;
}

// A colon would end the field.
std::string fieldText(std::string_view text)
{
    std::string field = cleanText(text);
    std::replace(field.begin(), field.end(), ':', ' ');
    return field;
}

// What is written like this already keeps its blanks.
void update(std::string &field, const std::string &value)
{
    if (trimmed(field) != value)
        field = fieldText(value);
}

void updateRange(PirFields &fields, const StructureLink &link)
{
    update(fields[PirFirst], link.first);
    update(fields[PirFirstChain], link.chain);
    update(fields[PirLast], link.last);
    update(fields[PirLastChain], link.lastChain);
}

} // namespace

std::optional<PirFields> pirFieldsOf(std::string_view title)
{
    if (title.find(':') == std::string_view::npos)
        return std::nullopt;
    PirFields fields;
    // Whatever stands behind the last colon that counts is one field.
    for (std::string &field : fields) {
        const std::size_t end =
            &field == &fields.back() ? title.size() : std::min(title.find(':'), title.size());
        field = title.substr(0, end);
        title.remove_prefix(std::min(end + 1, title.size()));
    }
    // "structure" and a letter for the method; a longer word is the start of a sentence.
    const std::string_view type = trimmed(fields[PirType]);
    const bool isStructure = type.starts_with("structure") && type.size() <= 10;
    if (!isStructure && type != "sequence")
        return std::nullopt;
    return fields;
}

std::string pirTitle(const RowRecord &row, std::string_view name)
{
    const std::string text = cleanText(trimmed(row.description));
    const StructureLink &link = *row.link;
    std::optional<PirFields> fields = pirFieldsOf(text);
    if (link.structure.empty()) {
        if (text.empty())
            return "sequence:" + fieldText(name) + "::::::::";
        // A title that began like a record would end this one.
        return text.front() == '>' ? ' ' + text : text;
    }
    if (!fields || !fields->at(PirType).starts_with("structure")) {
        PirFields made;
        made[PirType] = "structureX";
        made[PirCode] = fieldText(link.structure);
        made[PirName] = fields ? fields->at(PirName) : fieldText(text);
        fields = std::move(made);
    }
    updateRange(*fields, link);
    return joined(*fields);
}

bool isTitleKept(const RowRecord &row)
{
    if (row.link->structure.empty())
        return true;
    const std::string text = cleanText(trimmed(row.description));
    const std::optional<PirFields> fields = pirFieldsOf(text);
    if (!fields)
        return text.find(':') == std::string::npos;
    // Of a header that names no structure one field is kept.
    return fields->at(PirType).starts_with("structure") ||
           std::all_of(fields->begin() + PirName + 1, fields->end(),
                       [](const std::string &field) { return trimmed(field).empty(); });
}

std::string plainDescription(const RowRecord &row)
{
    std::string text = cleanText(trimmed(row.description));
    std::optional<PirFields> fields = pirFieldsOf(text);
    if (fields && fields->at(PirType).starts_with("structure") && !row.link->structure.empty()) {
        // A part of the row has not the whole range any more.
        const PirFields before = *fields;
        updateRange(*fields, *row.link);
        return *fields == before ? text : joined(*fields);
    }
    const bool isEmpty =
        fields && fields->at(PirType) == "sequence" &&
        std::all_of(fields->begin() + PirFirst, fields->end(),
                    [](const std::string &field) { return trimmed(field).empty(); });
    return isEmpty ? std::string() : text;
}

} // namespace TAMBO::formats
