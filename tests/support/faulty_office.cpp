#include "tests/support/faulty_office.h"

#include "platform/failure.h"

namespace tarvik::test {

namespace {

// An application with the one workbook and the one sheet of it that a task has in hand.
class FaultySpreadsheet final : public SpreadsheetApplication, public Workbook, public Worksheet {
public:
    FaultySpreadsheet(FaultyOffice& office, std::unique_ptr<SpreadsheetApplication> application)
        : office_(office), application_(std::move(application))
    {
    }
    Workbook& open(TextView path) override { return office_.count(), book_ = &application_->open(path), *this; }
    void quit() override { office_.count(), application_->quit(); }

    int worksheet_count() const override { return office_.count(), book_->worksheet_count(); }
    Worksheet& worksheet(int index) override { return office_.count(), sheet_ = &book_->worksheet(index), *this; }
    void save_as(TextView path) override { office_.count(), book_->save_as(path); }
    void close(bool save_changes) override { office_.count(), book_->close(save_changes); }

    Text cell(int row, int column) const override { return office_.count(), sheet_->cell(row, column); }
    CellValue value(int row, int column) const override { return office_.count(), sheet_->value(row, column); }
    bool is_empty(int row, int column) const override { return office_.count(), sheet_->is_empty(row, column); }
    void set_cell(int row, int column, const CellValue& value) override
    {
        office_.count(), sheet_->set_cell(row, column, value);
    }
    int clear(int first_row, int last_row, int first_column, int last_column) override
    {
        return office_.count(), sheet_->clear(first_row, last_row, first_column, last_column);
    }
    void print_out() override { office_.count(), sheet_->print_out(); }

private:
    FaultyOffice& office_;
    std::unique_ptr<SpreadsheetApplication> application_;
    Workbook* book_ = nullptr;
    Worksheet* sheet_ = nullptr;
};

class FaultyText final : public DocumentApplication, public TextDocument {
public:
    FaultyText(FaultyOffice& office, std::unique_ptr<DocumentApplication> application)
        : office_(office), application_(std::move(application))
    {
    }
    TextDocument& open(TextView path) override { return office_.count(), document_ = &application_->open(path), *this; }
    void quit() override { office_.count(), application_->quit(); }

    void set_cell_text(int row, int column, TextView text) override
    {
        office_.count(), document_->set_cell_text(row, column, text);
    }
    void add_picture(int row, int column, TextView path) override
    {
        office_.count(), document_->add_picture(row, column, path);
    }
    void save_as(TextView path) override { office_.count(), document_->save_as(path); }
    void print_out() override { office_.count(), document_->print_out(); }
    void close() override { office_.count(), document_->close(); }

private:
    FaultyOffice& office_;
    std::unique_ptr<DocumentApplication> application_;
    TextDocument* document_ = nullptr;
};

} // namespace

void FaultyOffice::count()
{
    if (++counted_ == failing_) throw Failure(U"办公软件没有回应");
}

std::unique_ptr<SpreadsheetApplication> FaultyOffice::create_spreadsheet()
{
    count();
    return std::make_unique<FaultySpreadsheet>(*this, office_->create_spreadsheet());
}

std::unique_ptr<DocumentApplication> FaultyOffice::create_document()
{
    count();
    return std::make_unique<FaultyText>(*this, office_->create_document());
}

} // namespace tarvik::test
