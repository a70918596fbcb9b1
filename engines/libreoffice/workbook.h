#pragma once

#include "engines/libreoffice/exchange_folder.h"
#include "engines/libreoffice/sheet_cells.h"
#include "platform/platform.h"

namespace tarvik::libreoffice {

struct WorkbookFormat;

/// A workbook that LibreOffice holds open. Failures name the file.
class OfficeWorkbook final : public Workbook {
public:
    OfficeWorkbook(LibreOffice& office, Files& files, Printer& printer, Text path);
    ~OfficeWorkbook() override;

    int worksheet_count() const override { return sheet_count_; }
    Worksheet& worksheet(int index) override;
    void save_as(TextView path) override;
    void close(bool save_changes) override;

private:
    class Sheet;

    void open(LibreOffice& office);
    Handle<OpenWorkbook>& file();
    void require_writable(int sheet);
    void send();
    void check_limits(const WorkbookFormat& format);
    std::string stored(const WorkbookFormat& format);
    void store(const Text& path, const WorkbookFormat& format);
    void print();

    Files& files_;
    Printer& printer_;
    Text path_;
    std::optional<ExchangeFolder> folder_;
    std::optional<Handle<OpenWorkbook>> file_; ///< none once the workbook is closed
    const WorkbookFormat* format_ = nullptr;
    int sheet_count_ = 0;
    SheetWrites writes_{[this] { send(); }};
    std::map<int, std::unique_ptr<Sheet>> sheets_;
    bool is_saved_ = true; ///< the file holds what LibreOffice does
};

} // namespace tarvik::libreoffice
