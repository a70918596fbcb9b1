#pragma once

#include "engines/automation.h"
#include "engines/spreadsheets/workbook_model.h"
#include "platform/platform.h"

#include <map>
#include <memory>

namespace tarvik::ooxml {

/// A file that a suite reads and writes, where a workbook's package only shows what the file holds. Both functions
/// throw Damage.
class ForeignWorkbook {
public:
    virtual ~ForeignWorkbook() = default;
    /// To be called before somebody gets the sheet, which he may change; `position` is its among all of the workbook.
    virtual void take(int position) = 0;
    /// The bytes of the file with what was changed, in the format of the extension (".xls", ".xlsx", ".xlsm").
    virtual std::string stored(WorkbookModel& model, std::u32string_view extension) = 0;
};

/// A workbook opened from a file. Failures name the file.
class OoxmlWorkbook final : public Workbook {
public:
    /// `foreign` is null where the file is the package. `extension` is the one of the format that the file has; empty
    /// where that is the package's.
    OoxmlWorkbook(Files& files, Printer& printer, Text path, std::shared_ptr<const Package> package,
                  FormulaServices services, std::unique_ptr<ForeignWorkbook> foreign = nullptr,
                  std::u32string_view extension = {});
    ~OoxmlWorkbook() override;

    int worksheet_count() const override { return model().sheet_count(); }
    Worksheet& worksheet(int index) override;
    void save_as(TextView path) override;
    void close(bool save_changes) override;

private:
    class Sheet;

    WorkbookModel& model() const;
    std::string bytes(std::u32string_view extension) const;
    void print();

    Files& files_;
    Printer& printer_;
    Text path_;
    std::unique_ptr<WorkbookModel> model_; // none once the workbook is closed
    std::unique_ptr<ForeignWorkbook> foreign_;
    std::u32string_view extension_;
    std::map<int, std::unique_ptr<Sheet>> sheets_;
    bool is_saved_ = true; // the file holds what the model does
};

} // namespace tarvik::ooxml
