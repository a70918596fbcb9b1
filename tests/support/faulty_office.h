#pragma once

#include "engines/automation.h"

namespace tarvik::test {

/// Office programs over others, of which one operation fails: every operation of the applications, their workbooks,
/// sheets and documents counts, and the one with the number that was set throws in its place.
class FaultyOffice final : public OfficeEngines {
public:
    /// To be called before anything is created.
    void start(std::unique_ptr<OfficeEngines> office) { office_ = std::move(office); }
    /// Counts from 1, from now on. 0: nothing fails.
    void fail_at(std::size_t operation)
    {
        counted_ = 0;
        failing_ = operation;
    }
    std::size_t counted() const { return counted_; }
    void count();

    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override;
    std::unique_ptr<DocumentApplication> create_document() override;

private:
    std::unique_ptr<OfficeEngines> office_;
    std::size_t counted_ = 0;
    std::size_t failing_ = 0;
};

} // namespace tarvik::test
