#pragma once

#include "tests/TestSupport.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <sstream>

using Json = nlohmann::json;

/// The tables of docs/json.md, against which what txhost prints is held.
class JsonPage {
public:
    JsonPage()
    {
        const fs::path build = cmSystemPath(builtProgram("txhost")).parent_path();
        std::istringstream lines(readFile(build.parent_path().parent_path() / "docs" / "json.md"));
        const std::regex heading("##+ `?(\\w+)`?"), row("\\| `(\\w+)` \\| ([\\w ]+) \\| ([\\w, `]+) \\|.*");
        std::smatch part;
        std::string section;
        bool inTable = false;
        for (std::string line; std::getline(lines, line); inTable = line.starts_with('|')) {
            if (std::regex_match(line, part, heading))
                section = part[1];
            if (!inTable && line.starts_with('|'))
                m_tables[section].emplace_back();
            if (std::regex_match(line, part, row)) {
                m_tables[section].back()[part[1]] = {part[2], part[3] == "always"};
                unseen.insert(section + "." + part[1].str());
            }
        }
    }

    /// Whether the object has exactly the fields of one of the section's tables.
    bool holds(const std::string& section, const Json& object)
    {
        return std::ranges::any_of(m_tables[section], [&](const Table& table) {
            for (const auto& [name, field] : table) {
                if (object.contains(name) ? !hasType(object[name], field.first) : field.second)
                    return false;
            }
            for (const auto& [key, value] : object.items()) {
                if (const std::size_t bytes = key.find("Base64"); !table.contains(key.substr(0, bytes)))
                    return false;
                unseen.erase(section + "." + key);
            }
            return true;
        });
    }

    std::set<std::string> unseen;  ///< fields that no object had, as "SECTION.FIELD"

private:
    using Table = std::map<std::string, std::pair<std::string, bool>>;  ///< a field's type, and whether it is always there

    bool hasType(const Json& value, const std::string& type)
    {
        static const std::regex time("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(\\.\\d{7})?[+-]\\d\\d:\\d\\d");
        if (type.starts_with("list of "))
            return value.is_array() && std::ranges::all_of(value, [&](auto& each) { return holds(type.substr(8), each); });
        if (type == "texts" || type == "names")
            return value.is_array() && std::ranges::all_of(value, [](auto& each) { return each.is_string(); });
        if (type == "time")
            return value.is_string() && std::regex_match(value.get<std::string>(), time);
        return type == "any" || (type == "number" && value.is_number_integer()) || (type == "flag" && value.is_boolean())
               || ((type == "text" || type == "name") && value.is_string());
    }

    std::map<std::string, std::vector<Table>> m_tables;
};

inline JsonPage jsonPage;

/// The objects that a command of txhost has printed; each must be as the page says.
inline std::vector<Json> jsonLines(const std::string& command, const std::string& text)
{
    std::vector<Json> objects;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        objects.push_back(Json::parse(line));
        EXPECT_TRUE(jsonPage.holds(objects.back().contains("error") ? "Failures" : command, objects.back())) << line;
    }
    return objects;
}

/// What txhost prints with --json; it must end with this exit code.
inline std::vector<Json> json(Texts arguments, int exitCode = 0)
{
    arguments.emplace_back("--json");
    const ProgramResult result = runBuilt("txhost", arguments);
    EXPECT_EQ(result.exitCode, exitCode) << Json(arguments) << result.output << result.error;
    return jsonLines(arguments.front(), result.output);
}
