#pragma once

#include "engines/automation.h"
#include "engines/documents/document_model.h"
#include "platform/platform.h"

namespace tarvik::ooxml {

/// A document opened from a file. Failures name the file: the picture's where that is at fault, else the document's.
class OoxmlTextDocument final : public TextDocument {
public:
    OoxmlTextDocument(Files& files, Printer& printer, Text path, std::shared_ptr<const Package> package);
    ~OoxmlTextDocument() override;

    void set_cell_text(int row, int column, TextView text) override;
    void add_picture(int row, int column, TextView path) override;
    void save_as(TextView path) override;
    void print_out() override;
    void close() override;

private:
    DocumentModel& model() const;
    const std::string& packed() const;

    Files& files_;
    Printer& printer_;
    Text path_;
    std::unique_ptr<DocumentModel> model_; // none once the document is closed
    bool is_saved_ = true;                 // the file holds what the model does
};

} // namespace tarvik::ooxml
