#include "tests/support/report_desk.h"

#include "platform/files/paths.h"

#include <algorithm>
#include <utility>

namespace tarvik::test {

namespace {

const Text output = U"d:\\Atarvik output\\";

Text joined(const Record& record)
{
    Text line;
    for (std::size_t i = 0; i < record.size(); ++i) line += (i ? U"\t" : U"") + record[i];
    return line;
}

Text document(const Report& report)
{
    Text text = U"head\r\n";
    for (const Record& record : report) text += joined(record) + U"\r\n";
    return text;
}

} // namespace

Record numbered_record(std::size_t fields)
{
    Record record;
    for (std::size_t i = 1; i <= fields; ++i) record.push_back(U"F" + number_text(i));
    return record;
}

std::size_t PlainTable::scan(const Report& report, const Text& key)
{
    rows_.clear();
    for (const Record& record : report) {
        Record lowered;
        std::ranges::transform(record, std::back_inserter(lowered), [](const Text& field) { return lower(field); });
        if (key.empty() || joined(lowered).find(lower(key)) == Text::npos) continue;
        std::erase(rows_, lowered);
        rows_.push_back(lowered);
    }
    return rows_.size();
}

void PlainTable::split()
{
    if (rows_.empty()) return;
    for (std::size_t row = 0; row < rows_.size(); ++row)
        for (std::size_t i = 0; i < rows_[row].size(); ++i) set(row, i + 1, rows_[row][i]);
    set(rows_.size(), 1, {});
}

Text PlainTable::at(std::size_t row, std::size_t column) const
{
    const auto found = cells_.find({row, column});
    return found == cells_.end() ? Text() : found->second;
}

std::vector<Text> PlainTable::keys(std::size_t column) const
{
    std::vector<Text> keys;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const Text key = at(row, column);
        if (std::ranges::find(keys, key) == keys.end()) keys.push_back(key);
    }
    return keys;
}

void ReportDesk::write_report(const std::string& name, const Report& report)
{
    started.installation.write(name, encode(document(report)));
}

void ReportDesk::open_report(const Report& report)
{
    started.open_text(document(report));
}

std::vector<Text> ReportDesk::told()
{
    std::vector<Text> texts;
    for (const Message& message : std::exchange(started.dialogs.messages, {}))
        if (message.buttons == Buttons::OK) texts.push_back(message.text);
    return texts;
}

Cells ReportDesk::workbook(const Text& path) const
{
    const auto file = office.files.find(path);
    return file == office.files.end() ? Cells() : without_empty(file->second);
}

std::vector<Text> ReportDesk::saved() const
{
    std::vector<Text> paths;
    for (const auto& [path, cells] : office.files)
        if (path.starts_with(output)) paths.push_back(path);
    return paths;
}

void ReportDesk::expect_saved(const std::map<Text, Cells>& expected) const
{
    EXPECT_EQ(saved().size(), expected.size());
    for (const auto& [path, cells] : expected)
        EXPECT_EQ(lines_of(workbook(path)), lines_of(without_empty(cells))) << to_utf8(path);
}

void ReportDesk::expect_idle()
{
    expect_released();
    EXPECT_EQ(office.open_applications, 0);
    EXPECT_EQ(form1.batchcursor, -1);
    EXPECT_EQ(form1.sheetno, 1);
}

Text RandomFields::field()
{
    static const std::vector<Text> pieces{
        U"",     U"/",  U"A.B", U"0755/138",         U"138/0755", U"Ab cD",    U"自制", U"批次", U"x..y", U"é",
        U"𠮷田", U"12", U"YQ",  U"2024.03.05 09:20", U"//",       U"a:b*c?\"", U"<|>",  U" ",    U"B/0",  U"不可"};
    Text text;
    for (std::size_t count = below(4); count > 0; --count) text += pieces[below(pieces.size())];
    return below(40) == 0 ? text + Text(below(70), U'长') : text;
}

Record RandomFields::record(std::size_t fields, std::size_t key_field, const Text& key)
{
    Record record(std::max(key_field, below(3) == 0 ? below(fields + 1) : fields));
    std::size_t room = 600; // a scan passes over lines that are too long
    for (Text& text : record)
        if (text = field(); text.size() > room) text.clear();
        else room -= text.size();
    record[key_field - 1] = key;
    return record;
}

std::vector<std::string> lines_of(const Cells& cells)
{
    std::vector<std::string> lines;
    for (const auto& [place, value] : cells) {
        const auto* number = std::get_if<double>(&value);
        lines.push_back(std::to_string(place.first) + "," + std::to_string(place.second) +
                        (number ? "=" + to_utf8(number_text(*number)) : " " + to_utf8(std::get<Text>(value))));
    }
    return lines;
}

Cells without_empty(const Cells& cells)
{
    Cells kept = cells;
    std::erase_if(kept, [](const auto& cell) { return cell.second == CellValue(Text()); });
    return kept;
}

Text sheet_file(Text folder_text, const Text& tail, const Text& extension)
{
    std::erase(folder_text, U'.');
    Text head = safe_name_part(folder_text), rest = safe_name_part(tail);
    while (name_size(head + rest + extension) > longest_name) (head.empty() ? rest : head).pop_back();
    return output + (folder_text.empty() ? Text() : safe_file_name(folder_text) + U"\\") + head + rest + extension;
}

} // namespace tarvik::test
