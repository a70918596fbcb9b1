#pragma once

#include "engines/documents/first_table.h"
#include "engines/documents/picture.h"
#include "engines/packages/package_editor.h"
#include "platform/text/text.h"

#include <memory>
#include <optional>
#include <set>
#include <string>

namespace tarvik::ooxml {

/// A document as its package holds it. Only what changed is written anew; what is wrong is thrown as Damage.
class DocumentModel {
public:
    explicit DocumentModel(std::shared_ptr<const Package> package);

    // Rows and columns of the document's first table count from 1.
    void set_cell_text(int row, int column, TextView text);
    /// `contents` are those of the picture's file, `name` is what the user calls it.
    void add_picture(int row, int column, const Picture& picture, std::string contents, TextView name);
    /// The package with all changes.
    const std::string& pack();

private:
    const TableCell& table_cell(int row, int column);
    int free_drawing_number();
    void collect_drawing_numbers();

    PackageEditor editor_;
    Relationship main_; // leads to the document's part
    Relationships relationships_;
    XmlPart document_;
    std::optional<FirstTable> table_; // found when the first cell is asked for
    std::set<int> drawing_numbers_;   // collected when the first picture comes
    std::string packed_;
    bool is_unpacked_ = false; // the bytes packed last are out of date
};

} // namespace tarvik::ooxml
