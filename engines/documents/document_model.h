#pragma once

#include "engines/documents/engine.h"
#include "engines/documents/first_table.h"
#include "engines/packages/package_editor.h"

#include <optional>
#include <set>

namespace tarvik::ooxml {

/// A document as its package holds it. Only what changed is written anew.
class DocumentModel : public FilledDocument {
public:
    explicit DocumentModel(std::shared_ptr<const Package> package);

    void set_cell_text(int row, int column, TextView text) override;
    void add_picture(int row, int column, PictureFile file, TextView name) override;
    std::string pack() override;

private:
    const TableCell& table_cell(int row, int column);
    int free_drawing_number();

    PackageEditor editor_;
    Relationship main_; // leads to the document's part
    Relationships relationships_;
    XmlPart document_;
    std::optional<FirstTable> table_; // found when the first cell is asked for
    std::set<int> drawing_numbers_;   // collected when the first picture comes
};

} // namespace tarvik::ooxml
