// SPDX-License-Identifier: GPL-3.0-or-later
// The residue property scales, read from text files.
#pragma once

#include "Result.h"

#include <QString>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::services {

struct ResidueScale
{
    std::string name;
    // What the values are counted in, and where they come from; may be empty.
    std::string unit;
    std::string source;
    // By one-letter code; letters without a value are left out.
    std::map<char, float> values;
};

class ResidueScales
{
public:
    explicit ResidueScales(std::vector<ResidueScale> scales);
    // All "*.scale" files of the directories, in the order of the directories and, in each, of the
    // file names. A later scale takes the place of an earlier one of its name, and of the one whose
    // file has the same name. A bad file is left out, and takes no place, with a line in the log.
    explicit ResidueScales(const std::vector<QString> &directories);

    // The scales behind ResidueTypes: the installed ones, then the user's.
    static const ResidueScales &instance();
    // Exchanges them; null goes back to reading the files when next asked.
    static void setInstance(std::unique_ptr<ResidueScales> scales);

    // "#" starts a comment; "name", "unit" and "source" stand before these, the source may go on in
    // further such lines; every other line is "letter value". The failure names the file, the line
    // and the cause.
    static Result<ResidueScale> parse(std::string_view text, const std::string &fileName);

    [[nodiscard]] const std::vector<ResidueScale> &scales() const noexcept { return m_Scales; }
    // Null when there is none of this name.
    [[nodiscard]] const ResidueScale *find(std::string_view name) const;

private:
    std::vector<ResidueScale> m_Scales;
};

} // namespace TAMBO::services
