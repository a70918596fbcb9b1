#pragma once

#include "engines/libreoffice/exchange_folder.h"
#include "engines/libreoffice/libreoffice.h"
#include "platform/platform.h"

namespace tarvik::libreoffice {

/// A document that LibreOffice holds open. Failures name the file: the picture's where that is at fault, else the
/// document's.
class OfficeDocument final : public TextDocument {
public:
    OfficeDocument(LibreOffice& office, Files& files, Printer& printer, Text path);

    void set_cell_text(int row, int column, TextView text) override;
    void add_picture(int row, int column, TextView path) override;
    void save_as(TextView path) override;
    void print_out() override;
    void close() override;

private:
    void open(LibreOffice& office);
    Handle<OpenDocument>& file();
    std::string stored();

    Files& files_;
    Printer& printer_;
    Text path_;
    std::optional<ExchangeFolder> folder_;
    std::optional<Handle<OpenDocument>> file_; ///< none once the document is closed
    const char* filter_ = nullptr;             ///< the format that it is kept in
    int pictures_ = 0;
};

} // namespace tarvik::libreoffice
