#pragma once

#include "engines/automation.h"
#include "engines/spreadsheets/workbook_model.h"
#include "platform/platform.h"

#include <map>
#include <memory>

namespace tarvik::ooxml {

/// A workbook opened from a file. Failures name the file.
class OoxmlWorkbook final : public Workbook {
public:
    OoxmlWorkbook(Files& files, Printer& printer, Text path, std::shared_ptr<const Package> package,
                  FormulaServices services);
    ~OoxmlWorkbook() override;

    int worksheet_count() const override { return model().sheet_count(); }
    Worksheet& worksheet(int index) override;
    void save_as(TextView path) override;
    void close(bool save_changes) override;

private:
    class Sheet;

    WorkbookModel& model() const;
    const std::string& packed() const;
    void print();

    Files& files_;
    Printer& printer_;
    Text path_;
    std::unique_ptr<WorkbookModel> model_; // none once the workbook is closed
    std::map<int, std::unique_ptr<Sheet>> sheets_;
    bool is_saved_ = true; // the file holds what the model does
};

} // namespace tarvik::ooxml
