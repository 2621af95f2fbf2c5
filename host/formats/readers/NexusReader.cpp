// SPDX-License-Identifier: GPL-3.0-or-later
#include "NexusReader.h"

#include "AlignmentParser.h"
#include "NexusMatrix.h"
#include "NexusText.h"
#include "Text.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace TAMBO::formats {

namespace {

class NexusParser : AlignmentParser
{
public:
    explicit NexusParser(TextReader &reader) : AlignmentParser(reader), m_Text(reader) { }

    Result<FileContents> run();

private:
    void readBlocks();
    void readBlock();
    void readTaxaCommand(const NexusWord &command);
    void readTaxLabels();
    void readMatrixCommand(const NexusWord &command);
    void readDimensions(std::optional<std::uint64_t> &rows, std::optional<std::uint64_t> *columns);
    void readFormat();
    void readFormatEntry(const NexusWord &key);
    void readSymbol(const NexusWord &key, std::optional<char> &symbol);
    void readEquates();
    void readDataType(std::uint64_t line);
    std::string value(const NexusWord &key);
    void addMatrix();
    void passRest();
    void refuse(std::uint64_t line, const std::string &cause);
    void finish();

    NexusText m_Text;
    FileContents m_Contents;
    NexusNames m_Taxa;
    std::optional<std::uint64_t> m_TaxaCount;
    std::vector<std::string> m_Blocks;
    // The first matrix that is nothing for us, and why.
    std::optional<Failure> m_Refused;
    std::size_t m_RefusedCount = 0;

    // ---- Of the block under way

