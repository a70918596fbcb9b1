#pragma once

#include "engines/documents/engine.h"
#include "tests/support/failure_of.h"
#include "tests/support/packages.h"
#include "tests/support/test_program.h"

/// Documents and pictures that the tests make themselves.
namespace tarvik::test {

inline const std::string main_part = "word/document.xml";

/// A document of this body, which must end with its section's properties if it is to have any.
Parts document_parts(const std::string& body);
/// A paragraph with one run.
std::string paragraph(const std::string& text);
/// A table's cell of this XML behind the properties.
std::string cell(const std::string& contents, const std::string& properties = {});
std::string row(const std::string& cells, const std::string& properties = {});
std::string table(const std::string& rows, const std::string& properties = {});
/// A table of so many cells with the texts "11", "12", ...
std::string plain_table(int rows, int columns);
/// What stands in the w:t elements of a document's part, in order.
std::vector<std::string> texts_of(const std::string& document);

struct PictureNotes {
    int resolution = 0;  ///< points to an inch; 0 tells none
    int orientation = 0; ///< 0 tells none
    bool is_little_endian = false;
};
/// A file with all that a JPEG picture has but points that show anything.
std::string jpeg(int width, int height, const PictureNotes& notes = {});
/// A black PNG picture, with points to a metre unless that is 0.
std::string png(int width, int height, int resolution = 0);
/// A chunk of such a picture.
std::string png_chunk(const std::string& type, const std::string& body);
/// A number as it stands in such a file.
std::string big_endian(unsigned number, unsigned size);

/// An engine over a temporary folder, and a document "t.doc" in it.
struct DocumentFile {
    TemporaryFolder folder;
    Files files{folder.path()};
    RecordedPrinter printer;
    std::unique_ptr<DocumentApplication> application =
        HiddenEngines({{}, ooxml_documents(files, printer)}).create_document();

    explicit DocumentFile(const Parts& parts) : DocumentFile(make_package(parts)) {}
    explicit DocumentFile(const std::string& package) { folder.write("t.doc", package); }

    TextDocument& open(TextView name = U"t.doc") { return application->open(name); }
    /// Opens the document, does the work, saves it as "neu.doc", and gives the document's part.
    template <typename Work>
    std::string document_after(Work&& work)
    {
        auto& document = open();
        work(document);
        document.save_as(U"neu.doc");
        return part_of(folder.read("neu.doc"), main_part);
    }
    /// The document's part when the text of one cell was replaced.
    std::string document_with(int row, int column, TextView text)
    {
        return document_after([&](TextDocument& document) { document.set_cell_text(row, column, text); });
    }
};

} // namespace tarvik::test
