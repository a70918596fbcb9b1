// Calculates the formulas of strangers' workbooks and compares with what the applications stored that made them.
//
//     recalculate FOLDER
//
// Every stored result of every .xlsx and .xlsm file below FOLDER is taken for old, and all are calculated. Prints for
// each workbook the number of formulas, of equal, different and not calculated ones, and the sums. Formulas that depend
// on the present or on a reference that is only known when calculated are counted apart when they differ.

#include "engines/spreadsheets/workbook_model.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

namespace {

using namespace tarvik;
using namespace tarvik::ooxml;
using Number = FormulaIndex::Number;
using calculation::Value;

struct Counts {
    std::size_t formulas = 0, without_result = 0, equal = 0, different = 0, volatile_different = 0, failed = 0;
    std::map<std::string, std::size_t> reasons;

    void add(const Counts& other)
    {
        formulas += other.formulas;
        without_result += other.without_result;
        equal += other.equal;
        different += other.different;
        volatile_different += other.volatile_different;
        failed += other.failed;
        for (const auto& [reason, count] : other.reasons) reasons[reason] += count;
    }
    void print(std::ostream& out) const
    {
        out << formulas << " formulas, " << equal << " equal, " << different << " different, " << volatile_different
            << " volatile and different, " << failed << " not calculated, " << without_result
            << " without a stored result\n";
        for (const auto& [reason, count] : reasons) out << "    not calculated, " << reason << ": " << count << '\n';
    }
};

bool are_equal(const Value& ours, const Value& theirs)
{
    constexpr double tolerance = 1e-9;
    const auto *one = std::get_if<double>(&ours), *other = std::get_if<double>(&theirs);
    if (!one || !other) return ours == theirs;
    return std::abs(*one - *other) <= tolerance * std::max({std::abs(*one), std::abs(*other), 1e-300});
}

std::string shown(const Value& value)
{
    if (const auto* number = std::get_if<double>(&value)) {
        std::ostringstream text;
        text.precision(17);
        text << *number;
        return text.str();
    }
    if (const auto* truth = std::get_if<bool>(&value)) return *truth ? "TRUE" : "FALSE";
    if (const auto* text = std::get_if<Text>(&value)) return '"' + to_utf8(*text) + '"';
    if (const auto* error = std::get_if<calculation::CellError>(&value)) return to_utf8(error_text(*error));
    return "nothing";
}

// Volatile formulas and what depends on them.
std::vector<bool> volatile_ones(const FormulaIndex& index)
{
    std::vector<bool> marked(index.size());
    std::vector<RangeSet::Taken> taken(static_cast<std::size_t>(index.names().sheet_count()));
    std::vector<Number> met(index.volatile_ones().begin(), index.volatile_ones().end());
    for (const auto number : met) marked[number] = true;
    while (!met.empty()) {
        const auto& formula = index[met.back()];
        met.pop_back();
        auto& of_sheet = taken[static_cast<std::size_t>(formula.sheet - 1)];
        index.areas(formula.sheet).take(formula.range, of_sheet, [&](std::size_t area) {
            for (const auto reader : index.readers(formula.sheet, area)) {
                if (marked[reader]) continue;
                marked[reader] = true;
                met.push_back(reader);
            }
        });
    }
    return marked;
}

class Comparison {
public:
    explicit Comparison(std::string bytes) : model_(std::make_shared<const Package>(std::move(bytes))) {}

    Counts run(std::ostream& differences)
    {
        auto& recalculation = model_.recalculation();
        const auto& index = recalculation.index();
        std::vector<std::vector<Value>> stored;
        for (Number number = 0; number < index.size(); ++number)
            stored.push_back(model_.sheet(index[number].sheet).values(index[number].range));
        recalculation.forget_results();
        recalculation.update_all();
        const auto is_volatile = volatile_ones(index);
        for (Number number = 0; number < index.size(); ++number)
            compare(number, stored[number], is_volatile[number], differences);
        if (counts_.different > most_shown) differences << "    ...\n";
        return counts_;
    }

private:
    static constexpr std::size_t most_shown = 40;

    void compare(Number number, const std::vector<Value>& stored, bool is_volatile, std::ostream& differences)
    {
        const auto& formula = model_.recalculation().index()[number];
        auto& sheet = model_.sheet(formula.sheet);
        ++counts_.formulas;
        const auto& failed = model_.recalculation().failed();
        if (const auto reason = failed.find(number); reason != failed.end()) {
            ++counts_.failed;
            ++counts_.reasons[reason->second];
            return;
        }
        const auto ours = sheet.values(formula.range);
        const auto differing = std::ranges::mismatch(ours, stored, are_equal);
        if (!formula.has_result) ++counts_.without_result;
        else if (differing.in1 == ours.end()) ++counts_.equal;
        else if (is_volatile) ++counts_.volatile_different;
        else if (++counts_.different <= most_shown) {
            const auto text = element_text(child_named(sheet.cells().find(formula.place()), "f"));
            differences << "    " << formula.sheet << '!' << place_name(formula.place()) << " ="
                        << (text.empty() ? "(shared)" : text) << "  ours " << shown(*differing.in1) << ", stored "
                        << shown(*differing.in2) << '\n';
        }
    }

    WorkbookModel model_;
    Counts counts_;
};

std::string bytes_of(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::filesystem::path> workbooks_below(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const auto extension = entry.path().extension();
        if (entry.is_regular_file() && (extension == ".xlsx" || extension == ".xlsm")) files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::cerr << "recalculate FOLDER\n";
        return 2;
    }
    Counts sum;
    std::size_t read = 0, passed_over = 0;
    for (const auto& file : workbooks_below(arguments[1])) {
        std::ostringstream differences;
        try {
            const auto counts = Comparison(bytes_of(file)).run(differences);
            ++read;
            if (counts.formulas == 0) continue;
            std::cout << file.string() << ": ";
            counts.print(std::cout);
            std::cout << differences.str() << std::flush;
            sum.add(counts);
        } catch (const std::exception& failure) {
            ++passed_over;
            std::cout << file.string() << ": passed over, " << failure.what() << '\n';
        }
    }
    std::cout << "sum of " << read << " workbooks, " << passed_over << " passed over: ";
    sum.print(std::cout);
    return 0;
}
