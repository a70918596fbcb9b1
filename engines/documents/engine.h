#pragma once

#include "engines/documents/first_table.h"
#include "engines/documents/picture.h"
#include "engines/hidden_engines.h"
#include "engines/packages/package_editor.h"
#include "platform/platform.h"

#include <set>

namespace tarvik {

namespace ooxml {

/// A document that is being filled. Rows and columns of its first table count from 1; what is wrong is thrown as
/// Damage.
class FilledDocument {
public:
    virtual ~FilledDocument() = default;
    /// LF breaks the line.
    virtual void set_cell_text(int row, int column, TextView text) = 0;
    /// `name` is what the user calls the picture.
    virtual void add_picture(int row, int column, PictureFile file, TextView name) = 0;
    /// The bytes of the document's file with all changes.
    virtual std::string pack() = 0;
};

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

/// A document opened from a file by `open`. Failures name the file: the picture's where that is at fault, else the
/// document's.
std::unique_ptr<TextDocument> open_document(Files& files, Printer& printer, TextView path,
                                            const std::function<std::unique_ptr<FilledDocument>()>& open);

} // namespace ooxml

/// The embedded engine for documents that are WordprocessingML packages, whatever their names. Everything in a document
/// that no operation names stays as it is, unchanged parts byte for byte; files are read and replaced as a whole.
/// `files` and `printer` must outlive it and what it opens.
FileOpener<TextDocument> ooxml_documents(Files& files, Printer& printer);

} // namespace tarvik
