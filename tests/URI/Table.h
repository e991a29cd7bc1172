// The table of URIs, tests/data/uris.tsv: a text, what is wrong with it, its record and what it prints.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

inline const std::filesystem::path kTests = std::filesystem::path(__FILE__).parent_path() / "..";

struct TableRow {
    std::string text, reason, record, printed;
};

inline std::vector<TableRow> TableOfUris() {
    std::ifstream table(kTests / "data/uris.tsv");
    std::vector<TableRow> rows;
    std::string line;
    std::getline(table, line);  // the columns' names
    while (std::getline(table, line)) {
        std::istringstream columns(line + '\t');
        TableRow& row = rows.emplace_back();
        for (std::string* column : {&row.text, &row.reason, &row.record, &row.printed}) {
            std::getline(columns, *column, '\t');
        }
    }
    return rows;
}
