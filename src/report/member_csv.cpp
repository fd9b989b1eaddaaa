#include "report/member_csv.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "base/strings.h"

namespace keelview {

namespace {

using Json = nlohmann::ordered_json;
using Row = std::vector<std::pair<std::string, std::string>>;  // column and cell

std::string CellOf(const Json& value) {
    if (value.is_number()) return NumberText(value.get<double>());
    if (value.is_string()) return QuotedCell(value.get_ref<const std::string&>());
    if (value.is_boolean()) return value.get<bool>() ? "1" : "0";
    return {};
}

const std::string* CellIn(const Row& row, std::string_view column) {
    const auto found = std::ranges::find(row, column, &Row::value_type::first);
    return found == row.end() ? nullptr : &found->second;
}

/// True if rows come of it.
bool HasList(const Json& value) {
    return value.is_array() || (value.is_object() &&
                                std::ranges::any_of(value, [](const Json& part) { return HasList(part); }));
}

/// The rows of a member.
class Rows {
  public:
    std::vector<Row> All;

    void Add(const std::string& name, const Json& value, const Row& above) {
        if (value.is_array()) return AddList(name, value, above);
        Row row = above;
        AddCells("", value, row);
        bool lists = false;
        for (const auto& [key, part] : value.items())
            if (HasList(part)) {
                lists = true;
                Add(key, part, row);
            }
        if (!lists) All.push_back(std::move(row));
    }

  private:
    static void AddCells(const std::string& before, const Json& value, Row& row) {
        for (const auto& [key, part] : value.items()) {
            if (HasList(part)) continue;
            if (part.is_object())
                AddCells(before + key + '_', part, row);
            else
                row.emplace_back(before + key, CellOf(part));
        }
    }

    /// What the elements of a list are counted as, where they do not tell it.
    static std::string CountedAs(const std::string& name, bool within) {
        if (name == "boats" || name == "gaps" || name == "velocities" || (name == "made_good" && !within))
            return "boat";
        if (name == "bands") return "band";
        return name == "debrief" || name == "made_good" ? "leg" : std::string();
    }

    void AddList(const std::string& name, const Json& list, const Row& above) {
        const bool within = CellIn(above, "boat") != nullptr;
        const std::string counted = CountedAs(name, within);
        int number = 0;
        for (const Json& element : list) {
            ++number;
            Row row = above;
            const bool told =
                element.is_object() && (element.contains("number") || element.contains("boat"));
            if (!counted.empty() && !told) row.emplace_back(counted, std::to_string(number));
            if (!element.is_null()) Add(name, element, row);
        }
    }
};

/// The name of the boat that a row is of; nothing where it is of none.
std::optional<std::string> NameIn(const RaceControl& race, const Row& row) {
    for (const std::string_view column : {"boat", "number"})
        if (const std::string* const cell = CellIn(row, column))
            if (const auto boat = StrictInteger(*cell); boat && race.Boats.Holds(*boat))
                return QuotedCell(race.Boats[*boat].BoatName);
    return {};
}

}  // namespace

std::string MemberCsv(const RaceControl& race, std::string_view report) {
    const Json whole = Json::parse(report, nullptr, false);
    Rows rows;
    for (const auto& [key, member] : whole.items())
        if (!member.is_null()) rows.Add(key, member, {});
    std::vector<std::string> columns;
    bool named = false;
    for (const Row& row : rows.All) {
        named = named || NameIn(race, row);
        for (const auto& [column, cell] : row)
            if (std::ranges::find(columns, column) == columns.end()) columns.push_back(column);
    }
    std::string csv = "\xEF\xBB\xBF";
    const auto addRow = [&](const std::string& name, const auto& cellOf) {
        std::string line = named ? name + ',' : std::string();
        for (const std::string& column : columns) line += cellOf(column) + ',';
        if (!line.empty()) line.pop_back();
        csv += line + "\r\n";
    };
    addRow("\"Boat\"", [](const std::string& column) { return QuotedCell(column); });
    for (const Row& row : rows.All)
        addRow(NameIn(race, row).value_or(""), [&row](const std::string& column) {
            const std::string* const cell = CellIn(row, column);
            return cell ? *cell : std::string();
        });
    return csv;
}

}  // namespace keelview