    std::string m_Block;
    bool m_IsRefused = false;
    NexusHead m_Head;
};

Result<FileContents> NexusParser::run()
{
    // What it says is how the file was told to be one.
    (void)m_Text.word();
    readBlocks();
    if (!m_Reader.outcome())
        return m_Reader.outcome().error();
    if (!m_Text.outcome())
        return m_Text.outcome().error();
    if (m_Outcome)
        finish();
    if (!m_Outcome)
        return m_Outcome.error();
    return std::move(m_Contents);
}

void NexusParser::readBlocks()
{
    while (m_Outcome && m_Text.outcome()) {
        const NexusWord word = m_Text.word();
        if (word.isEnd())
            return;
        if (word.isMark(';'))
            continue;
        if (!word.is("begin"))
            return fail(m_Text.line(), "found " + shown(word.text) +
                                           ", expected \"BEGIN\" and the name of a block");
        readBlock();
    }
}

void NexusParser::readBlock()
{
    m_Block = upperCase(m_Text.word().text);
    m_Blocks.push_back(m_Block);
    passRest();
    const bool hasNames = m_Block == "TAXA";
    const bool hasMatrix = m_Block == "DATA" || m_Block == "CHARACTERS";
    m_Head = {};
    m_Head.hasNewNames = m_Block == "DATA";
    m_IsRefused = false;
    while (m_Outcome && m_Text.outcome()) {
        const NexusWord word = m_Text.word();
        if (word.isEnd())
            // Nothing that is needed can be missing behind a matrix.
            return m_Contents.alignments.empty() || !hasMatrix
                       ? fail(std::max<std::uint64_t>(m_Text.line(), 1),
                              "the file ends within the block " + shown(m_Block) +
                                  ", expected \"END;\"")
                       : remark(m_Text.line(), "the file ends without the \"END;\" of the block " +
                                                   shown(m_Block));
        if (word.isMark(';'))
            continue;
        if (word.is("end") || word.is("endblock"))
            return passRest();
        if (hasNames)
            readTaxaCommand(word);
        else if (hasMatrix && !m_IsRefused)
            readMatrixCommand(word);
        else
            passRest();
    }
}

void NexusParser::passRest()
{
    (void)m_Text.passCommand();
}

void NexusParser::readTaxaCommand(const NexusWord &command)
{
    if (command.is("dimensions"))
        readDimensions(m_TaxaCount, nullptr);
    else if (command.is("taxlabels"))
        readTaxLabels();
    else
        passRest();
}

void NexusParser::readTaxLabels()
{
    m_Taxa = {};
    for (;;) {
        const NexusWord word = m_Text.nameWord();
        if (word.isMark(';') || !m_Text.outcome())
            return;
        if (word.isEnd())
            return fail(m_Text.line(), "the file ends within TAXLABELS, expected \";\"");
        const std::string name = word.name();
        if (m_Taxa.has(name))
            return fail(m_Text.line(), "found " + shown(name) + " a second time in TAXLABELS");
        m_Taxa.add(name);
    }
}

void NexusParser::readMatrixCommand(const NexusWord &command)
{
    if (command.is("dimensions"))
        return readDimensions(m_Head.rows, &m_Head.columns);
    if (command.is("format"))
        return readFormat();
    if (command.is("taxlabels"))
        return readTaxLabels();
    if (command.is("matrix"))
        return addMatrix();
    if (command.is("title"))
        m_Head.title = m_Text.word().name();
    else if (command.is("eliminate"))
        remark(m_Text.line(), "the columns that ELIMINATE takes out were read");
    passRest();
}

// What stands behind "key=".
std::string NexusParser::value(const NexusWord &key)
{
    const std::uint64_t line = m_Text.line();
    const NexusWord mark = m_Text.word();
    const NexusWord value = mark.isMark('=') ? m_Text.word() : mark;
    if (mark.isMark('=') && !value.isEnd() && value.kind != NexusWord::Kind::Mark)
        return value.text;
    fail(line, "found no value of " + shown(key.text) + ", expected \"=\" and one");
    return {};
}

void NexusParser::readDimensions(std::optional<std::uint64_t> &rows,
                                 std::optional<std::uint64_t> *columns)
{
    while (m_Outcome && m_Text.outcome()) {
        const std::uint64_t line = m_Text.line();
        const NexusWord key = m_Text.word();
        if (key.isEnd() || key.isMark(';'))
            return;
        if (columns != nullptr && key.is("newtaxa"))
            m_Head.hasNewNames = true;
        const bool isRows = key.is("ntax");
        if (!isRows && !key.is("nchar"))
            continue;
        const std::string number = value(key);
        const std::optional<std::uint64_t> count =
            isAllDigits(number) ? numberIn<std::uint64_t>(number) : std::nullopt;
        if (m_Outcome && (!count || *count == 0))
            return fail(line, "found " + shown(number) + " for " + upperCase(key.text) +
                                  ", expected a number from 1 on");
        if (isRows)
            rows = count;
        else if (columns != nullptr)
            *columns = count;
    }
}

void NexusParser::readFormat()
{
    while (m_Outcome && m_Text.outcome()) {
        const NexusWord key = m_Text.word();
        if (key.isEnd() || key.isMark(';'))
            return;
        readFormatEntry(key);
        if (m_IsRefused)
            return passRest();
    }
}

void NexusParser::readFormatEntry(const NexusWord &key)
{
    const std::uint64_t line = m_Text.line();
    if (key.is("datatype"))
        return readDataType(line);
    if (key.is("transpose"))
        return refuse(line, "has TRANSPOSE, expected a row for each sequence");
    if (key.is("tokens"))
        return refuse(line, "has TOKENS, expected a letter for each residue");
    if (key.is("gap"))
        return readSymbol(key, m_Head.symbols.gap);
    if (key.is("missing"))
        return readSymbol(key, m_Head.symbols.missing);
    if (key.is("matchchar"))
        return readSymbol(key, m_Head.symbols.match);
    if (key.is("respectcase"))
        m_Head.symbols.respectsCase = true;
    else if (key.is("equate"))
        readEquates();
    else if (key.is("labels") || key.is("nolabels"))
        m_Head.hasLabels = key.is("labels");
    else if (key.is("interleave"))
        // "INTERLEAVE=NO" is known too.
        m_Head.isInterleaved = m_Text.passLines() != '=' || startsWithoutCase(value(key), "y");
    else if (m_Text.passLines() == '=')
        (void)value(key);
}

void NexusParser::readSymbol(const NexusWord &key, std::optional<char> &symbol)
{
    const std::uint64_t line = m_Text.line();
    if (m_Text.passLines() == '=') {
        m_Text.pass();
        symbol = m_Text.symbol();
        if (symbol)
            return;
    }
    fail(line, "found no character for " + upperCase(key.text) + ", expected \"=\" and one");
}

void NexusParser::readEquates()
{
    const std::uint64_t line = m_Text.line();
    const std::string text = value({NexusWord::Kind::Word, "EQUATE"});
    if (m_Outcome && !m_Head.symbols.addEquates(text))
        fail(line, "found " + shown(text) +
                       " for EQUATE, expected symbols and what they stand for, like \"x=A "
                       "y=(DN)\"");
}

void NexusParser::readDataType(std::uint64_t line)
{
    const std::string type = upperCase(value({NexusWord::Kind::Word, "DATATYPE"}));
    if (type.empty() || type == "PROTEIN")
        return;
    if (type == "DNA" || type == "RNA" || type == "NUCLEOTIDE")
        return remark(line, "DATATYPE is " + type + ", so the letters are no amino acids");
    refuse(line, "has DATATYPE=" + cleanText(type) + ", expected PROTEIN");
}

// A matrix of another kind is left out where there is one of ours.
void NexusParser::refuse(std::uint64_t line, const std::string &cause)
{
    m_IsRefused = true;
    if (m_RefusedCount++ == 0)
        m_Refused = failureAt(m_Reader.fileName(), line,
                              "the matrix of the block " + shown(m_Block) + ' ' + cause);
}

void NexusParser::addMatrix()
{
    const NexusNames none;
    const bool isFree = m_Head.hasNewNames && m_Head.hasLabels;
    const NexusNames &names = isFree ? none : m_Taxa;
    std::optional<std::uint64_t> rows = m_Head.rows;
    if (!rows && !isFree)
        rows = m_TaxaCount;
    if (!rows && names.size() > 0)
        rows = names.size();
    Result<AlignmentRecord> read = NexusMatrix(m_Reader, m_Text, m_Head, names).read(rows);
    if (!read) {
        m_Outcome = read.error();
        return;
    }
    AlignmentRecord &alignment = m_Contents.alignments.emplace_back(std::move(read.value()));
    alignment.name = m_Head.title;
    alignment.remarks.insert(alignment.remarks.begin(), m_Alignment.remarks.begin(),
                             m_Alignment.remarks.end());
    m_Alignment.remarks.clear();
}

void NexusParser::finish()
{
    std::vector<AlignmentRecord> &alignments = m_Contents.alignments;
    if (alignments.empty() && m_Refused) {
        m_Outcome = *m_Refused;
        return;
    }
    if (alignments.empty()) {
        std::string found;
        for (const std::string &block : m_Blocks)
            found += (found.empty() ? "" : ", ") + shown(block);
        return fail(std::max<std::uint64_t>(m_Text.line(), 1),
                    "the file ends without a matrix, expected a block \"DATA\" or \"CHARACTERS\"" +
                        (found.empty() ? found : "; found " + found));
    }
    // What was said behind the last matrix.
    std::ranges::move(m_Alignment.remarks, std::back_inserter(alignments.back().remarks));
    if (m_Refused)
        alignments.front().remarks.push_back(
            at(m_Reader.fileName(), m_Refused->place.line,
               m_Refused->cause + "; it was left out" +
                   (m_RefusedCount > 1
                        ? ", so were " + std::to_string(m_RefusedCount - 1) + " more further down"
                        : std::string())));
    // A title tells several apart.
    for (std::size_t i = 0; i < alignments.size(); ++i) {
        const std::string title = cleanText(alignments[i].name);
        alignments[i].name = baseName(m_Reader.fileName());
        if (alignments.size() > 1)
            alignments[i].name += '_' + (title.empty() ? std::to_string(i + 1) : title);
    }
    m_Contents.format = formatName(FileFormat::Nexus);
}

} // namespace

Result<FileContents> readNexus(TextReader &reader)
{
    return NexusParser(reader).run();
}

} // namespace TAMBO::formats
