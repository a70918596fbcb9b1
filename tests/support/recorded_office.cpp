#include "tests/support/recorded_office.h"

namespace tarvik::test {

namespace {

Text text_of(const CellValue& value)
{
    if (const auto* number = std::get_if<double>(&value)) return number_text(*number);
    return std::get<Text>(value);
}

class Counted {
public:
    explicit Counted(RecordedOffice& office) : office_(office) { ++office_.open_applications; }
    ~Counted() { --office_.open_applications; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

protected:
    void refuse(TextView path) const
    {
        if (!office_.failing.empty() && path.str().ends_with(office_.failing)) throw Failure(U"无法打开：" + path);
    }
    RecordedOffice& office_;
};

// Everything goes to the last task of the office: tasks never overlap.
class RecordedWorkbook final : public Workbook, public Worksheet, public SpreadsheetApplication, Counted {
public:
    explicit RecordedWorkbook(RecordedOffice& office) : Counted(office) { office_.tasks.emplace_back(); }

    Workbook& open(TextView path) override
    {
        task().opened = path_ = path.str();
        refuse(path);
        cells_ = office_.files[path_];
        return *this;
    }
    void quit() override { task().quit = true; }

    int worksheet_count() const override { return 1; }
    Worksheet& worksheet(int) override { return *this; }
    void save_as(TextView path) override
    {
        task().saved_as = path_ = path.str();
        office_.files[path_] = cells_;
    }
    void close(bool save_changes) override
    {
        task().saved = save_changes;
        if (save_changes) office_.files[path_] = cells_;
    }

    Text cell(int row, int column) const override
    {
        const auto found = cells_.find({row, column});
        return found == cells_.end() ? Text() : text_of(found->second);
    }
    CellValue value(int row, int column) const override
    {
        const auto found = cells_.find({row, column});
        return found == cells_.end() ? CellValue(Text()) : found->second;
    }
    bool is_empty(int row, int column) const override { return cell(row, column).empty(); }
    void set_cell(int row, int column, const CellValue& value) override
    {
        task().cells[{row, column}] = value;
        cells_[{row, column}] = value;
    }
    int clear(int first_row, int last_row, int first_column, int last_column) override
    {
        return static_cast<int>(std::erase_if(cells_, [&](const auto& cell) {
            const auto [row, column] = cell.first;
            return row >= first_row && row <= last_row && column >= first_column && column <= last_column;
        }));
    }
    void print_out() override { ++task().printed; }

private:
    RecordedTask& task() const { return office_.tasks.back(); }
    Text path_;
    Cells cells_;
};

class RecordedTextDocument final : public TextDocument, public DocumentApplication, Counted {
public:
    explicit RecordedTextDocument(RecordedOffice& office) : Counted(office) { office_.documents.emplace_back(); }

    TextDocument& open(TextView path) override
    {
        task().opened = path.str();
        refuse(path);
        return *this;
    }
    void quit() override { task().quit = true; }
    void set_cell_text(int row, int column, TextView text) override { task().cells[{row, column}] = text.str(); }
    void add_picture(int row, int column, TextView path) override { task().pictures[{row, column}] = path.str(); }
    void save_as(TextView path) override { task().saved_as = path.str(); }
    void print_out() override { ++task().printed; }
    void close() override { task().closed = true; }

private:
    RecordedDocumentTask& task() const { return office_.documents.back(); }
};

} // namespace

std::unique_ptr<SpreadsheetApplication> RecordedOffice::create_spreadsheet()
{
    return std::make_unique<RecordedWorkbook>(*this);
}

std::unique_ptr<DocumentApplication> RecordedOffice::create_document()
{
    return std::make_unique<RecordedTextDocument>(*this);
}

std::vector<RecordedTask> RecordedOffice::of(TextView name) const
{
    std::vector<RecordedTask> found;
    for (const RecordedTask& task : tasks)
        if (task.opened.ends_with(U"\\" + name)) found.push_back(task);
    return found;
}

} // namespace tarvik::test
