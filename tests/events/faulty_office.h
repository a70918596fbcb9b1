#pragma once

#include "engines/automation.h"
#include "platform/failure.h"

/// Office programs over others, of which one operation fails.
namespace tarvik::test {

/// Every operation of the applications, their workbooks, sheets and documents counts, and the one with the number that
/// was set throws in its place.
class Operations {
public:
    /// Counts from 1, from now on. 0: nothing fails.
    void fail_at(std::size_t operation)
    {
        counted_ = 0;
        failing_ = operation;
    }
    std::size_t counted() const { return counted_; }
    void count()
    {
        if (++counted_ == failing_) throw Failure(U"办公软件没有回应");
    }

private:
    std::size_t counted_ = 0;
    std::size_t failing_ = 0;
};

// An application with the one workbook and the one sheet of it that a task has in hand.
class FaultySpreadsheet final : public SpreadsheetApplication, public Workbook, public Worksheet {
public:
    FaultySpreadsheet(Operations& operations, std::unique_ptr<SpreadsheetApplication> application)
        : operations_(operations), application_(std::move(application))
    {
    }
    Workbook& open(TextView path) override { return operations_.count(), book_ = &application_->open(path), *this; }
    void quit() override { operations_.count(), application_->quit(); }

    int worksheet_count() const override { return operations_.count(), book_->worksheet_count(); }
    Worksheet& worksheet(int index) override { return operations_.count(), sheet_ = &book_->worksheet(index), *this; }
    void save_as(TextView path) override { operations_.count(), book_->save_as(path); }
    void close(bool save_changes) override { operations_.count(), book_->close(save_changes); }

    Text cell(int row, int column) const override { return operations_.count(), sheet_->cell(row, column); }
    CellValue value(int row, int column) const override { return operations_.count(), sheet_->value(row, column); }
    bool is_empty(int row, int column) const override { return operations_.count(), sheet_->is_empty(row, column); }
    void set_cell(int row, int column, const CellValue& value) override
    {
        operations_.count(), sheet_->set_cell(row, column, value);
    }
    int clear(int first_row, int last_row, int first_column, int last_column) override
    {
        return operations_.count(), sheet_->clear(first_row, last_row, first_column, last_column);
    }
    void print_out() override { operations_.count(), sheet_->print_out(); }

private:
    Operations& operations_;
    std::unique_ptr<SpreadsheetApplication> application_;
    Workbook* book_ = nullptr;
    Worksheet* sheet_ = nullptr;
};

class FaultyText final : public DocumentApplication, public TextDocument {
public:
    FaultyText(Operations& operations, std::unique_ptr<DocumentApplication> application)
        : operations_(operations), application_(std::move(application))
    {
    }
    TextDocument& open(TextView path) override
    {
        return operations_.count(), document_ = &application_->open(path), *this;
    }
    void quit() override { operations_.count(), application_->quit(); }

    void set_cell_text(int row, int column, TextView text) override
    {
        operations_.count(), document_->set_cell_text(row, column, text);
    }
    void add_picture(int row, int column, TextView path) override
    {
        operations_.count(), document_->add_picture(row, column, path);
    }
    void save_as(TextView path) override { operations_.count(), document_->save_as(path); }
    void print_out() override { operations_.count(), document_->print_out(); }
    void close() override { operations_.count(), document_->close(); }

private:
    Operations& operations_;
    std::unique_ptr<DocumentApplication> application_;
    TextDocument* document_ = nullptr;
};

class FaultyOffice final : public OfficeEngines, public Operations {
public:
    /// To be called before anything is created.
    void start(std::unique_ptr<OfficeEngines> office) { office_ = std::move(office); }
    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override
    {
        return count(), std::make_unique<FaultySpreadsheet>(*this, office_->create_spreadsheet());
    }
    std::unique_ptr<DocumentApplication> create_document() override
    {
        return count(), std::make_unique<FaultyText>(*this, office_->create_document());
    }

private:
    std::unique_ptr<OfficeEngines> office_;
};

} // namespace tarvik::test
