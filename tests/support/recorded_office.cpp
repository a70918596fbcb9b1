#include "tests/support/recorded_office.h"

namespace tarvik::test {

namespace {

// Everything goes to the last task of the office: tasks never overlap.
class RecordedWorkbook final : public Workbook, public Worksheet, public SpreadsheetApplication {
public:
    explicit RecordedWorkbook(RecordedOffice& office) : office_(office) { office_.tasks.emplace_back(); }

    void set_visible(bool visible) override { task().visible = visible; }
    Workbook& open(TextView path) override
    {
        task().opened = path.str();
        if (!office_.failing.empty() && path.str().ends_with(office_.failing)) throw Failure(U"无法打开：" + path);
        return *this;
    }
    void quit() override { task().quit = true; }

    int worksheet_count() const override { return 1; }
    Worksheet& worksheet(int) override { return *this; }
    void save_as(TextView path) override { task().saved_as = path.str(); }
    void close(bool save_changes) override
    {
        task().closed = true;
        task().saved = save_changes;
    }

    Text cell(int, int) const override { return {}; }
    bool is_empty(int, int) const override { return true; }
    void set_cell(int row, int column, const CellValue& value) override { task().cells[{row, column}] = value; }
    int clear(int, int, int, int) override { return ++task().cleared; }
    void print_out() override {}

private:
    RecordedTask& task() { return office_.tasks.back(); }
    RecordedOffice& office_;
};

} // namespace

std::unique_ptr<SpreadsheetApplication> RecordedOffice::create_spreadsheet()
{
    return std::make_unique<RecordedWorkbook>(*this);
}

std::vector<RecordedTask> RecordedOffice::of(TextView name) const
{
    std::vector<RecordedTask> found;
    for (const RecordedTask& task : tasks)
        if (task.opened.ends_with(U"\\" + name)) found.push_back(task);
    return found;
}

} // namespace tarvik::test
